/// The editors through the contract, inspector and driver.
#include <limits>
#include <unistd.h>

#include "breaking_desk.h"
#include "ivariable_server.h"
#include "menu.h"
#include "module_fixture.h"

namespace {

using Spans = std::vector<TabSpan>;

TEST_F(ModuleTest, EditorsAnswerTheirKindsOfInterface) {
    IDesignEditor* design = nullptr;
    HostDesign component(u"amplifier", m_Desktop);
    Factory().CreateDesignEditor(&component, design);
    ASSERT_NE(design, nullptr);
    OpenEditor netlist(design->GetEditor());
    OpenEditor script(Factory().CreateScriptEditor(nullptr, u"", u"", u""));
    for (const int kind : {-1, 1, 2, 3, 4, 7, 9}) {
        const bool isEditor = kind == 2 || kind == 3;
        EXPECT_EQ(netlist->GetInterface(kind), isEditor ? netlist.m_Editor.get() : nullptr) << kind;
        EXPECT_EQ(script->GetInterface(kind), isEditor ? script.m_Editor.get() : nullptr) << kind;
    }
    EXPECT_EQ(netlist->GetInterface(8), design);
    EXPECT_EQ(script->GetInterface(8), nullptr);
    EXPECT_EQ(netlist->GetEditorKind(), 8);
    EXPECT_EQ(script->GetEditorKind(), 3);
    EXPECT_EQ(design->GetDesign(), &component);
    EXPECT_EQ(design->GetComponent(), nullptr);
    EXPECT_EQ(design->ReadEditor(nullptr, 0), 0);
    EXPECT_EQ(design->GetComponent(), &component);
    EXPECT_EQ(netlist->GetCommandContext(), component.GetProject()->GetCommandContext());
    EXPECT_EQ(netlist->GetVariableServer()->GetServerFlags().to_ulong(), 0x80u);
}

TEST_F(ModuleTest, LineEndsOfTheLastLoadAreKnownAndSavedAsCrLf) {
    const std::tuple<std::string_view, LineEnds, std::string_view> kRows[] = {
        {"", LineEnds::none, ""},
        {{"\x80\t\0\xE4", 4}, LineEnds::none, {"\x80\t\0\xE4", 4}},
        {"a\r\nb\r\n", LineEnds::crLf, "a\r\nb\r\n"},
        {"a\nb\n", LineEnds::lf, "a\r\nb"},
        {"a\r", LineEnds::cr, "a"},
        {"a\n\rb", LineEnds::mixed, "a\r\n\r\nb"},
        {"\r\na\n", LineEnds::mixed, "\r\na"}};
    OpenEditor editor(Factory().CreateEditor(nullptr));
    for (const auto& [bytes, ends, wantedSaved] : kRows) {
        editor.m_Driver->LoadArchive(bytes);
        std::string saved;
        editor.m_Inspector->GetArchive(saved);
        EXPECT_EQ(editor.m_Inspector->GetLineEnds(), ends) << bytes;
        EXPECT_EQ(saved, wantedSaved);
    }
    const std::uint64_t changes = editor.m_Inspector->GetChangeCount();
    editor->SetText(u"b");
    EXPECT_GT(editor.m_Inspector->GetChangeCount(), changes);
    EXPECT_FALSE(editor.m_Inspector->IsModified());
}

TEST_F(ModuleTest, DriverRefusesWhatLiesOutsideOfTheText) {
    OpenEditor editor(Factory().CreateEditor(nullptr));
    IEditorDriver& driver = *editor.m_Driver;
    editor->SetText(u"ab\n\tc");
    constexpr int kMost = std::numeric_limits<int>::max();
    const auto edits = [&driver](int row, int column) {
        return driver.InsertChar(row, column, 'x', true) ||
               driver.OverwriteChar(row, column, 'x', true) ||
               driver.InsertString(row, column, "x", true, true) ||
               driver.SplitLine(row, column, true, 0, true) || driver.DelChar(row, column, true) ||
               driver.DelRange(row, column, column, true, true) ||
               driver.DelRange(row, 0, column, true, true);
    };
    for (const int row : {-1, 2, kMost}) {
        EXPECT_FALSE(edits(row, 0) || driver.DeleteLine(row, true, true) ||
                     driver.CatLine(row, true, true));
        EXPECT_EQ(editor.m_Inspector->GetLineText(row), "");
        EXPECT_EQ(editor.m_Inspector->GetLineRangeOut(row), -1);
    }
    for (const int column : {-1, 3, kMost})
        EXPECT_FALSE(edits(0, column)) << column;
    EXPECT_FALSE(driver.InsertLine(3, true, true, "x"));
    EXPECT_FALSE(driver.DelChar(0, 2, true)); // at the line's end
    EXPECT_FALSE(driver.DelRange(0, 2, 1, true, true));
    EXPECT_FALSE(driver.CatLine(1, true, true)); // the last line
    for (const char* lineEnd : {"\r", "\n"})
        EXPECT_FALSE(driver.InsertLine(0, true, true, lineEnd) ||
                     driver.InsertString(0, 0, lineEnd, true, true) ||
                     driver.InsertChar(0, 0, *lineEnd, true) ||
                     driver.OverwriteChar(0, 0, *lineEnd, true));
    std::vector<JournalEntry> records;
    editor.m_Inspector->GetUndoRecords(records);
    EXPECT_TRUE(records.empty());
    EXPECT_EQ(editor.Text(), u"ab\n\tc");
    EXPECT_TRUE(driver.DeleteLine(0, false, true));
    EXPECT_FALSE(driver.DeleteLine(0, true, true)); // the only line
}

TEST_F(ModuleTest, DriversEditsStandInTextJournalAndColours) {
    WriteConfig("install", 3);
    m_Options.Set(u"Options", u"NumberOfUndos", u"9");
    OpenEditor editor(Factory().CreateEditor(nullptr));
    IEditorDriver& driver = *editor.m_Driver;
    EXPECT_TRUE(driver.InsertLine(0, true, true, "/*\tr1"));
    EXPECT_EQ(driver.InsertChar(0, 2, '\t', true), 2);
    EXPECT_EQ(driver.OverwriteChar(0, 0, '-', true), 1);
    EXPECT_EQ(driver.InsertString(1, 0, "a\tb", true, false), 5);
    EXPECT_TRUE(driver.SplitLine(1, 5, true, 2, true));
    EXPECT_EQ(driver.CatLine(0, true, true), 10);
    EXPECT_EQ(driver.DelChar(0, 2, true), 2);
    EXPECT_TRUE(driver.DelRange(0, 0, 1, true, true));
    EXPECT_EQ(driver.OverwriteChar(0, 0, '/', false), 1);
    EXPECT_EQ(driver.InsertChar(0, 1, '*', false), 1);
    Spans tabs;
    editor.m_Inspector->GetLineTabs(0, tabs);
    EXPECT_EQ(editor.m_Inspector->GetLineText(0), "/*  r1a b");
    EXPECT_EQ(tabs, (Spans{{2, 2}, {7, 1}}));
    EXPECT_EQ(editor.Text(), u"/*\tr1a\tb\n  ");
    EXPECT_EQ(editor.Colors(0), (std::vector<ColorSpan>{{0, 8, 2}}));
    EXPECT_EQ(editor.m_Inspector->GetLineRangeOut(0), 0);
    EXPECT_EQ(editor.Colors(1), (std::vector<ColorSpan>{{0, 1, 2}}));
    std::vector<JournalEntry> records;
    editor.m_Inspector->GetUndoRecords(records);
    std::string shown; // the last nine of ten
    for (const JournalEntry& record : records)
        shown += std::to_string(record.m_Type) + (record.m_First ? "* " : " ");
    EXPECT_EQ(shown, "7* 2* 4 1* 1 1 0* 6* 5* ");
    const JournalEntry& text = records.at(2);
    EXPECT_EQ(text.m_String, "a   b");
    EXPECT_EQ(text.m_Tabs, (Spans{{1, 3}}));
    EXPECT_FALSE(editor.m_Inspector->IsModified());
    driver.NotifyEdited(0);
    EXPECT_TRUE(editor.m_Inspector->IsModified());
}

TEST_F(ModuleTest, ExportWritesCrLfAndMakesOneDirectory) {
    OpenEditor editor(Factory().CreateEditor(nullptr));
    editor->SetText(u"r1 1 0\tk\n\n\u00E4");
    const fs::path inNewFolder = m_Folder / "new/\u00FC.txt", twoLevels = m_Folder / "x/y/z.txt";
    const fs::path unopenable = m_Folder / "tmp";
    for (const fs::path& path : {inNewFolder, twoLevels, unopenable}) {
        m_Desk.m_FileAnswers.push_back(path.u16string());
        EXPECT_TRUE(editor.m_Driver->RunCommand(kExportTextCommand));
    }
    EXPECT_TRUE(editor.m_Driver->RunCommand(kExportTextCommand)); // cancelled
    {
        BreakingDesk breaking(m_Desk);
        breaking.m_Broken = kBreakFileWrite;
        SetBackend(&breaking);
        m_Desk.m_FileAnswers.push_back(inNewFolder.u16string());
        EXPECT_TRUE(editor.m_Driver->RunCommand(kExportTextCommand));
        EXPECT_EQ(breaking.m_Refusals, 1);
        SetBackend(&m_Desk);
    }
    EXPECT_EQ(Contents(inNewFolder), "r1 1 0\tk\r\n\r\n\xE4");
    EXPECT_FALSE(fs::exists(m_Folder / "x"));
    EXPECT_EQ(FilesIn("tmp"), 0);
    EXPECT_EQ(m_Desk.m_Messages.size(), 1u); // of the missing configuration
    ASSERT_EQ(m_Desk.m_FileRequests.size(), 5u);
    EXPECT_EQ(m_Desk.m_FileRequests[0].m_Title, u"Netlist Export");
    EXPECT_EQ(m_Desk.m_FileRequests[0].m_Filter, u"All Files (*.*)|*.*||");
}

TEST_F(ModuleTest, ExportWritesInPlaceWhereNothingMayBeMade) {
    OpenEditor editor(Factory().CreateEditor(nullptr));
    editor->SetText(u"r1 1 0");
    const fs::path folder = m_Folder / "closed", file = folder / "a.txt";
    fs::create_directory(folder);
    std::ofstream(file) << "a longer text than the new one";
    fs::permissions(m_Folder, fs::perms(0755));
    fs::permissions(file, fs::perms(0666));
    fs::permissions(folder, fs::perms(0555));
    m_Desk.m_FileAnswers.push_back(file.u16string());
    constexpr uid_t kNobody = 65534; // root may do everything
    const uid_t user = ::geteuid();
    ASSERT_EQ(user == 0 ? ::seteuid(kNobody) : 0, 0);
    EXPECT_TRUE(editor.m_Driver->RunCommand(kExportTextCommand));
    ASSERT_EQ(user == 0 ? ::seteuid(user) : 0, 0);
    fs::permissions(folder, fs::perms(0755));
    EXPECT_EQ(Contents(file), "r1 1 0");
    EXPECT_EQ(std::distance(fs::directory_iterator(folder), {}), 1);
}

TEST_F(ModuleTest, ScriptsLanguageIsChosenByNameOrMenu) {
    WriteConfig("install", 5);
    OpenEditor editor(Factory().CreateScriptEditor(nullptr, u"/* a", u"vbSCRIPT", u"sweep"));
    EXPECT_EQ(editor.Colors(0), (std::vector<ColorSpan>{{0, 3, 4}}));
    // command (0: SetLanguage), language, syntax
    const std::tuple<unsigned, std::u16string_view, int> kRows[] = {{0, u"VBScript", 4},
                                                                    {0, u"Python", 3},
                                                                    {0, u"", 3},
                                                                    {42017, u"VBScript", 4},
                                                                    {42016, u"JavaScript", 3}};
    for (const auto& [command, wantedLanguage, syntax] : kRows) {
        EXPECT_TRUE(command ? editor.m_Driver->RunCommand(command)
                            : editor.m_Driver->SetLanguage(wantedLanguage));
        AString language;
        editor.m_Inspector->GetLanguage(language);
        EXPECT_EQ(language, wantedLanguage);
        EXPECT_EQ(editor.m_Inspector->GetSyntaxIndex(), syntax);
        EXPECT_EQ(editor.Colors(0),
                  (std::vector<ColorSpan>{{0, 3, static_cast<std::uint32_t>(syntax)}}));
    }
    OpenEditor netlist(Factory().CreateEditor(nullptr));
    EXPECT_FALSE(netlist.m_Driver->SetLanguage(u"VBScript"));
    EXPECT_FALSE(netlist.m_Driver->RunCommand(42017));
}

struct CountingExtender : IEditorExtender {
    IScriptEditor* m_LeftAtSave = nullptr;
    std::string m_Notices;
    void TextChanged(IQuorelCommand*) override {}
    void Saved() override {
        m_Notices += 's';
        if (m_LeftAtSave)
            m_LeftAtSave->RemoveExtender(this);
    }
    void Closed() override { m_Notices += 'c'; }
};

TEST_F(ModuleTest, SavingAScriptTellsItsExtendersAndClearsTheStar) {
    HostContext owner(u"amplifier", nullptr);
    OpenEditor editor(Factory().CreateScriptEditor(&owner, u"x", u"JavaScript", u""));
    auto& script = dynamic_cast<IScriptEditor&>(*editor.m_Editor);
    CountingExtender leaving, staying;
    leaving.m_LeftAtSave = &script;
    EXPECT_TRUE(script.AddExtender(&leaving) && script.AddExtender(&staying));
    EXPECT_FALSE(script.AddExtender(&staying));

    editor.m_Driver->NotifyEdited(0);
    script.RefreshTitle();
    EXPECT_EQ(editor.Title(), u"* amplifier - Script");
    EXPECT_TRUE(script.IsTextModified());
    script.SetScriptName(u"sweep");
    EXPECT_TRUE(editor.m_Driver->RunCommand(42015));
    EXPECT_EQ(editor.Title(), u"sweep - Script");
    EXPECT_FALSE(script.IsTextModified());
    script.SaveText();
    script.CloseAllViews();
    EXPECT_EQ(leaving.m_Notices, "s");
    EXPECT_EQ(staying.m_Notices, "ssc");
    EXPECT_TRUE(script.RemoveExtender(&staying));
    EXPECT_FALSE(script.RemoveExtender(&staying));
}

TEST_F(ModuleTest, EditorsHaveAnEditMenuAndAnExportMenu) {
    OpenEditor netlist(Factory().CreateEditor(nullptr));
    OpenEditor script(Factory().CreateScriptEditor(nullptr, u"", u"", u""));
    OpenEditor plain(Factory().CreateScriptEditor(nullptr, u"", u"", u""));
    dynamic_cast<IScriptEditor&>(*plain.m_Editor).SetShowRunMenu(false);
    // text, empty where the menu hasn't got the command
    const std::tuple<OpenEditor&, int, unsigned, std::u16string_view> kRows[] = {
        {netlist, 1, 42005, u"Toggle &Bookmark\tCtrl+F2"},
        {script, 1, 57636, u"&Find ...\tCtrl+F"},
        {netlist, 5, 42009, u"&Export"},
        {script, 5, 42009, u"&Export Script"},
        {script, 5, 42015, u"&Save/Run Script"},
        {script, 5, 42018, u"&Use Script"},
        {plain, 5, 42015, u"&Save Script"},
        {plain, 5, 42018, u""}};
    std::vector<CCmdTarget*> targets;
    CMenu* menu = nullptr;
    for (const auto& [editor, kind, command, text] : kRows) {
        ASSERT_TRUE(editor->GetEditorMenu(kind, menu, targets));
        const CMenuItem* item = menu->FindCommand(command);
        EXPECT_EQ(item ? item->m_Text : AString(), text) << command;
    }
    EXPECT_FALSE(netlist->GetEditorMenu(8, menu, targets));
    EXPECT_TRUE(targets.empty());
}

TEST_F(ModuleTest, EachInstanceHasOneFrameWithItsTitle) {
    HostDesign design(u"amplifier", m_Desktop);
    TestInstance first(u"one"), second(u"two");
    OpenEditor editor(Factory().CreateEditor(&design));
    editor->CloseAllViews();
    editor->RefreshTitle();
    EXPECT_EQ(editor.Title(), u"amplifier - amplifier - Netlist");

    editor->OpenView(&first);
    editor->OpenView(&first);
    EXPECT_EQ(m_Desk.GetWindows().size(), 2u); // a frame and its view
    EXPECT_EQ(editor.Title(), u"one - Netlist");
    editor->OpenView(&second);
    EXPECT_EQ(m_Desk.GetWindows().size(), 4u);
    EXPECT_EQ(m_Desk.GetWindows()[2]->GetTitle(), u"two - Netlist");
    EXPECT_TRUE(m_Desk.GetWindows()[2]->IsShown());
    EXPECT_TRUE(editor->IsFirstViewOf(&first));
    EXPECT_FALSE(editor->IsFirstViewOf(&second));
    editor->OpenView(&first); // brings its frame back
    EXPECT_EQ(m_Desk.GetWindows().size(), 4u);
    editor->SetText(u"* text\n.end");

    std::vector<CCmdTarget*> targets;
    CMenu* menu = nullptr;
    editor->GetEditorMenu(IViewDoc::kEditMenu, menu, targets);
    EXPECT_EQ(targets.size(), 1u);
    EXPECT_TRUE(editor.m_Driver->RunCommand(kExportTextCommand)); // through the view

    editor->CloseViews(&first);
    EXPECT_EQ(m_Desk.GetWindows().size(), 2u);
    EXPECT_TRUE(editor->IsFirstViewOf(&second));
    editor->CloseAllViews();
    EXPECT_TRUE(m_Desk.GetWindows().empty());
    // The new view took the place of the first one's before its frame was activated.
    EXPECT_EQ(first.m_Notices, "++-");
    EXPECT_EQ(second.m_Notices, "+-");
    EXPECT_EQ(m_Desktop.GetActiveEditor(), nullptr);
}

TEST_F(ModuleTest, EditorsTakeTheirFramesWithThem) {
    HostDesign design(u"amplifier", m_Desktop);
    for (const bool isScript : {false, true}) {
        TestInstance first(u"one"), second(u"two");
        IEditor* const made = isScript ? Factory().CreateScriptEditor(nullptr, u"", u"", u"")
                                       : Factory().CreateEditor(&design);
        made->OpenView(&first);
        made->OpenView(&second);
        EXPECT_EQ(m_Desk.GetWindows().size(), 4u);
        delete made;
        EXPECT_TRUE(m_Desk.GetWindows().empty());
        EXPECT_EQ(second.m_Notices, "+-");
    }
}

} // namespace
