/// The factory: its start and end, its menus, and the syntax configuration.
#include <algorithm>

#include "cmd_target.h"
#include "debug_log.h"
#include "menu.h"
#include "module_fixture.h"
#include "resources.h"

namespace {

TEST_F(ModuleTest, FactoryIsInitialisedOncePerProcess) {
    EXPECT_EQ(Factory().InitializeFactory(&m_Desktop), 1);
    Factory().UninitializeFactory();
    TestDesktop other(m_Options);
    EXPECT_EQ(Factory().InitializeFactory(&other), 1);
    EXPECT_EQ(m_Desktop.m_RegistryKeyQueries, 1);
    EXPECT_EQ(other.m_RegistryKeyQueries, 0);

    // A second factory is never initialised; its editors are plain and belong to the host.
    EXPECT_EQ(Factory().Release(), 0u);
    m_Factory = nullptr;
    OpenEditor editor(Factory().CreateEditor(nullptr));
    editor->SetText(u"* c");
    EXPECT_EQ(editor.Text(), u"* c");
    EXPECT_TRUE(m_Desktop.GetPrompt()->GetShown().empty());
}

TEST_F(ModuleTest, StartThatFailedIsTakenBackAndMayBeTriedAgain) {
    WriteConfig("install", 3);
    m_Desktop.m_IsOutOfMemory = true;
    Factory();
    EXPECT_EQ(OpenEditor(Factory().CreateEditor(nullptr)).m_Inspector->GetSyntaxIndex(), -1);
    m_Desktop.m_IsOutOfMemory = false;
    EXPECT_EQ(Factory().InitializeFactory(&m_Desktop), 1);
    EXPECT_EQ(OpenEditor(Factory().CreateEditor(nullptr)).m_Inspector->GetSyntaxIndex(), 2);
    Factory().InitializeFactory(&m_Desktop);
    EXPECT_EQ(m_Desktop.m_RegistryKeyQueries, 2);
}

TEST_F(ModuleTest, FactoryHasItsNamesAndTheOptionsMenuAlone) {
    AString environment, factory;
    Factory().GetEnvironmentName(environment);
    Factory().GetFactoryName(factory);
    EXPECT_EQ(environment, u"NetlistEnvironment");
    EXPECT_EQ(factory, environment);

    std::vector<CMenu*> menus;
    std::vector<CCmdTarget*> targets;
    for (const int kind : {-1, 0, 1, 5, 7, 9})
        EXPECT_FALSE(Factory().GetFactoryMenus(kind, menus, targets)) << kind;
    EXPECT_TRUE(menus.empty() && targets.empty());

    ASSERT_TRUE(Factory().GetFactoryMenus(8, menus, targets));
    CMenu* again = nullptr;
    ASSERT_TRUE(Factory().GetFactoryMenu(8, again, targets));
    ASSERT_EQ(targets.size(), 2u);
    EXPECT_EQ(menus, std::vector<CMenu*>{again});
    ASSERT_NE(again->FindCommand(42000), nullptr);
    EXPECT_EQ(again->FindCommand(42000)->m_Text, u"&Netlist Editor Options...");
    EXPECT_TRUE(targets[0]->RunCommand(42000));
    EXPECT_FALSE(targets[0]->RunCommand(42001));
}

TEST_F(ModuleTest, MissingConfigurationIsToldAtEveryCreationUntilItIsThere) {
    const HostPrompt::Shown kMessage{
        u"Cannot locate file 'NetlistEditor.cfg' in install directory or syslib directory.", 48};
    Factory();
    EXPECT_TRUE(m_Desktop.GetPrompt()->GetShown().empty());
    OpenEditor plain(Factory().CreateEditor(nullptr));
    OpenEditor script(Factory().CreateScriptEditor(nullptr, u"/* c", u"VBScript", u""));
    EXPECT_EQ(m_Desktop.GetPrompt()->GetShown(), std::vector(2, kMessage));
    EXPECT_EQ(script.Text(), u"/* c");
    EXPECT_TRUE(script.Colors(0).empty());

    WriteConfig("syslib", 5);
    OpenEditor coloured(Factory().CreateEditor(nullptr));
    EXPECT_EQ(m_Desktop.GetPrompt()->GetShown().size(), 2u);
    EXPECT_EQ(coloured.m_Inspector->GetSyntaxIndex(), 2);
    EXPECT_EQ(plain.m_Inspector->GetSyntaxIndex(), -1);

    fs::remove_all(m_Folder / "syslib"); // read once
    OpenEditor later(Factory().CreateEditor(nullptr));
    EXPECT_EQ(later.m_Inspector->GetSyntaxIndex(), 2);
}

TEST_F(ModuleTest, ConfigurationIsLookedForInTheInstallDirectoryFirst) {
    WriteConfig("install", 3);
    WriteConfig("syslib", 0);
    fs::current_path(m_Folder / "install");
    m_Desktop.m_InstallDirectory.clear(); // which isn't the current one
    OpenEditor plain(Factory().CreateEditor(nullptr));
    m_Desktop.m_InstallDirectory = (m_Folder / "install").u16string();
    OpenEditor coloured(Factory().CreateEditor(nullptr));
    EXPECT_EQ(plain.m_Inspector->GetSyntaxIndex(), -1);
    EXPECT_EQ(coloured.m_Inspector->GetSyntaxIndex(), 2);
    fs::current_path("/");
}

class DescriptionCount : public ModuleTest, public testing::WithParamInterface<int> {};

TEST_P(DescriptionCount, DecidesWhichEditorsAreColoured) {
    const int count = GetParam();
    WriteConfig("install", count);
    OpenEditor netlist(Factory().CreateEditor(nullptr));
    OpenEditor java(Factory().CreateScriptEditor(nullptr, u"/*", u"JavaScript", u""));
    OpenEditor basic(Factory().CreateScriptEditor(nullptr, u"/*", u"vbscript", u""));
    netlist->SetText(u"a /* b\n*/");
    EXPECT_EQ(netlist.m_Inspector->GetSyntaxIndex(), count > 2 ? 2 : -1);
    const std::vector<ColorSpan> kComment{{2, 5, 2}};
    EXPECT_EQ(netlist.Colors(0), count > 2 ? kComment : std::vector<ColorSpan>{});
    EXPECT_EQ(netlist.m_Inspector->GetLineRangeIn(1), count > 2 ? 0 : -1);
    EXPECT_EQ(netlist.m_Inspector->GetLineRangeOut(1), -1);
    EXPECT_EQ(java.m_Inspector->GetSyntaxIndex(), count > 4 ? 3 : -1);
    EXPECT_EQ(basic.m_Inspector->GetSyntaxIndex(), count > 4 ? 4 : -1);
}

INSTANTIATE_TEST_SUITE_P(Counts, DescriptionCount, testing::Values(0, 2, 3, 4, 5, 7));

TEST_F(ModuleTest, ConfigurationIsReadThroughACopyThatEndsWithTheWork) {
    WriteConfig("install", 0); // read anew each time, and still one copy
    fs::current_path(m_Folder);
    ::setenv("TMPDIR", "tmp", 1);
    for (int i = 0; i < 3; ++i) {
        OpenEditor editor(Factory().CreateEditor(nullptr));
        EXPECT_EQ(FilesIn("tmp"), 1);
    }
    const fs::path copy = fs::directory_iterator(m_Folder / "tmp")->path();
    EXPECT_EQ(copy.filename().string().substr(0, 3), "cfg");
    EXPECT_EQ(Contents(copy), Contents(m_Folder / "install/NetlistEditor.cfg"));
    fs::current_path("/");
    Factory().UninitializeFactory();
    EXPECT_EQ(FilesIn("tmp"), 0);
    EXPECT_EQ(FilesIn("install"), 1);
}

TEST_F(ModuleTest, ConfigurationIsReadInPlaceWhenNoCopyCanBeMade) {
    WriteConfig("install", 3);
    fs::path tooLong = m_Folder;
    while (tooLong.native().size() < 260)
        tooLong /= std::string(100, 'd');
    fs::create_directories(tooLong);
    ::setenv("TMPDIR", tooLong.c_str(), 1);
    OpenEditor editor(Factory().CreateEditor(nullptr));
    EXPECT_EQ(editor.m_Inspector->GetSyntaxIndex(), 2);
    EXPECT_TRUE(fs::is_empty(tooLong));
    Factory().UninitializeFactory();
    EXPECT_TRUE(fs::exists(m_Folder / "install/NetlistEditor.cfg"));
}

TEST_F(ModuleTest, EditorsOutliveTheirFactory) {
    WriteConfig("install", 3);
    OpenEditor editor(Factory().CreateEditor(nullptr));
    editor->SetText(u"/* a\nb */");
    AString name;
    editor->GetEditorsName(name);
    EXPECT_EQ(name, u"Netlist");
    EXPECT_EQ(editor->GetFactory(), &Factory());
    EXPECT_EQ(Factory().Release(), 0u);
    m_Factory = nullptr;
    EXPECT_EQ(editor.Colors(1), (std::vector<ColorSpan>{{0, 3, 2}}));
    editor->GetEditorsName(name);
    EXPECT_EQ(name, u"");
    EXPECT_EQ(editor->GetFactory(), nullptr);
    EXPECT_EQ(editor.m_Inspector->GetSyntaxIndex(), -1);
}

TEST_F(ModuleTest, UnloadingEndsEditorsAndResourcesWhichTheDebugLogTells) {
    const fs::path path = m_Folder / "log";
    DebugLog::Get().mLog = std::make_unique<std::ofstream>(path);
    Factory().CreateEditor(nullptr); // left to the module
    OpenEditor(Factory().CreateScriptEditor(nullptr, u"", u"", u""));
    const MenuResource* const menu = FindMenu(9000);
    EXPECT_NE(menu, nullptr);
    Factory().UninitializeFactory();
    EXPECT_EQ(Factory().Release(), 0u);
    m_Factory = nullptr;
    m_Module.Unload();
    EXPECT_NE(FindMenu(9000), menu);
    DebugLog::Get().mLog.reset();
    EXPECT_EQ(Contents(path), "ScriptEditor destructor called\n"
                              "BaseEditor destructor called\n"
                              "NetlistFactory UninitializeFactory called\n"
                              "NetlistDesignEditor destructor called\n"
                              "NetlistEditor destructor called\n"
                              "BaseEditor destructor called\n");
}

} // namespace
