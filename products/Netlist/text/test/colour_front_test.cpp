#include "archive.h"
#include "plain_colouring.h"
#include "sim_edit_doc.h"

namespace {

/// The eager law: each primitive colours at once from its row on, until a row's end agrees with
/// what the next row was coloured with.
class EagerTwin {
public:
    struct Row {
        explicit Row(std::string line) : text(std::move(line)) {}
        std::string text;
        std::int32_t rangeIn = -1, rangeOut = -1;
        std::vector<CColorDscr> spans;
    };
    std::vector<Row> rows;
    PlainColouring* plain = nullptr;
    bool colouring = true;

    void Recolour(std::size_t row, bool stopEarly = true) {
        for (; colouring && row < rows.size(); ++row) {
            plain->Colour(rows[row].text, row == 0 ? -1 : rows[row - 1].rangeOut);
            rows[row].rangeIn = plain->rangeIn;
            rows[row].rangeOut = plain->rangeOut;
            rows[row].spans = plain->spans;
            if (stopEarly && row + 1 < rows.size() && rows[row + 1].rangeIn == rows[row].rangeOut)
                return;
        }
    }
    void Insert(std::size_t row, const Row& line) {
        rows.insert(rows.begin() + std::ptrdiff_t(row), line);
    }
    void Delete(std::size_t row) {
        rows.erase(rows.begin() + std::ptrdiff_t(row));
        Recolour(row);
    }
    void Split(std::size_t row, std::size_t column) {
        Row rest = rows[row]; // with the ranges of the whole line
        rest.spans.clear();
        rest.text.erase(0, column);
        rows[row].text.resize(column);
        Insert(row + 1, rest);
        Recolour(row);
        Recolour(row + 1);
    }
    void Join(std::size_t row) {
        rows[row].text += rows[row + 1].text;
        Delete(row + 1);
        Recolour(row);
    }
};

/// A document and its twin, which get the same edits.
class ColourFrontTest : public testing::Test {
protected:
    ColourFrontTest() {
        for (std::size_t i = 0; i < std::size(kDescriptions); ++i) {
            Fill(m_syntaxes[i], kDescriptions[i].ranges, kDescriptions[i].tokens);
            m_plain.emplace_back(kDescriptions[i].ranges, kDescriptions[i].tokens);
        }
    }
    ~ColourFrontTest() override { ColourFront::s_rowsAtOnce = m_rowsAtOnce; }

    void Describe(std::size_t index) {
        m_doc.SetSyntaxDscr(&m_syntaxes[index]);
        m_twin.plain = &m_plain[index];
    }
    void SetColouring(bool on) {
        m_doc.SetColouring(on);
        m_twin.colouring = on;
    }
    void Load(const std::vector<std::string>& lines) {
        std::string bytes;
        m_twin.rows.clear();
        for (const std::string& line : lines) {
            bytes += (m_twin.rows.empty() ? "" : "\r\n") + line;
            m_twin.rows.emplace_back(line);
            m_twin.Recolour(m_twin.rows.size() - 1);
        }
        CArchive archive{std::string_view(bytes)};
        m_doc.LoadArchive(archive);
        ASSERT_EQ(std::size_t(m_doc.LineCount()), lines.size());
    }
    void LoadRandom() {
        std::vector<std::string> lines(25);
        for (std::string& line : lines)
            line = m_random.Line(8);
        Load(lines);
    }
    void Step();
    void ExpectSame(std::size_t row) {
        const CSimEditLine& line = m_doc.ColouredLine(std::int32_t(row));
        const EagerTwin::Row& expected = m_twin.rows[row];
        ASSERT_EQ(line.Text(), expected.text) << "row " << row;
        ASSERT_EQ(line.Colors().ToVector(), expected.spans) << "row " << row;
        ASSERT_EQ(line.RangeIn(), expected.rangeIn) << "row " << row;
        ASSERT_EQ(line.RangeOut(), expected.rangeOut) << "row " << row;
    }
    void ExpectAllSame() {
        ASSERT_EQ(std::size_t(m_doc.LineCount()), m_twin.rows.size());
        for (std::size_t row = 0; row < m_twin.rows.size(); ++row)
            ASSERT_NO_FATAL_FAILURE(ExpectSame(row));
    }

    RandomLines m_random;
    CSyntaxDscr m_syntaxes[std::size(kDescriptions)];
    std::vector<PlainColouring> m_plain;
    CSimEditDoc m_doc;
    EagerTwin m_twin;

private:
    std::size_t m_rowsAtOnce = ColourFront::s_rowsAtOnce;
};

void ColourFrontTest::Step() {
    if (m_random.Below(6) == 0)
        SetColouring(!m_twin.colouring);
    const std::size_t at = m_random.Below(m_twin.rows.size());
    const auto row = std::int32_t(at);
    std::string& text = m_twin.rows[at].text;
    const std::size_t column = m_random.Below(text.size() + 1);
    switch (m_random.Below(20)) {
    case 0:
        return LoadRandom();
    case 1:
        return Describe(m_random.Below(std::size(m_syntaxes)));
    case 2:
    case 3:
        m_doc.Recolour(row, std::int32_t(column % 2));
        return m_twin.Recolour(at, column % 2 != 0);
    case 4:
    case 5:
        m_doc.SplitLine(row, std::int32_t(column), 0, 0, 0);
        return m_twin.Split(at, column);
    case 6:
    case 7:
    case 8:
        if (at + 1 == m_twin.rows.size())
            return;
        m_doc.CatLine(row, 0, 0);
        return m_twin.Join(at);
    case 9:
    case 10:
    case 11:
        if (m_twin.rows.size() == 1)
            return;
        m_doc.DeleteLine(row, 0, 0);
        return m_twin.Delete(at);
    case 12:
    case 13:
    case 14:
        m_twin.Insert(at, EagerTwin::Row(m_random.Line(8)));
        m_doc.InsertLine(row, 0, 0, m_twin.rows[at].text);
        return m_twin.Recolour(at);
    case 15:
    case 16:
        text.insert(column, "/*");
        m_doc.InsertString(row, std::int32_t(column), 0, "/*", 0, 0);
        return m_twin.Recolour(at);
    default: // somebody looks at a row
        return ExpectSame(at);
    }
}

TEST_F(ColourFrontTest, PutOffColoursEqualThoseGivenAtOnce) {
    for (std::size_t round = 0; round < 200; ++round) {
        ColourFront::s_rowsAtOnce = round % 4;
        Describe(round % std::size(m_syntaxes));
        SetColouring(true);
        LoadRandom();
        for (int step = 0; step < 60; ++step)
            ASSERT_NO_FATAL_FAILURE(Step()) << "round " << round << " step " << step;
        ASSERT_NO_FATAL_FAILURE(ExpectAllSame()) << "round " << round;
    }
}

/// A line that is deleted while colouring is off leaves the next one coloured with its range, and a
/// long run that ends before that one must leave it so.
TEST_F(ColourFrontTest, ALongRunLeavesWhatWasDeletedWithoutColouring) {
    std::vector<std::string> lines(600, "x");
    for (const char* line : {"*/", "x", "/*", "x", "*/", "x"})
        lines.emplace_back(line);
    Describe(0);
    Load(lines);
    ExpectSame(lines.size() - 1);
    SetColouring(false);
    m_doc.DeleteLine(602, 0, 0);
    m_twin.Delete(602);
    SetColouring(true);
    m_doc.InsertString(0, 0, 0, "/*", 0, 0);
    m_twin.rows[0].text.insert(0, "/*");
    m_twin.Recolour(0);
    EXPECT_EQ(m_twin.rows[602].rangeIn, 0);
    ExpectAllSame();
}

TEST_F(ColourFrontTest, ANewDescriptionColoursNothingByItself) {
    m_doc.SetText(u"ab\nab");
    m_doc.SetSyntaxDscr(&m_syntaxes[0]);
    EXPECT_TRUE(m_doc.ColouredLine(0).Colors().empty());
    std::int32_t width = 0;
    m_doc.InsertChar(0, 0, ' ', 0, width);
    EXPECT_FALSE(m_doc.ColouredLine(0).Colors().empty());
    EXPECT_TRUE(m_doc.ColouredLine(1).Colors().empty());
    m_doc.Recolour(0, 0);
    EXPECT_FALSE(m_doc.ColouredLine(1).Colors().empty());
}

} // namespace
