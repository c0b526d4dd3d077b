/// Commands of editors on a host's stacks, and the places of their views.
#include <random>

#include "block.h"
#include "cmd_target.h"
#include "module_fixture.h"
#include "quorel_command.h"

namespace {

constexpr std::uintptr_t kBack = kKeyBack, kReturn = kKeyReturn, kDelete = kKeyDelete;

/// A design with its editor, two instances with a view each, and a twin that copies the text at
/// each command.
class DesignStage {
public:
    DesignStage(HeadlessDesk& desk, HostDesktop& desktop, INetlistFactory& factory, AString name,
                const AString& text)
        : m_Desk(desk), m_Desktop(desktop), m_Design(name, desktop),
          m_Editor(factory.CreateEditor(&m_Design)) {
        for (TestInstance& instance : m_Instances)
            Activate(instance);
        m_Editor->SetText(text);
        m_History = {text};
    }

    void Activate(TestInstance& instance) {
        const std::size_t before = Views().size();
        m_Editor->OpenView(&instance);
        if (Views().size() > before)
            m_Views.push_back(Views().back());
        m_Active = m_Views[static_cast<std::size_t>(&instance - m_Instances)];
        m_Active->SetFocus();
    }
    /// A keystroke, unless it would change nothing.
    void Press(std::uintptr_t key) {
        const TextPosition caret = m_Editor.m_Inspector->GetCaret()->m_Caret;
        const int last = m_Editor.m_Inspector->GetLineCount() - 1;
        const auto length = static_cast<int>(m_Editor.m_Inspector->GetLineText(caret.m_Row).size());
        if ((key == kBack && caret.m_Row + caret.m_Column == 0) ||
            (key == kDelete && caret.m_Row == last && caret.m_Column == length))
            return;
        m_Active->Send(kMsgKeyDown, key, 1);
        Edited();
    }
    void Type(char16_t character) {
        m_Active->Send(kMsgChar, character, 1);
        Edited();
    }
    void Move(std::uintptr_t key) { m_Active->Send(kMsgKeyDown, key, 1); }
    void Undo() {
        m_Desktop.UndoCommand(&m_Design.GetCommands());
        m_At -= m_At > 0;
    }
    void Redo() {
        m_Desktop.RedoCommand(&m_Design.GetCommands());
        m_At += m_At + 1 < m_History.size();
    }

    /// Text, stack, journal and views agree with the twin.
    void Check() {
        Undo_Manager& commands = m_Design.GetCommands();
        EXPECT_EQ(m_Editor.Text(), m_History[m_At]);
        EXPECT_EQ(commands.GetCommandIndex() + 1, static_cast<int>(m_At));
        EXPECT_EQ(commands.GetCommandCount() + 1, m_History.size());
        std::vector<JournalEntry> records;
        m_Editor.m_Inspector->GetUndoRecords(records);
        EXPECT_EQ(ActionsOf(records), m_At);
        m_Editor.m_Inspector->GetRedoRecords(records);
        EXPECT_EQ(ActionsOf(records), m_History.size() - 1 - m_At);
        m_Desk.Pump();
        for (HeadlessWindow* view : m_Views) {
            const std::u16string shown = PictureOf(*view);
            view->Invalidate({0, 0, view->GetClientSize().cx, view->GetClientSize().cy}, true);
            view->Update();
            EXPECT_EQ(PictureOf(*view), shown);
        }
    }
    bool IsAtStart() const { return m_At == 0; }

    TestInstance m_Instances[2] = {TestInstance(u"one"), TestInstance(u"two")};

private:
    void Edited() {
        m_History.resize(++m_At);
        m_History.push_back(m_Editor.Text());
        EXPECT_NE(m_History[m_At], m_History[m_At - 1]);
    }
    static std::size_t ActionsOf(const std::vector<JournalEntry>& records) {
        return static_cast<std::size_t>(
            std::ranges::count_if(records, [](const auto& record) { return record.m_First != 0; }));
    }
    static std::u16string PictureOf(const HeadlessWindow& view) {
        std::u16string picture;
        for (int row = 0; row < view.GetGrid().GetRowCount(); ++row)
            picture += view.GetGrid().GetRowText(row) + u'\n';
        return picture;
    }
    std::vector<HeadlessWindow*> Views() {
        std::vector<HeadlessWindow*> views;
        for (HeadlessWindow* window : m_Desk.GetWindows())
            if (window->GetKind() == WindowKind::view)
                views.push_back(window);
        return views;
    }

    HeadlessDesk& m_Desk;
    HostDesktop& m_Desktop;
    HostDesign m_Design;
    OpenEditor m_Editor;
    std::vector<HeadlessWindow*> m_Views; ///< of the instances
    HeadlessWindow* m_Active = nullptr;
    std::vector<AString> m_History;
    std::size_t m_At = 0; ///< of the present text
};

TEST_F(ModuleTest, RandomKeysAndStepsInTwoDesignsKeepAllInStep) {
    m_Options.Set(u"Options", u"NumberOfUndos", u"10000");
    m_Desk.m_ClientSize = {20 * kCellSize.cx, 6 * kCellSize.cy};
    DesignStage stages[] = {{m_Desk, m_Desktop, Factory(), u"filter", u"* filter\nR1 a b 1k\n.end"},
                            {m_Desk, m_Desktop, Factory(), u"mixer", u""}};
    std::minstd_rand random(11);
    constexpr char16_t kTyped[] = {u'a', u'/', u'*', u' ', u'"'};
    constexpr unsigned kMoves[] = {kKeyLeft, kKeyRight, kKeyUp, kKeyDown, kKeyHome, kKeyEnd};
    DesignStage* stage = &stages[1]; // which is active
    for (int step = 0; step < 1500 && !HasFailure(); ++step) {
        switch (const auto dice = random() % 16; dice) {
        case 0:
            stage = &stages[random() % 2];
            stage->Activate(stage->m_Instances[random() % 2]);
            break;
        case 1:
        case 2:
        case 3:
            stage->Undo();
            break;
        case 4:
        case 5:
            stage->Redo();
            break;
        case 6:
            stage->Press(kBack);
            break;
        case 7:
            stage->Press(kDelete);
            break;
        case 8:
            stage->Press(kReturn);
            break;
        case 9:
        case 10:
            stage->Move(kMoves[random() % std::size(kMoves)]);
            break;
        default:
            stage->Type(kTyped[random() % std::size(kTyped)]);
        }
        SCOPED_TRACE(step);
        stages[0].Check();
        stages[1].Check();
    }
    for (DesignStage& each : stages) {
        each.Activate(each.m_Instances[0]);
        while (!each.IsAtStart())
            each.Undo();
        each.Check();
    }
}

TEST_F(ModuleTest, AScriptsOwnCommandsAreUndoneByItsMenuEntries) {
    HostContext owner(u"amplifier", &m_Desktop);
    TestInstance instance(u"one");
    OpenEditor editor(Factory().CreateScriptEditor(&owner, u"x", u"JavaScript", u"sweep"));
    editor->OpenView(&instance);
    HeadlessWindow& view = *m_Desk.GetWindows().back();
    auto& target = dynamic_cast<CCmdTarget&>(*static_cast<CObject*>(editor->GetInterface(0)));
    const auto entry = [&target](unsigned command) {
        CCmdUI ui(command);
        EXPECT_TRUE(target.UpdateCommand(ui));
        return (ui.IsEnabled() ? u"+" : u"-") + ui.GetText();
    };
    EXPECT_EQ(entry(57643), u"-Undo ");
    view.Send(kMsgChar, u'a', 1);
    EXPECT_EQ(editor.Text(), u"ax");
    EXPECT_EQ(owner.m_Done, 1);
    EXPECT_EQ(entry(57643), u"+Undo ");
    EXPECT_EQ(entry(57644), u"-Redo ");
    EXPECT_TRUE(target.RunCommand(57643));
    EXPECT_EQ(editor.Text(), u"x");
    EXPECT_EQ(entry(57643), u"-Undo ");
    EXPECT_TRUE(editor.m_Driver->RunCommand(57644)) << "through the view";
    EXPECT_EQ(editor.Text(), u"ax");
    EXPECT_EQ(m_Desktop.GetCommands().GetCommandCount(), 0u);
    EXPECT_EQ(editor.m_Inspector->GetUndoManager()->GetCommandIndex(), 0);
    OpenEditor netlist(Factory().CreateEditor(nullptr));
    EXPECT_EQ(netlist.m_Inspector->GetUndoManager(), nullptr);
}

TEST_F(ModuleTest, ACommandOutlivesItsEditorAndItsView) {
    HostDesign design(u"amplifier", m_Desktop);
    {
        TestInstance instance(u"one");
        OpenEditor editor(Factory().CreateEditor(&design));
        editor->OpenView(&instance);
        m_Desk.GetWindows().back()->Send(kMsgChar, u'a', 1);
        editor->CloseAllViews();
        m_Desktop.UndoCommand(&design.GetCommands());
        EXPECT_EQ(editor.Text(), u"a") << "no view replays it";
        m_Desktop.RedoCommand(&design.GetCommands());
    }
    const QuorelCommandContext& context = design.GetCommands().GetCommand(0).GetContext();
    EXPECT_EQ(context.mViewKey->GetInstance(), nullptr) << "the key says that it is gone";
    m_Desktop.UndoCommand(&design.GetCommands());
    EXPECT_EQ(design.GetCommands().GetCommandIndex(), -1);
}

/// Counts the notices of its editor's commands; one that leaves does so at the first.
struct Listener : IEditorExtender {
    void TextChanged(IQuorelCommand* command) override {
        m_Notices += dynamic_cast<QuorelCommand&>(*command).GetContext().mEditor == m_Editor;
        if (m_Leaves)
            m_Editor->RemoveExtender(this);
    }
    void Saved() override {}
    void Closed() override {}
    INetlistEditor* m_Editor = nullptr;
    bool m_Leaves = false;
    int m_Notices = 0;
};

TEST_F(ModuleTest, ExtendersHearOfEachKeystrokeAndMayLeave) {
    HostDesign design(u"amplifier", m_Desktop);
    TestInstance instance(u"one");
    OpenEditor editor(Factory().CreateEditor(&design));
    editor->OpenView(&instance);
    Listener leaving, staying;
    leaving.m_Leaves = true;
    for (Listener* listener : {&leaving, &staying}) {
        listener->m_Editor = dynamic_cast<INetlistEditor*>(editor.m_Editor.get());
        EXPECT_TRUE(listener->m_Editor->AddExtender(listener));
    }
    for (const char16_t key : {u'a', u'b'})
        m_Desk.GetWindows().back()->Send(kMsgChar, key, 1);
    EXPECT_EQ(leaving.m_Notices, 1);
    EXPECT_EQ(staying.m_Notices, 2);
}

TEST_F(ModuleTest, AModifiedScriptAsksBeforeItsLastFrameCloses) {
    const struct {
        bool m_Modified;
        int m_Answer;
        bool m_StaysOpen, m_StaysModified;
    } kRows[] = {{false, 0, false, false},
                 {true, IPrompt::kAnswerCancel, true, true},
                 {true, IPrompt::kAnswerNo, false, true},
                 {true, IPrompt::kAnswerYes, false, false}};
    for (const auto& row : kRows) {
        TestInstance instance(u"one");
        OpenEditor editor(Factory().CreateScriptEditor(nullptr, u"x", u"JavaScript", u"sweep"));
        editor->OpenView(&instance);
        editor.m_Driver->SetModified(row.m_Modified);
        m_Desk.m_Messages.clear();
        m_Desk.m_MessageAnswers = {row.m_Answer};
        m_Desk.GetWindows().front()->Send(kMsgClose);
        EXPECT_EQ(!m_Desk.GetWindows().empty(), row.m_StaysOpen);
        EXPECT_EQ(editor.m_Inspector->IsModified(), row.m_StaysModified);
        ASSERT_EQ(m_Desk.m_Messages.size(), row.m_Modified ? 1u : 0u);
        if (row.m_Modified) {
            EXPECT_EQ(m_Desk.m_Messages[0].m_Text, u"Save changes to sweep?");
            EXPECT_EQ(m_Desk.m_Messages[0].m_Style, 0x43);
        }
    }
}

/// What an editor writes of an instance's views.
AString Placements(IEditor& editor, IDesignInstance& instance) {
    io::CBlock block(u"d");
    EXPECT_TRUE(editor.WriteViews(&block, &instance));
    AString text;
    block.ToString(text);
    return text;
}

TEST_F(ModuleTest, FramesComeBackToWhereTheyWere) {
    HostDesign design(u"amplifier", m_Desktop);
    TestInstance first(u"one"), second(u"two");
    m_Desk.m_FrameArea = {400, 300};
    const AString written = u"$begin 'd'\n"
                            "  'Netlist'(7,'View'('WindowPos'(5,1,2,3,4,10,20,310,220)),"
                            "'View'('WindowPos'(3,-1,-1,-1,-1,100,50,900,90)),'View'())\n"
                            "$end 'd'\n";
    io::CBlock block(u"d");
    ASSERT_TRUE(block.FromString(written));
    AString back;
    {
        OpenEditor editor(Factory().CreateEditor(&design));
        editor->ReadViews(&block, &second);
        editor->ReadViews(&block, &first);
        EXPECT_EQ(m_Desk.GetWindows().size(), 12u) << "a frame and a view for each item";
        EXPECT_EQ(m_Desk.GetWindows().back()->GetParent()->GetTitle(), u"one - Netlist");
        const WindowPlacement limited{kShowMaximized, {-1, -1}, {-1, -1}, CRect{100, 50, 500, 90}};
        EXPECT_EQ(m_Desk.GetWindows()[2]->GetPlacement(), limited);
        editor->ReadViews(&block, &first);
        EXPECT_EQ(m_Desk.GetWindows().size(), 12u) << "the instance's views are there";
        back = Placements(*editor.m_Editor, first);
        TestInstance none(u"none");
        EXPECT_NE(Placements(*editor.m_Editor, none).find(u"Netlist"), AString::npos);
    }
    OpenEditor script(Factory().CreateScriptEditor(nullptr, u"", u"", u""));
    script->ReadViews(&block, &first);
    EXPECT_TRUE(m_Desk.GetWindows().empty()) << "a script's are in a function of another name";
    EXPECT_NE(Placements(*script.m_Editor, first).find(u"Script"), AString::npos);

    io::CBlock again(u"d");
    ASSERT_TRUE(again.FromString(back));
    OpenEditor editor(Factory().CreateEditor(&design));
    editor->ReadViews(&again, &first);
    editor->ReadViews(&again, &first); // the frame opened last has become active
    EXPECT_EQ(Placements(*editor.m_Editor, first), back) << "the nine numbers come back";
    EXPECT_NE(back.find(u"(5, 1, 2, 3, 4, 10, 20, 310, 220)"), AString::npos)
        << back.ToCString(AString::kUtf8);
}

} // namespace
