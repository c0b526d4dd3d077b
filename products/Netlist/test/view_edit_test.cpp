/// Clipboard, bookmarks, commands and what edits leave in the journal.
#include "breaking_desk.h"
#include "combo_box.h"
#include "frame.h"
#include "ifactory_tools.h"
#include "netlist_edit_cmd.h"
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

TEST_F(ViewEdit, CopyGivesTheClipboardsForm) {
    const struct {
        const char* m_Start;
        const char* m_Script;
        const char16_t* m_Copied; ///< null: the clipboard stays
    } kRows[] = {
        {"|abc", "S-Right*2", u"ab"},
        {"ab|c", "S-Left*2", u"ab"},
        {"a|b\ncd\nef", "S-Down*2", u"b\r\ncd\r\ne"},
        {"|ab\ncd", "S-Down", u"ab\r\n"},
        {"|a\tb", "S-End", u"a\tb"},
        {"|\ta\n\tb", "C-A", u"\ta\r\n\tb"},
        {"|abcd\nef\nghij", "Right S-A-Down*2 S-A-Right*2", u"bc\r\nf \r\nhi"},
        {"|a\tx\nabcdef", "S-A-Down S-A-Right*5", u"a\tx\r\nabcde"},
        {"|ab", "S-Left", nullptr},
        {"|ab\ncd", "S-A-Down", nullptr},
        {"|\x80\xff", "C-A", u"\u20ac\u00ff"},
    };
    for (const auto& row : kRows) {
        Start(row.m_Start);
        m_Desk.m_Clipboard = u"before";
        Play(std::string(row.m_Script) + " C-C");
        EXPECT_EQ(m_Desk.m_Clipboard, row.m_Copied ? row.m_Copied : u"before") << row.m_Start;
        EXPECT_FALSE(Editor().m_Inspector->IsModified());
    }
}

TEST_F(ViewEdit, PasteInsertsLinesWithARecordEach) {
    const struct {
        const char* m_Start;
        const char16_t* m_Text;
        const char* m_End;
        const char* m_Journal;
    } kRows[] = {
        {"a|b", u"xy", "axy|b", "4 0,1-3* 0 xy"},
        {"a|b", u"x\ny", "ax\ny|b", "4 0,1-2* 13 x / 4 1,0-1 0 y"},
        {"a|b", u"x\r\n", "ax\n|b", "4 0,1-2* 13 x"},
        {"a|b", u"\n\rx", "a\n\nx|b", "4 0,1-1* 13  / 4 1,0-0 13  / 4 2,0-1 0 x"},
        {"|", u"\r", "\n|", "4 0,0-0* 13 "},
        {"a|\tb", u"\tx\n\ty", "a>--x\n>---y|>--b", "4 0,1-5* 13 >---x / 4 1,0-5 0 >---y"},
        {"a|b", u"", "a|b", ""},
        {"a|b", u"\u0416\u20ac", "a?\x80|b", "4 0,1-3* 0 ?\x80"},
    };
    for (const auto& row : kRows) {
        Start(row.m_Start);
        m_Desk.m_Clipboard = row.m_Text;
        Play("C-V");
        EXPECT_EQ(State(), row.m_End);
        std::string journal = row.m_Journal; // records hold their text expanded
        for (std::size_t at; (at = journal.find('>')) != std::string::npos;)
            journal.replace(at, 4, 4, ' ');
        EXPECT_EQ(Journal(), journal);
        EXPECT_EQ(Editor().m_Inspector->IsModified(), *row.m_Text != 0);
        ExpectTruePicture();
        Play("undo");
        EXPECT_EQ(Editor().m_Inspector->GetLineCount(), 1);
        Play("redo");
        std::string end = row.m_End;
        std::string redone = State();
        std::erase(end, '|');
        std::erase(redone, '|');
        EXPECT_EQ(redone, end);
    }
    EXPECT_EQ(Editor().m_Inspector->GetReplacedInputs(), 1);
    Type(u"\u0416\u0001");
    EXPECT_EQ(Editor().m_Inspector->GetReplacedInputs(), 2);
    EXPECT_EQ(State().substr(State().find('|') - 1, 1), "?");
}

TEST_F(ViewEdit, EveryEditWritesItsRecords) {
    const struct {
        const char* m_Start;
        const char* m_Script;
        const char* m_Journal;
    } kRows[] = {
        {"a|b", "'x~'", "1 0,1* 120 x / 7 0,2* 9 Tab"},
        {"a|b", "Ins 'x~'", "2 0,1* 98 x / 7 0,2* 9 Tab"},
        {"|ab", "Ins '~'", "8 0,0* 97 Tab"},
        {"|ab", "Del", "0 0,0* 97 DelChar"},
        {"ab|", "Back", "0 0,1* 98 DelChar"},
        {"\t|b", "Back", "6 0,0* 9 DelTab"},
        {"ab\n|c", "Back", "0 0,2* 13 "},
        {"ab|\nc", "Del", "0 0,2* 13 "},
        {"|a", "Back", ""},
        {"a|b", "Enter", "1 0,1* 13 SplitLine"},
        {"a|bc", "S-End Del", "5 0,1-3* 0 abc"},
        {"|a", "S-Left Del", ""},
        {"a|b\ncd\nef", "S-Down*2 Del", "5 0,1-2* 0 ab / 3 1,0 0 cd / 5 1,0-1 0 ef / 0 0,1 13 "},
        {"ab|\ncd\nef", "S-Down S-Down S-Home Del", "3 1,0* 0 cd / 0 0,2 13 "},
        {"ab|\ncd", "S-Right Del", "0 0,2* 13 "},
        {"|ab\n\ncde", "S-A-Down*2 S-A-Right*3 Del", "5 0,0-2* 0 ab / 5 2,0-3 0 cde"},
        {"\n|abc\nd", "Right*2 S-A-Down S-A-Up*2 Del", "5 1,0-2* 0 abc"},
        {"ab|c", "S-Right 'x'", "5 0,2-3* 0 abc / 1 0,2* 120 x"},
    };
    for (const auto& row : kRows) {
        Start(row.m_Start);
        Play(row.m_Script);
        EXPECT_EQ(Journal(), row.m_Journal) << row.m_Start << ": " << row.m_Script;
    }
}

TEST_F(ViewEdit, CutAndABusyClipboard) {
    BreakingDesk breaking(m_Desk);
    Start("a|bc\nd");
    SetBackend(&breaking);
    Play("S-Right*2");
    breaking.m_Broken = kBreakClipboardWrite | kBreakClipboardRead;
    Play("C-C C-X");
    EXPECT_EQ(State(), "a[bc|\nd");
    breaking.m_Broken = 0;
    Play("C-X");
    EXPECT_EQ(State(), "a|\nd");
    EXPECT_EQ(m_Desk.m_Clipboard, u"bc");
    EXPECT_TRUE(Editor().m_Inspector->IsModified());
    EXPECT_EQ(Journal(), "5 0,1-3* 0 abc");
    ExpectTruePicture();
    breaking.m_Broken = kBreakClipboardRead;
    Play("C-A S-Ins");
    EXPECT_EQ(State(), "[a\nd|");
    breaking.m_Broken = 0;
    Play("S-Ins");
    EXPECT_EQ(State(), "bc|");
    Play("C-X C-C"); // disabled without a selection
    EXPECT_EQ(State(), "bc|");
    SetBackend(&m_Desk);
}

TEST_F(ViewEdit, TheFindBoxTakesItsOwnEditCommands) {
    struct Peer : IComboBoxPeer {
        void ComboBoxChanged() override {}
        void EditCommand(unsigned message) override { m_Messages.push_back(message); }
        std::vector<unsigned> m_Messages;
    } peer;
    Start("a|b");
    m_Desk.m_Clipboard = u"x";
    Play("S-Right");
    CComboBox& box = *dynamic_cast<IFactoryTools&>(Factory()).GetToolBarBox(42014);
    box.SetPeer(&peer);
    box.SetFocus();
    Play("57634 57635 57637");
    EXPECT_EQ(peer.m_Messages, (std::vector<unsigned>{kMsgCopy, kMsgCut, kMsgPaste}));
    EXPECT_EQ(State(), "a[b|");
    EXPECT_EQ(m_Desk.m_Clipboard, u"x");
    box.SetPeer(nullptr);
}

TEST_F(ViewEdit, Bookmarks) {
    Start("|a\nb\nc\nd", {80, 3});
    EXPECT_FALSE(IsEnabled(42001));
    Play("F2");
    EXPECT_EQ(State(), "|a\nb\nc\nd");
    const struct {
        const char* m_Script;
        ScreenCell m_Caret; ///< in the text
    } kRows[] = {
        {"End C-F2 F2", {0, 0}},    // its own bookmark
        {"Down*2 C-F2 F2", {0, 0}}, // around the end
        {"F2", {2, 0}},
        {"Down S-Home F2", {0, 0}},
        {"S-F2", {2, 0}},
        {"Up S-F2", {0, 0}},
        {"C-F2 Down S-F2", {2, 0}},
    };
    for (const auto& row : kRows) {
        Play(row.m_Script);
        const TextPosition caret = Editor().m_Inspector->GetCaret()->m_Caret;
        EXPECT_EQ((ScreenCell{caret.m_Row, caret.m_Column}), row.m_Caret) << row.m_Script;
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
    m_Desk.m_Clipboard = u"x";
    Play("S-Right");
    for (const unsigned id : {57632u, kCopy, kCut, kPaste, 57642u, 42005u, 42006u, 42007u, 42009u})
        EXPECT_TRUE(IsEnabled(id)) << id;
}

TEST_F(ViewEdit, AKeystrokeMakesACommand) {
    struct Design : HostDesign {
        using HostDesign::HostDesign;
        void RunCommand(IQuorelCommand* command) override {
            m_Commands.emplace_back(dynamic_cast<NetlistEditCmd*>(command));
        }
        std::vector<std::unique_ptr<NetlistEditCmd>> m_Commands;
    } design(u"filter", m_Desktop);
    m_Component = &design;
    m_Desk.m_Clipboard = u"x";
    const struct {
        const char* m_Script;
        std::size_t m_Commands;
        bool m_Modified;
    } kRows[] = {
        {"'a'", 1, true},         {"Enter", 1, true},         {"Del", 1, true},
        {"Back", 1, false},       {"End Del", 1, false},      {"S-Left Back", 1, true},
        {"S-Right Del", 1, true}, {"C-V", 0, true},           {"S-Right C-X", 0, true},
        {"S-Right", 0, false},    {"Left Ins Esc", 0, false}, {"'a' undo redo", 1, true},
    };
    for (const auto& row : kRows) {
        Start("|ab");
        design.m_Commands.clear();
        Play(row.m_Script);
        ASSERT_EQ(design.m_Commands.size(), row.m_Commands) << row.m_Script;
        EXPECT_EQ(Editor().m_Inspector->IsModified(), row.m_Modified) << row.m_Script;
        for (const auto& command : design.m_Commands) {
            EXPECT_EQ(command->GetContext(), design.GetProject()->GetCommandContext());
            EXPECT_EQ(command->GetViewKey(), m_Instance.GetViewKey());
            EXPECT_EQ(command->GetEditor(), Editor().m_Editor.get());
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
    const struct {
        const char* m_Script;
        int m_Longest;
    } kRows[] = {{"C-End End 'ab'", 1001},
                 {"C-Home End Del", 1998},
                 {"C-End Back undo", 1998},
                 {"C-End End C-V", 1004},
                 {"C-A C-V", 1000}};
    for (const auto& row : kRows) {
        m_Desk.m_Clipboard = u"\t\t";
        Open(line + "\r\n" + line);
        EXPECT_EQ(Editor().m_Inspector->GetScroll()->m_MaxLineLength, 1000);
        Play(row.m_Script);
        EXPECT_EQ(Editor().m_Inspector->GetScroll()->m_MaxLineLength, row.m_Longest)
            << row.m_Script;
        ExpectTruePicture();
    }
}

} // namespace
