#include "sim_edit_doc.h"

#include "archive.h"
#include "assertion_watch.h"
#include "edit_replay.h"
#include "editor_options.h"
#include "text_view.h"
#include "view.h"

#include <gtest/gtest.h>

#include <functional>
#include <new>
#include <random>

namespace {

/// Sets options for one test and puts the defaults back.
class SimEditDocTest : public testing::Test {
protected:
    ~SimEditDocTest() override { CurrentOptions() = m_defaults; }

    static void Load(CSimEditDoc& doc, std::string_view bytes) {
        CArchive archive(bytes);
        doc.LoadArchive(archive);
    }
    static std::string Saved(const CSimEditDoc& doc) {
        std::string bytes;
        CArchive archive(&bytes);
        doc.SaveArchive(archive);
        archive.Close();
        return bytes;
    }
    static std::string Lines(const CSimEditDoc& doc) {
        std::string text;
        for (std::int32_t row = 0; row < doc.LineCount(); ++row)
            text += "[" + std::string(doc.Line(row).Text()) + "]";
        return text;
    }
    /// One record as "type row,column-endColumn,endRow first char 'string'".
    static std::string Dump(const CSimEditLine& record) {
        const JournalFields& fields = record.Record();
        std::string text = std::to_string(fields.Type);
        for (const std::int32_t number : {fields.Row, fields.Column, fields.EndColumn,
                                          fields.EndRow, fields.First, std::int32_t{fields.Char}})
            text += ' ' + std::to_string(number);
        return text + " '" + record.GetText() + "'";
    }
    static std::string Dump(const RecordList& list) {
        std::string text;
        for (std::size_t i = 0; i < list.Size(); ++i)
            text += (i != 0 ? " | " : "") + Dump(list[i]);
        return text;
    }

private:
    EditorOptions m_defaults = CurrentOptions();
};

TEST_F(SimEditDocTest, LoadsAndSavesLineEnds) {
    const std::tuple<std::string, std::string, std::string> rows[] = {
        {"", "[]", ""},
        {"abc", "[abc]", "abc"},
        {"abc\n", "[abc]", "abc"},
        {"abc\r", "[abc]", "abc"},
        {"abc\r\n", "[abc][]", "abc\r\n"},
        {"abc\n\n", "[abc][]", "abc\r\n"},
        {"abc\r\r", "[abc][]", "abc\r\n"},
        {"a\n\rb", "[a][][b]", "a\r\n\r\nb"},
        {"a\rb\nc\r\nd", "[a][b][c][d]", "a\r\nb\r\nc\r\nd"},
        {"\r\n\r\n", "[][][]", "\r\n\r\n"},
        {std::string("a\0b\r\n\0", 6), std::string("[a\0b][\0]", 8), std::string("a\0b\r\n\0", 6)},
        {"\ta\tb\n \t", "[    a   b][    ]", "\ta\tb\r\n \t"}};
    for (const auto& [bytes, lines, saved] : rows) {
        CSimEditDoc doc;
        Load(doc, bytes);
        EXPECT_EQ(Lines(doc), lines);
        EXPECT_EQ(Saved(doc), saved);
        EXPECT_EQ(doc.Check(), "");
        CSimEditDoc again;
        Load(again, Saved(doc));
        EXPECT_EQ(Lines(again), lines);
    }
}

/// A file that hands out its bytes in pieces of a given size and then fails in a given way, and
/// that can't be written.
class PieceFile : public CFile {
public:
    PieceFile(std::string_view bytes, std::size_t piece, std::function<void()> fail = {})
        : m_bytes(bytes), m_piece(piece), m_fail(std::move(fail)) {}
    void Write(const void*, std::size_t) override {
        throw CFileException(CFileException::diskFull, u"x");
    }
    std::size_t Read(void* buffer, std::size_t size) override {
        if (m_bytes.empty() && m_fail)
            m_fail();
        const std::size_t count = std::min({size, m_piece, m_bytes.size()});
        std::copy_n(m_bytes.data(), count, static_cast<char*>(buffer));
        m_bytes.remove_prefix(count);
        return count;
    }

private:
    std::string_view m_bytes;
    std::size_t m_piece;
    std::function<void()> m_fail;
};

TEST_F(SimEditDocTest, AFailingArchiveLeavesALineAndNoJournal) {
    const std::tuple<std::function<void()>, const char*, const char*, bool> rows[] = {
        {[] { throw CArchiveException(CArchiveException::endOfFile); }, "ab\ncd", "[ab][cd]",
         false},
        {[] { throw CArchiveException(CArchiveException::genericException); }, "ab", "[ab]", false},
        {[] { throw CFileException(CFileException::accessDenied, u"x"); }, "", "[]", false},
        {[] { throw std::bad_alloc(); }, "ab\ncd", "[ab]", true},
        {[] { throw std::bad_alloc(); }, "ab", "[]", true},
        {[] { throw std::length_error(""); }, "ab\ncd\r\n", "[ab][cd]", false}};
    for (const auto& [fail, bytes, lines, comesThrough] : rows) {
        CSimEditDoc doc;
        Load(doc, "one\ntwo");
        doc.SetBookmark(0, 1);
        doc.DeleteLine(1, 1, 1); // a record whose text the old load brought
        PieceFile file(bytes, 99, fail);
        CArchive archive(file, CArchive::load);
        if (comesThrough)
            EXPECT_THROW(doc.LoadArchive(archive), std::bad_alloc);
        else
            doc.LoadArchive(archive);
        EXPECT_EQ(Lines(doc), lines);
        EXPECT_EQ(doc.UndoList().Size(), 0u);
        EXPECT_EQ(doc.Check(), "");
    }
    CSimEditDoc doc;
    Load(doc, std::string(CArchive::kBufferSize, 'x'));
    PieceFile file("", 1);
    CArchive archive(file, CArchive::store);
    EXPECT_THROW(doc.SaveArchive(archive), CFileException);
}

/// Notes what the document tells it.
class NotingView : public CView, public ITextView {
public:
    void ResetText(std::int32_t lineCount, std::int32_t width) override {
        notes += "reset " + std::to_string(lineCount) + ' ' + std::to_string(width);
    }
    void SetMaxLineLength(std::int32_t width) override {
        notes += ", width " + std::to_string(width);
    }
    std::string notes;
};

TEST_F(SimEditDocTest, ALoadTellsTheViewsTheLongestLine) {
    const std::pair<std::string, const char*> rows[] = {
        {"", "reset 1 1000, width 1000"},
        {std::string(1000, 'x'), "reset 1 1000, width 1000"},
        {"a\n" + std::string(998, 'x') + "\tb\nc", "reset 1 1000, width 1001"}};
    CSimEditDoc doc;
    NotingView view;
    doc.AddView(&view);
    for (const auto& [text, notes] : rows) {
        view.notes.clear();
        Load(doc, text);
        EXPECT_EQ(view.notes, notes);
        view.notes.clear();
        doc.SetText(AString(text));
        EXPECT_EQ(view.notes, notes);
    }
}

TEST_F(SimEditDocTest, PiecesOfTheArchiveMakeNoDifference) {
    const std::string bytes = "a\r\nlonger\tline\r\n\r\n\n\rx\r\r\n\nend\r\n";
    CSimEditDoc whole;
    Load(whole, bytes);
    for (std::size_t cut = 0; cut <= bytes.size(); ++cut)
        for (std::size_t piece = 1; piece < 5; ++piece) {
            PieceFile file(std::string_view(bytes).substr(0, cut), piece);
            CArchive archive(file, CArchive::load);
            CSimEditDoc doc;
            doc.LoadArchive(archive);
            CSimEditDoc twin;
            Load(twin, bytes.substr(0, cut));
            ASSERT_EQ(Lines(doc), Lines(twin)) << cut << " by " << piece;
        }
    CSimEditDoc text;
    text.SetText(AString(bytes));
    EXPECT_EQ(Lines(text), Lines(whole));
}

TEST_F(SimEditDocTest, TextKeepsEveryByteAndReplacesWhatIsNoByte) {
    CSimEditDoc doc;
    doc.SetText(u"\u20ac\u00e9 \u4e2d\n\u0081");
    EXPECT_EQ(Lines(doc), "[\x80\xe9 ?][\x81]");
    AString text(u"<");
    doc.GetText(text);
    EXPECT_EQ(text, u"<\u20ac\u00e9 ?\n\u0081");
}

TEST_F(SimEditDocTest, DropsTrailingBlanksOnSaveOnlyIfAsked) {
    CSimEditDoc doc;
    Load(doc, "ab  \n   \nx \t\n\t \n");
    EXPECT_EQ(Saved(doc), "ab  \r\n   \r\nx \t\r\n\t ");
    CurrentOptions().DropBlanksOnSave = 1;
    EXPECT_EQ(Saved(doc), "ab\r\n\r\nx \t\r\n\t");
    AString text;
    doc.GetText(text);
    EXPECT_EQ(text, u"ab\n\nx \t\n\t");
}

using Action = void (*)(CSimEditDoc&);

TEST_F(SimEditDocTest, EachPrimitiveEditsAndWritesItsRecord) {
    static std::int32_t width;
    const std::tuple<const char*, Action, const char*, const char*> rows[] = {
        {"a\tb", [](CSimEditDoc& d) { d.DelChar(0, 1, 1, width); }, "[ab]",
         "6 0 1 -1 -1 1 9 'DelTab'"},
        {"ab\ncd", [](CSimEditDoc& d) { d.CatLine(0, 1, 1); }, "[abcd]", "0 0 2 -1 -1 1 13 ''"},
        {"ab", [](CSimEditDoc& d) { d.InsertChar(0, 1, '\t', 1, width); }, "[a   b]",
         "7 0 1 -1 -1 1 9 'Tab'"},
        {"  ab", [](CSimEditDoc& d) { d.SplitLine(0, 4, 1, 2, 1); }, "[  ab][  ]",
         "1 0 4 -1 -1 1 13 'SplitLine' | 1 1 0 -1 -1 0 32 'leerz' | 1 1 1 -1 -1 0 32 'leerz'"},
        {"ab", [](CSimEditDoc& d) { d.SplitLine(0, 2, 1, 1, 0); }, "[ab][ ]",
         "1 1 0 -1 -1 0 32 'leerz'"},
        {"abc", [](CSimEditDoc& d) { d.OverwriteChar(0, 3, 'x', 1, width); }, "[abcx]",
         "1 0 3 -1 -1 1 120 'x'"},
        {"a\tc", [](CSimEditDoc& d) { d.OverwriteChar(0, 1, 'x', 1, width); }, "[axc]",
         "2 0 1 -1 -1 1 32 'x'"},
        {"a\nb\tc\nd", [](CSimEditDoc& d) { d.DeleteLine(1, 1, 1); }, "[a][d]",
         "3 1 0 -1 -1 1 0 'b\tc'"},
        {"a", [](CSimEditDoc& d) { d.InsertLine(1, 1, 1, "x\ty"); }, "[a][x   y]",
         "4 1 0 -1 -1 1 0 'x\ty'"},
        {"ab", [](CSimEditDoc& d) { d.InsertString(0, 1, 3, "xy", 1, 1); }, "[axyb]",
         "4 0 1 3 0 1 0 'xy'"},
        {"ab", [](CSimEditDoc& d) { d.InsertString(0, 1, 1, "xy", 1, 1); }, "[axyb]", ""},
        {"a\tbc", [](CSimEditDoc& d) { d.DelRange(0, 4, 5, 1, 1); }, "[a   c]",
         "5 0 4 5 0 1 0 'a   bc'"},
        {"ab", [](CSimEditDoc& d) { d.DelRange(0, 1, 1, 1, 1); }, "[ab]", ""}};
    for (const auto& [bytes, action, lines, records] : rows) {
        CSimEditDoc doc;
        Load(doc, bytes);
        action(doc);
        EXPECT_EQ(Lines(doc), lines) << records;
        EXPECT_EQ(Dump(doc.UndoList()), records);
        EXPECT_EQ(doc.Check(), "");
    }
}

TEST_F(SimEditDocTest, JournalKeepsItsLimitAndDropsTheRedoList) {
    std::int32_t width = 0;
    CurrentOptions().NumberOfUndos = 2;
    CSimEditDoc doc;
    for (const char c : {'a', 'b', 'c'})
        doc.InsertChar(0, doc.Line(0).Length(), c, 1, width);
    doc.InsertNewRedo(doc.UndoList().Newest());
    doc.DelUndoNewest(1);
    doc.InsertNewUndoFromRedo(doc.RedoList().Newest());
    EXPECT_EQ(doc.RedoList().Size(), 1u);
    doc.DelChar(0, 0, 1, width);
    EXPECT_EQ(doc.RedoList().Size(), 0u);
    EXPECT_EQ(Dump(doc.UndoList()), "1 0 2 -1 -1 1 99 'c' | 0 0 0 -1 -1 1 97 'DelChar'");
    CurrentOptions().NumberOfUndos = 1; // lowered: the next record leaves room for itself alone
    doc.InsertLine(0, 1, 1, "x");
    EXPECT_EQ(Dump(doc.UndoList()), "4 0 0 -1 -1 1 0 'x'");
    CurrentOptions().NumberOfUndos = 0;
    doc.DeleteLine(0, 1, 1);
    EXPECT_EQ(doc.UndoList().Size(), 1u);
    EXPECT_EQ(Lines(doc), "[bc]");
    doc.SetText(u"new");
    EXPECT_EQ(doc.UndoList().Size(), 0u);
}

TEST_F(SimEditDocTest, BookmarksStayWithTheFirstHalfAndGoWithTheirLine) {
    CSimEditDoc doc;
    Load(doc, "ab\ncd\nef");
    doc.SetBookmark(0, 1);
    doc.SetBookmark(1, 1);
    doc.SplitLine(0, 1, 1, 0, 0);
    EXPECT_EQ(doc.Line(0).Bookmark(), 1);
    EXPECT_EQ(doc.Line(1).Bookmark(), 0);
    EXPECT_EQ(doc.BookmarkCount(), 2);
    doc.CatLine(1, 1, 0); // takes the second bookmark with it
    EXPECT_EQ(doc.BookmarkCount(), 1);
    doc.DeleteLine(0, 1, 1);
    EXPECT_EQ(doc.BookmarkCount(), 0);
    EXPECT_EQ(doc.UndoList().Newest().Bookmark(), 0);
    EXPECT_EQ(doc.Check(), "");
}

TEST_F(SimEditDocTest, PlacesOutsideTheTextAreRefused) {
    static std::int32_t width;
    const Action actions[] = {[](CSimEditDoc& d) { d.InsertLine(2, 1, 1, "x"); },
                              [](CSimEditDoc& d) { d.DeleteLine(1, 1, 1); },
                              [](CSimEditDoc& d) { d.InsertChar(0, 3, 'x', 1, width); },
                              [](CSimEditDoc& d) { d.InsertChar(0, 1, '\n', 1, width); },
                              [](CSimEditDoc& d) { d.OverwriteChar(1, 0, 'x', 1, width); },
                              [](CSimEditDoc& d) { d.OverwriteChar(0, 0, '\r', 1, width); },
                              [](CSimEditDoc& d) { d.InsertString(0, -1, 1, "x", 1, 1); },
                              [](CSimEditDoc& d) { d.DelChar(0, 2, 1, width); },
                              [](CSimEditDoc& d) { d.DelRange(0, 2, 1, 1, 1); },
                              [](CSimEditDoc& d) { d.SplitLine(-1, 0, 1, 0, 1); },
                              [](CSimEditDoc& d) { d.CatLine(0, 1, 1); },
                              [](CSimEditDoc& d) { d.SetBookmark(1, 1); }};
    CSimEditDoc doc;
    Load(doc, "ab");
    AssertionWatch assertions;
    for (std::size_t at = 0; at < std::size(actions); ++at) {
        actions[at](doc);
        EXPECT_EQ(assertions.Take(), 1) << at;
        EXPECT_EQ(width, 0);
        EXPECT_EQ(Lines(doc), "[ab]");
        EXPECT_EQ(doc.UndoList().Size(), 0u);
    }
}

TEST_F(SimEditDocTest, ATextEndsAtItsFirstLineEnd) {
    CSimEditDoc doc;
    Load(doc, "ab");
    AssertionWatch assertions;
    doc.InsertLine(0, 1, 1, std::string_view("x\0y\rz", 5));
    doc.InsertString(1, 1, 7, "\tc\nd", 1, 1);
    doc.InsertString(1, 0, 2, "\n", 1, 1);
    EXPECT_EQ(assertions.Take(), 3);
    EXPECT_EQ(Lines(doc), std::string("[x\0y][a   cb]", 13));
    EXPECT_EQ(Dump(doc.UndoList()),
              std::string("4 0 0 -1 -1 1 0 'x\0y' | 4 1 1 5 1 1 0 '\tc'", 42));
    EXPECT_EQ(doc.Check(), "");
}

/// Makes a random edit, which leaves more than one line.
void EditSomewhere(CSimEditDoc& doc, std::mt19937& random, std::string_view characters) {
    const auto below = [&random](std::int32_t n) {
        return static_cast<std::int32_t>(random() % static_cast<unsigned>(n));
    };
    const std::int32_t row = below(doc.LineCount());
    const std::int32_t length = doc.Line(row).Length();
    const std::int32_t column = below(length + 1);
    const char c = characters[random() % characters.size()];
    std::int32_t width = 0;
    const std::function<void()> edits[] = {
        [&] { doc.SplitLine(row, column, 1, below(3), 1); },
        [&] { row + 1 < doc.LineCount() ? void(doc.CatLine(row, 1, 1)) : void(); },
        [&] { doc.LineCount() > 2 ? doc.DeleteLine(row, 1, 1) : void(); },
        [&] { column < length ? doc.DelChar(row, column, 1, width) : void(); },
        [&] { doc.DelRange(row, column, length - below(length - column + 1), 1, 1); },
        [&] { doc.OverwriteChar(row, column, c, 1, width); },
        [&] { doc.InsertString(row, column, column + 2, "xy", 1, 1); },
        [&] { doc.InsertChar(row, column, c, 1, width); },
        [&] { doc.SetBookmark(row, below(2)); }};
    edits[random() % std::size(edits)]();
    ASSERT_EQ(doc.Check(), "");
}

/// Undoing everything gives the first text back, and redoing it the last one, at each step. With
/// tabs, which records of ranges lose, the rules hold.
TEST_F(SimEditDocTest, UndoAndRedoWalkThroughTheTextsOfRandomEdits) {
    std::mt19937 random(17);
    CurrentOptions().NumberOfUndos = 100'000;
    for (int round = 0; round < 80 && !HasFailure(); ++round) {
        const bool tabs = round % 2 == 1;
        CSimEditDoc doc;
        Load(doc, "ab\n  cd\n\nef gh\nij");
        std::vector<std::string> texts{Saved(doc)};
        for (int step = 0; step < 50 && !HasFailure(); ++step) {
            const std::size_t records = doc.UndoList().Size();
            EditSomewhere(doc, random, tabs ? "a \t" : "oc");
            if (doc.UndoList().Size() != records)
                texts.push_back(Saved(doc));
        }
        EditReplay replay(doc);
        for (std::size_t i = texts.size() - 1; i-- > 0;) {
            ASSERT_GT(replay.Undo(), 0);
            ASSERT_EQ(doc.Check(), "");
            ASSERT_TRUE(tabs || Saved(doc) == texts[i]) << "round " << round << " action " << i;
        }
        EXPECT_EQ(replay.Undo(), 0);
        for (std::size_t i = 1; i < texts.size(); ++i) {
            ASSERT_GT(replay.Redo(), 0);
            ASSERT_EQ(doc.Check(), "");
            ASSERT_TRUE(tabs || Saved(doc) == texts[i]) << "round " << round << " action " << i;
        }
    }
}

TEST_F(SimEditDocTest, ADeletedOnlyLineComesBackAndNothingElseActsWithoutIt) {
    CSimEditDoc doc;
    Load(doc, "ab");
    std::int32_t width = 0;
    doc.DelChar(0, 0, 1, width);
    EditReplay replay(doc);
    replay.Undo();
    doc.DeleteLine(0, 0, 0);
    replay.Redo();
    replay.Undo();
    EXPECT_EQ(Lines(doc), "");
    doc.InsertLine(0, 0, 0, "cd");
    doc.DeleteLine(0, 1, 1);
    replay.Undo();
    EXPECT_EQ(Lines(doc), "[cd]");
    EXPECT_EQ(doc.Check(), "");
}

} // namespace
