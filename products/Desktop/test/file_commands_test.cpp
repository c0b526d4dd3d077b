#include <filesystem>

#include <QApplication>
#include <QFileInfo>
#include <QMdiSubWindow>
#include <QPushButton>

#include "desk_stage.h"
#include "notice_bar.h"

namespace {

struct Encoding {
    const char* m_Name;
    std::string m_Mark; ///< what a character at the text's begin stands behind
    std::string m_Text; ///< of a line
};

const Encoding kEncodings[] = {
    {"ASCII", "", "R1 in out 1k"},
    {"Windows-1252", "", "C1 in 0 1\xB5"},
    {"Windows-1252 with unassigned bytes", "", "C1 \x81 \x8D \x80"},
    {"UTF-8", "", "C1 in 0 1\xC2\xB5 \xE2\x82\xAC"},
    {"UTF-8 with a mark", "\xEF\xBB\xBF", "C1 in 0 1\xC2\xB5"},
    {"UTF-8 beyond the page", "", "R1 in out 1k\xCE\xA9 \xF0\x9F\x98\x80"},
    {"neither", "", "R1 \xC2 \xFF\xFE"}};
const std::string kEnds[] = {"\n", "\r\n", "\r"};

/// Two lines, with a line end behind the last or not.
std::vector<std::string> TextsOf(const Encoding& encoding) {
    std::vector<std::string> texts{encoding.m_Text};
    for (const std::string& end : kEnds)
        for (const std::string& last : {std::string(), end})
            texts.push_back(encoding.m_Text + end + "\tR2 a b 2" + last);
    return texts;
}

using Files = DeskTest;

TEST_F(Files, KeepTheirEncodingAndLineEnds) {
    for (const Encoding& encoding : kEncodings) {
        for (const std::string& text : TextsOf(encoding)) {
            SCOPED_TRACE(encoding.m_Name + std::string(": ") + ::testing::PrintToString(text));
            OpenDocument& document = OpenBytes("a.cir", encoding.m_Mark + text);
            EXPECT_FALSE(document.IsModified());

            m_SaveName = QString::fromStdString(PathOf("copy.cir"));
            EXPECT_TRUE(m_Files.SaveAs(document));
            EXPECT_EQ(ReadBytes(PathOf("copy.cir")), encoding.m_Mark + text);

            Type(document, "x");
            EXPECT_TRUE(document.IsModified());
            EXPECT_TRUE(m_Files.Save(document));
            EXPECT_FALSE(document.IsModified());
            EXPECT_EQ(ReadBytes(PathOf("copy.cir")), encoding.m_Mark + "x" + text);
            EXPECT_EQ(ReadBytes(PathOf("a.cir")), encoding.m_Mark + text);
            EXPECT_TRUE(m_Files.Close(document));
        }
    }
    EXPECT_TRUE(m_Asked.empty());
}

TEST_F(Files, SavedUntouchedAreNotWritten) {
    const std::string mixed = "one\ntwo\r\nthree \xCE\xA9\r";
    OpenDocument& document = OpenBytes("a.cir", mixed);
    const auto before = std::filesystem::last_write_time(PathOf("a.cir"));
    EXPECT_TRUE(m_Files.Save(document));
    EXPECT_EQ(std::filesystem::last_write_time(PathOf("a.cir")), before);
    m_SaveName = QString::fromStdString(PathOf("b.cir"));
    EXPECT_TRUE(m_Files.SaveAs(document));
    EXPECT_EQ(ReadBytes(PathOf("b.cir")), mixed);
}

TEST_F(Files, WithMixedLineEndsAskOnceBeforeTheyAreUnified) {
    OpenDocument& document = OpenBytes("a.cir", "one\ntwo\r\nthree\n");
    EXPECT_TRUE(document.HasNotice(QStringLiteral("LineEndsNotice")));
    Type(document, "x");
    m_Answers = {2};
    EXPECT_FALSE(m_Files.Save(document));
    EXPECT_EQ(ReadBytes(PathOf("a.cir")), "one\ntwo\r\nthree\n");
    EXPECT_TRUE(document.IsModified());
    m_Answers = {0};
    EXPECT_TRUE(m_Files.Save(document));
    EXPECT_EQ(ReadBytes(PathOf("a.cir")), "xone\ntwo\nthree\n");
    EXPECT_FALSE(document.HasNotice(QStringLiteral("LineEndsNotice")));
    Type(document, "y");
    EXPECT_TRUE(m_Files.Save(document));
    EXPECT_EQ(m_Asked.size(), 2u);
}

TEST_F(Files, OfOtherCharactersAreShownByteForByteWithANotice) {
    const QString topic = QStringLiteral("FormNotice");
    EXPECT_TRUE(OpenBytes("a.cir", "\xCE\xA9").HasNotice(topic));
    EXPECT_FALSE(OpenBytes("b.cir", "\xC2\xB5").HasNotice(topic));
}

TEST_F(Files, ChangedByOthersAreNoticed) {
    const QString topic = QStringLiteral("DiskNotice");
    OpenDocument& document = OpenBytes("a.cir", "mine\n");
    Touch(PathOf("a.cir"));
    m_Files.CheckDisk(document);
    EXPECT_FALSE(document.HasNotice(topic)) << "only its time has changed";

    Type(document, "x");
    WriteBytes(PathOf("a.cir"), "theirs\n");
    Touch(PathOf("a.cir"));
    m_Files.CheckDisk(document);
    EXPECT_TRUE(document.HasNotice(topic));
    m_Answers = {1};
    EXPECT_FALSE(m_Files.Save(document));
    EXPECT_EQ(ReadBytes(PathOf("a.cir")), "theirs\n");
    m_Answers = {0};
    EXPECT_TRUE(m_Files.Save(document));
    EXPECT_EQ(ReadBytes(PathOf("a.cir")), "xmine\n");
    EXPECT_FALSE(document.HasNotice(topic));
}

/// What is kept over another program's file is unsaved, though nobody has edited it.
TEST_F(Files, KeptOverOthersAreWrittenOrAskedAbout) {
    OpenDocument& document = OpenBytes("a.cir", "mine\n");
    const auto change = [&] {
        WriteBytes(PathOf("a.cir"), "theirs\n");
        Touch(PathOf("a.cir"));
    };
    change();
    m_Answers = {0};
    EXPECT_TRUE(m_Files.Save(document));
    EXPECT_EQ(ReadBytes(PathOf("a.cir")), "mine\n");
    change();
    m_Files.CheckDisk(document);
    QPushButton* const keep = document.GetShell()->findChildren<QPushButton*>().back();
    EXPECT_EQ(keep->text(), QStringLiteral("&Keep This Text"));
    keep->click();
    QApplication::processEvents(); // the button acts in a turn of its own
    EXPECT_TRUE(document.IsModified());
    EXPECT_EQ(document.m_KeptChange, OpenDocument::kNothingKept);
    m_SaveName = QString::fromStdString(PathOf("b.cir"));
    EXPECT_TRUE(m_Files.SaveAs(document));
    EXPECT_EQ(ReadBytes(PathOf("b.cir")), "mine\n");
    EXPECT_EQ(ReadBytes(PathOf("a.cir")), "theirs\n");
}

/// The script editor's own save writes no file: the desktop that listens does.
TEST_F(Files, OfScriptsAreWrittenByTheEditorsSaveToo) {
    OpenDocument& script = OpenBytes("a.js", "x\n");
    Type(script, "y");
    m_Documents.m_OnScriptSaved = [this](OpenDocument& saved) { m_Files.Save(saved); };
    constexpr unsigned kSaveScript = 42015;
    EXPECT_TRUE(script.GetEditor().m_Driver->RunCommand(kSaveScript));
    EXPECT_TRUE(script.IsModified()) << "nothing is written yet";
    QApplication::processEvents();
    EXPECT_FALSE(script.IsModified());
    EXPECT_EQ(ReadBytes(PathOf("a.js")), "yx\n");
}

TEST_F(Files, RemovedByOthersStayInTheWindow) {
    OpenDocument& document = OpenBytes("a.cir", "mine\n");
    std::filesystem::remove(PathOf("a.cir"));
    m_Files.CheckDisk(document);
    EXPECT_TRUE(document.IsModified());
    EXPECT_TRUE(m_Files.Save(document));
    EXPECT_EQ(ReadBytes(PathOf("a.cir")), "mine\n");
}

TEST_F(Files, ThatCantBeWrittenSayWhyAndKeepTheText) {
    OpenDocument& document = OpenBytes("a.cir", "mine\n");
    Type(document, "x");
    const std::string nowhere = PathOf("missing/b.cir");
    m_SaveName = QString::fromStdString(nowhere);
    m_Answers = {1};
    EXPECT_FALSE(m_Files.SaveAs(document));
    EXPECT_EQ(m_Asked.size(), 1u);
    EXPECT_TRUE(document.IsModified());
    EXPECT_EQ(document.GetFile().GetPath(), PathOf("a.cir"));
    EXPECT_EQ(document.GetArchive(), "xmine\r\n");
    EXPECT_EQ(m_Files.Open({PathOf("missing/c.cir")}), nullptr);
    EXPECT_EQ(m_Documents.GetAll().size(), 1u);
}

TEST_F(Files, CloseOnlyWhenTheUserAgrees) {
    OpenDocument& document = OpenBytes("a.cir", "mine\n");
    Type(document, "x");
    m_Answers = {2};
    EXPECT_FALSE(m_Files.Close(document));
    m_Answers = {2};
    EXPECT_FALSE(m_Files.CloseAll());
    EXPECT_EQ(m_Documents.GetAll().size(), 1u);
    m_Answers = {1};
    EXPECT_TRUE(m_Files.Close(document));
    EXPECT_EQ(ReadBytes(PathOf("a.cir")), "mine\n");
}

TEST_F(Files, OpenOnceAndAtThePlaceAskedFor) {
    OpenDocument& document = OpenBytes("a.cir", "one\ntwo\nthree\n");
    std::filesystem::create_symlink(PathOf("a.cir"), PathOf("link.cir"));
    EXPECT_EQ(m_Files.Open({PathOf("link.cir"), {1, 2}}), &document);
    EXPECT_EQ(document.GetEditor().m_Inspector->GetCaret()->m_Caret, (TextPosition{1, 2}));
    m_Files.Open({PathOf("a.cir"), {99, 99}});
    EXPECT_EQ(document.GetEditor().m_Inspector->GetCaret()->m_Caret, (TextPosition{3, 0}));
    EXPECT_EQ(m_Documents.GetActive(), &document);
    OpenDocument* const fresh = m_Files.Open({PathOf("new.js")}, true);
    ASSERT_NE(fresh, nullptr);
    EXPECT_EQ(fresh->GetSort(), EditorSort::javaScript);
    EXPECT_FALSE(fresh->IsModified());
    EXPECT_TRUE(fresh->GetShell()->windowTitle().startsWith(QStringLiteral("new.js")));
}

} // namespace
