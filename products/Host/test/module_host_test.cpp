#include "module_host.h"

#include <filesystem>

#include <gtest/gtest.h>

#include "data_files.h"
#include "headless_desk.h"
#include "host_design.h"
#include "host_desktop.h"
#include "register_module.h"

namespace {

constexpr const char* kModule = QUOREL_BIN_DIR "/Netlist.so";

/// One test, since a process starts the module once.
TEST(Module, StartsOnceMakesEditorsAndEnds) {
    const std::string folder = testing::TempDir() + "module-host";
    std::filesystem::create_directories(folder);
    ::setenv("XDG_DATA_HOME", folder.c_str(), 1);
    ::setenv("QUOREL_DATA_DIR", QUOREL_SOURCE_DIR, 1);
    OptionStore store;
    const std::string config = FindDataDirectory() + "config/";
    HostDesktop desktop({.m_InstallDirectory = config, .m_SysLibDirectory = config}, store);
    HeadlessDesk desk;
    HostDesign design(u"amplifier", desktop);
    HostContext owner(u"Scripts", &desktop);
    ModuleHost host(desktop, &desk);

    EXPECT_FALSE(host.CreateNetlistEditor(&design)) << "it doesn't run";
    EXPECT_FALSE(host.Start(QUOREL_BIN_DIR "/../lib/libquorel_host_kit.so")) << "no module";
    EXPECT_FALSE(host.Start()) << "neither beside this program nor registered";
    sys::ModuleRegistration registration;
    registration.classId = kNetlistFactoryClassId.ToText();
    registration.modulePath = kModule;
    ASSERT_TRUE(sys::RegisterModule(registration));
    const sys::Status started = host.Start();
    ASSERT_TRUE(started) << started.reason;
    EXPECT_EQ(host.GetPath(), kModule);
    EXPECT_EQ(GetBackend(), &desk);
    EXPECT_FALSE(ModuleHost(desktop, &desk).Start(kModule)) << "once a process";

    {
        const HostedEditor netlist = host.CreateNetlistEditor(&design);
        ASSERT_TRUE(netlist);
        netlist.m_Driver->LoadArchive("* deck\nR1 a b\t1k\r\n");
        EXPECT_EQ(netlist.m_Inspector->GetLineCount(), 3);
        EXPECT_EQ(netlist.m_Inspector->GetSyntaxIndex(), 2);
        const HostedEditor script =
            host.CreateScriptEditor(&owner, u"Rem x\nRem y", u"VBScript", u"Sweep");
        ASSERT_TRUE(script);
        AString text;
        script.m_Editor->GetText(text);
        EXPECT_EQ(text, u"Rem x\nRem y");
        EXPECT_EQ(script.m_Inspector->GetSyntaxIndex(), 4);
        EXPECT_TRUE(desktop.GetPrompt()->GetShown().empty());
    }
    host.Stop();
    EXPECT_FALSE(host.IsRunning());
    EXPECT_EQ(GetBackend(), nullptr);
    std::filesystem::remove_all(folder);
}

} // namespace
