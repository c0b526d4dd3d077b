/// What a view shows: rows, colours, highlight, and that every way of painting gives the same.
#include "view_fixture.h"

namespace {

TEST_F(ViewTest, BookmarkedRowIsFilledBehindItsColouredText) {
    WriteConfig("install", 3);
    Open("a /* b\n*/ c");
    EXPECT_EQ(RowText(0), u"a /* b");
    const CellGrid& grid = View().GetGrid();
    EXPECT_EQ(grid.GetCell(0, 0).m_Color, kBlack);
    EXPECT_EQ(grid.GetCell(0, 2).m_Color, 2u);
    EXPECT_EQ(grid.GetCell(1, 1).m_Color, 2u);
    EXPECT_EQ(grid.GetCell(1, 3).m_Color, kBlack);
    Click({1, 0});
    Editor().m_Driver->RunCommand(42005); // toggles the bookmark
    for (const int column : {0, 1, 3, 4, 79})
        EXPECT_EQ(grid.GetCell(1, column).m_Background, 0xC0C0C0u) << column;
    EXPECT_EQ(grid.GetCell(0, 0).m_Background, kWhite);
    ExpectTruePicture();
}

TEST_F(ViewTest, BytesAreShownByTheCodePage) {
    Open("\x80\xe4\x81\t.");
    EXPECT_EQ(RowText(0), u"\u20ac\u00e4\u0081 .");
}

TEST_F(ViewTest, LongLinesArePaintedInPiecesWithoutASeam) {
    WriteConfig("install", 3);
    std::string line;
    for (int i = 0; i < 500; ++i)
        line += "ab/**/";
    Open(line, {3000, 2});
    const CellGrid& grid = View().GetGrid();
    for (int column = 0; column < 3000; ++column) {
        const Cell expected{static_cast<char16_t>(line[static_cast<std::size_t>(column)]),
                            column % 6 < 2 ? kBlack : 2u, kWhite, false};
        ASSERT_EQ(grid.GetCell(0, column), expected) << column;
    }
}

} // namespace
