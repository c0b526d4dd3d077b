/// What edits do to text, caret and journal; clipboard, bookmarks and commands.
#include "breaking_desk.h"
#include "frame.h"
#include "quorel_command.h"
#include "view_script.h"

namespace {

constexpr unsigned kCopy = 57634;
constexpr unsigned kCut = 57635;
constexpr unsigned kPaste = 57637;

class ViewEdit : public ScriptTest {
protected:
    bool IsEnabled(unsigned id) {
        CCmdUI ui(id);
        auto* const frame = CMDIChildWnd::GetActiveChild();
        return frame->GetActiveView()->UpdateCommand(ui) && ui.IsEnabled();
    }
};

/// One row for each way of changing the text: all of it is undone and done again, twice.
TEST_F(ViewEdit, EveryEditStandsInTheJournalAndGoesBackAndForth) {
    const struct {
        const char* m_Start;
        const char* m_Script;
        const char* m_End;
        const char* m_Journal;
        const char* m_Undone = nullptr; ///< null: as it was before the script
        const char* m_Redone = nullptr; ///< null: as it was behind the script
    } kRows[] = {
        {"a|b", "'x~'", "ax>-|b", "1 0,1* 120 x / 7 0,2* 9 Tab"},
        {"|a\tb", "'x'", "x|a>-b", "1 0,0* 120 x"},
        {"a|bc", "Ins 'xyz'", "axyz|", "2 0,1* 98 x / 2 0,2* 99 y / 1 0,3* 122 z", "ab|c"},
        {"|\tb", "Ins 'x'", "x|b", "2 0,0* 32 x", " |b"},
        {"a|bc", "Ins '~'", "a>--|c", "8 0,1* 98 Tab", "ab|c"},
        {"ab|c", "S-Left*2 'x'", "x|c", "5 0,0-2* 0 abc / 1 0,0* 120 x", "|abc"},
        {"a|b", "Enter", "a\n|b", "1 0,1* 13 SplitLine"},
        {"  ab|", "Enter", "  ab\n|", "1 0,4* 13 SplitLine"},
        {"|ab", "Enter", "\n|ab", "1 0,0* 13 SplitLine"},
        {"x\n|ab", "Enter", "x\n\n|ab", "1 1,0* 13 SplitLine", "x|\nab", "x\n|\nab"},
        {"ab|c\nd", "S-Right*2 Enter", "ab\n|d",
         "5 0,2-3* 0 abc / 0 0,2 13  / 1 0,2* 13 SplitLine"},
        {"|ab", "Back", "|ab", ""},
        {"ab|", "Back", "a|", "0 0,1* 98 DelChar"},
        {"ab\n|c", "Back", "ab|c", "0 0,2* 13 "},
        {"ab\t|c", "Back", "ab|c", "6 0,2* 9 DelTab"},
        {"ab|", "C-Del", "ab|", ""},
        {"a|b", "Del", "a|", "0 0,1* 98 DelChar", "ab|"},
        {"ab|\ncd", "Del", "ab|cd", "0 0,2* 13 ", "ab\n|cd"},
        {"a|\tb", "Del", "a|b", "6 0,1* 9 DelTab", "a>--|b"},
        {"|a", "S-Left Del", "|a", ""},
        {"a|bcd", "S-Right*2 Del", "a|d", "5 0,1-3* 0 abcd"},
        {"a|\tb", "S-Right Del", "a|b", "5 0,1-4* 0 a   b", "a|   b"},
        {"ab|c", "57642 57632", "|", "5 0,0-3* 0 abc", "|abc"},
        {"a|b\ncd\nef", "S-Down*2 Back", "a|f",
         "5 0,1-2* 0 ab / 3 1,0 0 cd / 5 1,0-1 0 ef / 0 0,1 13 "},
        {"ab|\ncd\nef", "S-Down*2 S-Home Del", "ab|ef", "3 1,0* 0 cd / 0 0,2 13 ", "ab\n|cd\nef"},
        {"ab|\ncd", "S-Right Del", "ab|cd", "0 0,2* 13 ", "ab\n|cd"},
        {"a|bcd\nef\nghij", "S-A-Down*2 S-A-Right*2 Del", "a|d\ne\ngj",
         "5 0,1-3* 0 abcd / 5 1,1-2 0 ef / 5 2,1-3 0 ghij", nullptr, "ad\ne\ng|j"},
        {"abc|d\n\nghij", "S-A-Down*2 S-A-Left*2 Del", "a|d\n\ngj",
         "5 0,1-3* 0 abcd / 5 2,1-3 0 ghij", "a|bcd\n\nghij", "ad\n\ng|j"},
        {"\nab|c\nd", "S-A-Down S-A-Up*2 Del", "|\nc\nd", "5 1,0-2* 0 abc", "\n|abc\nd", "\n|c\nd"},
        {"ab|cdefgh\n\tx", "S-A-Down Del", "|cdefgh\n  x", "5 0,0-2* 0 abcdefgh / 5 1,0-2 0     x",
         "|abcdefgh\n    x", "cdefgh\n|  x"},
        {"a|b", "clip:xy C-V", "axy|b", "4 0,1-3* 0 xy", nullptr, "a|xyb"},
        {"a|b", "clip:x^y C-V", "ax\ny|b", "4 0,1-2* 13 x / 4 1,0-1 0 y", nullptr, "ax\n|yb"},
        {"a|b", "clip:x`^ C-V", "ax\n|b", "4 0,1-2* 13 x", nullptr, "a|x\nb"},
        {"a|b", "clip:^`x C-V", "a\n\nx|b", "4 0,1-1* 13  / 4 1,0-0 13  / 4 2,0-1 0 x", nullptr,
         "a\n\n|xb"},
        {"|", "clip:` C-V", "\n|", "4 0,0-0* 13 ", nullptr, "|\n"},
        {"a|\tb", "clip:~x^~y C-V", "a>--x\n>---y|>--b", "4 0,1-5* 13     x / 4 1,0-5 0     y",
         nullptr, "a>--x\n|>---y>--b"},
        {"a|b", "clip: C-V", "a|b", ""},
        {"x\n|\ny", "clip:p^~q^ C-V", "x\np\n>---q\n|\ny", "4 1,0-1* 13 p / 4 2,0-5 13     q",
         nullptr, "x\np\n|>---q\n\ny"}};
    for (const auto& row : kRows) {
        SCOPED_TRACE(std::string(row.m_Start) + ": " + row.m_Script);
        Start(row.m_Start);
        const std::string before = State();
        Play(row.m_Script);
        EXPECT_EQ(State(), row.m_End);
        EXPECT_EQ(Journal(), row.m_Journal);
        for (int round = 0; round < 2 && *row.m_Journal; ++round) {
            ExpectTruePicture();
            UndoAll();
            EXPECT_EQ(State(), row.m_Undone ? row.m_Undone : before);
            EXPECT_EQ(Journal(), "");
            ExpectTruePicture();
            RedoAll();
            EXPECT_EQ(State(), row.m_Redone ? row.m_Redone : row.m_End);
            EXPECT_EQ(Editor().m_Inspector->GetRedoCount(), 0);
        }
    }
}

TEST_F(ViewEdit, EnterIndentsAtALinesEnd) {
    SetOption(u"FillBlanksOnEnter", 1);
    static constexpr Case kCases[] = {{"  ab|", "Enter", "  ab\n  |"},
                                      {"   |", "Enter", "   \n   |"},
                                      {"  a|b", "Enter", "  a\n|b"},
                                      {"\ta|", "Enter", ">---a\n    |"},
                                      {"  ab|", "Enter undo", "  ab|"},
                                      {"|", "Enter", "\n|"},
                                      {"  ab|", "Enter undo redo", "  ab\n  |"}};
    Check(kCases);
}

TEST_F(ViewEdit, CopyGivesTheClipboardsForm) {
    // what is copied; null: the clipboard stays
    const std::tuple<const char*, const char*, const char16_t*> kRows[] = {
        {"ab|c", "S-Left*2", u"ab"},
        {"a|b\ncd\nef", "S-Down*2", u"b\r\ncd\r\ne"},
        {"|ab\ncd", "S-Down", u"ab\r\n"},
        {"|\ta\n\tb", "C-A", u"\ta\r\n\tb"},
        {"|abcd\nef\nghij", "Right S-A-Down*2 S-A-Right*2", u"bc\r\nf \r\nhi"},
        {"|a\tx\nabcdef", "S-A-Down S-A-Right*5", u"a\tx\r\nabcde"},
        {"|ab", "S-Left", nullptr},
        {"|ab\ncd", "S-A-Down", nullptr},
        {"|\x80\xff", "C-A", u"\u20ac\u00ff"}};
    for (const auto& [start, script, copied] : kRows) {
        Start(start);
        m_Desk.m_Clipboard = u"before";
        Play(std::string(script) + " C-C");
        EXPECT_EQ(m_Desk.m_Clipboard, copied ? copied : u"before") << start;
        EXPECT_FALSE(Editor().m_Inspector->IsModified());
    }
}

TEST_F(ViewEdit, WhatTheCodePageLacksIsReplacedAndCounted) {
    Start("a|b");
    m_Desk.m_Clipboard = u"\u0416\u20ac";
    Play("C-V");
    Type(u"\u0416\u0001");
    EXPECT_EQ(State(), "a?\x80?|b");
    EXPECT_EQ(Editor().m_Inspector->GetReplacedInputs(), 2);
}

TEST_F(ViewEdit, CutAndABusyClipboard) {
    BreakingDesk breaking(m_Desk);
    Start("a|bc\nd");
    SetBackend(&breaking);
    const std::tuple<unsigned, const char*, const char*> kRows[] = {
        {kBreakClipboardWrite | kBreakClipboardRead, "S-Right*2 C-C C-X", "a[bc|\nd"},
        {0, "C-X", "a|\nd"},
        {kBreakClipboardRead, "C-A S-Ins", "[a\nd|"},
        {0, "S-Ins C-X C-C", "bc|"}}; // both are disabled without a selection
    for (const auto& [broken, script, state] : kRows) {
        breaking.m_Broken = broken;
        Play(script);
        EXPECT_EQ(State(), state);
        ExpectTruePicture();
    }
    EXPECT_EQ(m_Desk.m_Clipboard, u"bc");
    SetBackend(&m_Desk);
}

TEST_F(ViewEdit, TheFindBoxTakesItsOwnEditCommands) {
    struct Peer : IComboBoxPeer {
        void ComboBoxChanged() override {}
        void EditCommand(unsigned message) override { m_Messages.push_back(message); }
        std::vector<unsigned> m_Messages;
    } peer;
    Start("a|b");
    Play("clip:x S-Right");
    CComboBox& box = FindBox();
    box.SetPeer(&peer);
    box.SetFocus();
    Play("57634 57635 57637");
    EXPECT_EQ(peer.m_Messages, (std::vector<unsigned>{kMsgCopy, kMsgCut, kMsgPaste}));
    EXPECT_EQ(State(), "a[b|");
    EXPECT_EQ(m_Desk.m_Clipboard, u"x");
    View().Send(kMsgPaste); // the middle button's, for the view
    EXPECT_EQ(State(), "ax|");
    box.SetPeer(nullptr);
}

TEST_F(ViewEdit, Bookmarks) {
    Start("|a\nb\nc\nd", {80, 3});
    EXPECT_FALSE(IsEnabled(42001));
    Play("F2");
    EXPECT_EQ(State(), "|a\nb\nc\nd");
    const struct {
        const char* m_Script;
        int m_Row;
    } kRows[] = {{"End C-F2 F2", 0},    // its own bookmark
                 {"Down*2 C-F2 F2", 0}, // around the end
                 {"F2", 2},
                 {"Down S-Home F2", 0},
                 {"S-F2", 2},
                 {"Up S-F2", 0},
                 {"C-F2 Down S-F2", 2}};
    for (const auto& row : kRows) {
        Play(row.m_Script);
        EXPECT_EQ(CaretPlace(), (TextPosition{row.m_Row, 0})) << row.m_Script;
        EXPECT_FALSE(Editor().m_Inspector->GetSelection()->m_Selected);
        ExpectTruePicture();
    }
    EXPECT_EQ(Editor().m_Inspector->GetBookmarkCount(), 1);
    EXPECT_TRUE(IsEnabled(42001));
    Play("C-B");
    EXPECT_EQ(Editor().m_Inspector->GetBookmarkCount(), 0);
    EXPECT_FALSE(Editor().m_Inspector->IsModified());
    ExpectTruePicture();
}

TEST_F(ViewEdit, CommandsAreEnabledWhenTheyCanWork) {
    Start("|ab");
    for (const unsigned id : {57632u, kCopy, kCut, kPaste})
        EXPECT_FALSE(IsEnabled(id)) << id;
    Play("clip:x S-Right");
    for (const unsigned id : {57632u, kCopy, kCut, kPaste, 57642u, 42005u, 42006u, 42007u, 42009u})
        EXPECT_TRUE(IsEnabled(id)) << id;
}

TEST_F(ViewEdit, AKeystrokeMakesACommand) {
    struct Design : HostDesign {
        using HostDesign::HostDesign;
        void RunCommand(IQuorelCommand* command) override {
            m_Commands.emplace_back(dynamic_cast<QuorelCommand*>(command));
        }
        std::vector<std::unique_ptr<QuorelCommand>> m_Commands;
    } design(u"filter", m_Desktop);
    m_Component = &design;
    const std::tuple<const char*, std::size_t, bool> kRows[] = {
        {"'a'", 1, true},         {"Enter", 1, true},         {"Del", 1, true},
        {"Back", 1, false},       {"End Del", 1, false},      {"S-Left Back", 1, true},
        {"S-Right Del", 1, true}, {"clip:x C-V", 0, true},    {"S-Right C-X", 0, true},
        {"S-Right", 0, false},    {"Left Ins Esc", 0, false}, {"'a' undo redo", 1, true}};
    for (const auto& [script, commands, modified] : kRows) {
        Start("|ab");
        design.m_Commands.clear();
        Play(script);
        ASSERT_EQ(design.m_Commands.size(), commands) << script;
        EXPECT_EQ(Editor().m_Inspector->IsModified(), modified) << script;
        for (const auto& command : design.m_Commands) {
            const QuorelCommandContext& context = command->GetContext();
            EXPECT_EQ(context.mContextObject, design.GetProject()->GetCommandContext());
            EXPECT_EQ(context.mViewKey, m_Instance.GetViewKey());
            EXPECT_EQ(context.mEditor, Editor().m_Editor.get());
        }
        m_Open.reset();
    }
    Start("|ab");
    design.m_Commands.clear();
    View().Send(kMsgChar, u'a', 0); // as a replay sends it
    EXPECT_EQ(State(), "a|ab");
    EXPECT_TRUE(design.m_Commands.empty());
    m_Open.reset();
}

TEST_F(ViewEdit, TheLongestLineFollows) {
    const std::string line(999, 'x');
    const std::pair<const char*, int> kRows[] = {{"C-End End 'ab'", 1001},
                                                 {"C-Home End Del", 1998},
                                                 {"C-End Back undo", 1998},
                                                 {"clip:~~ C-End End C-V", 1004},
                                                 {"clip:~~ C-A C-V", 1000}};
    for (const auto& [script, longest] : kRows) {
        Open(line + "\r\n" + line);
        EXPECT_EQ(Editor().m_Inspector->GetScroll()->m_MaxLineLength, 1000);
        Play(script);
        EXPECT_EQ(Editor().m_Inspector->GetScroll()->m_MaxLineLength, longest) << script;
        ExpectTruePicture();
    }
}

} // namespace
