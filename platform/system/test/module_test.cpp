#include <cerrno>
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <utility>

#include "environment.h"
#include "module_loader.h"
#include "register_module.h"
#include "temporary_folder.h"

namespace {

using namespace std::string_literals;

TEST(UserDirectory, FollowsTheEnvironment) {
    using enum sys::UserFolder;
    const std::tuple<sys::UserFolder, const char*, const char*, const char*> rows[] = {
        {kConfig, "XDG_CONFIG_HOME", "/c", "/c/quorel/"},
        {kConfig, "XDG_CONFIG_HOME", "/c/", "/c/quorel/"},
        {kConfig, "XDG_CONFIG_HOME", "relative", "/home/ada/.config/quorel/"},
        {kData, "XDG_DATA_HOME", "", "/home/ada/.local/share/quorel/"},
        {kState, "XDG_STATE_HOME", nullptr, "/home/ada/.local/state/quorel/"}};
    const ScopedVariable home("HOME", "/home/ada");
    for (const auto& [folder, variableName, value, path] : rows) {
        const ScopedVariable variable(variableName, value);
        EXPECT_EQ(sys::UserDirectory(folder), path);
    }
}

void* AddressOfLibrary() {
    return reinterpret_cast<void*>(&sys::RemoveDirectory);
}

TEST(ModuleLoader, FindsEntriesAndTellsReasons) {
    const std::string path = sys::ModulePath(AddressOfLibrary());
    EXPECT_NE(path.find("libquorel_platform_system.so"), std::string::npos) << path;
    Dl_info info{};
    ASSERT_NE(::dladdr(AddressOfLibrary(), &info), 0);
    sys::ModuleLoader loader;
    void (*entry)() = nullptr;
    EXPECT_EQ(loader.Find(info.dli_sname, entry).code, ENOENT);
    ASSERT_TRUE(loader.Load(path));
    EXPECT_TRUE(loader.Find(info.dli_sname, entry));
    EXPECT_EQ(reinterpret_cast<void*>(entry), AddressOfLibrary());
    const sys::Status missing = loader.Find("NoSuchEntry", entry);
    EXPECT_EQ(missing.code, ENOENT);
    EXPECT_NE(missing.reason.find("undefined symbol: NoSuchEntry"), std::string::npos);
    EXPECT_EQ(entry, nullptr);

    const TemporaryFolder folder;
    const sys::Status status = loader.Load(folder.Write("text.so", "no module"));
    EXPECT_NE(status.reason.find("text.so': "), std::string::npos) << status.reason;
    EXPECT_FALSE(loader.IsLoaded());
    // No library path is searched, where this one would be found.
    EXPECT_FALSE(loader.Load("libc.so.6"));
}

class RegisterModule : public testing::Test {
protected:
    const std::string kId = "{4C958AF9-36BE-4B70-A715-DA9F9B1D24E7}";
    TemporaryFolder mFolder;
    ScopedVariable mData{"XDG_DATA_HOME", mFolder.At("").c_str()};
    std::string mFile = mFolder.At("quorel/classes/" + kId + ".ini");

    static sys::ModuleRegistration Sample(std::string id, std::string path = "/m/Netlist.so") {
        return {std::move(id), "Factory Class", "A.Netlist", "A.Netlist.1", std::move(path),
                "Apartment",   "{type}",        "{app}",     "Netlist",     "Netlist.EXE"};
    }
};

TEST_F(RegisterModule, IsFoundByItsClassIdUntilItIsRemoved) {
    const std::string lowerId = "{4c958af9-36be-4b70-a715-da9f9b1d24e7}";
    sys::ModuleRegistration read;
    EXPECT_EQ(sys::ReadRegistration(kId, read).code, ENOENT);
    EXPECT_TRUE(sys::UnregisterModule(kId));
    EXPECT_TRUE(sys::RegisterModule(Sample(lowerId)));
    EXPECT_TRUE(sys::ReadRegistration(lowerId, read));
    EXPECT_EQ(Contents(mFile),
              "[Class]\nClassId={4C958AF9-36BE-4B70-A715-DA9F9B1D24E7}\n"
              "Title=Factory Class\nVersionIndependentName=A.Netlist\n"
              "CurrentVersion=A.Netlist.1\nModulePath=/m/Netlist.so\nThreadingModel=Apartment\n"
              "TypeLibraryId={type}\nApplicationId={app}\nApplicationName=Netlist\n"
              "ApplicationFile=Netlist.EXE\n");
    EXPECT_EQ(read.classId + read.modulePath + read.applicationFile,
              kId + "/m/Netlist.soNetlist.EXE");
    ASSERT_TRUE(sys::WriteFileAtomically(mFile, "[Class]\nModulePath=/m\nClassId={}\n"));
    EXPECT_EQ(sys::ReadRegistration(kId, read).code, EINVAL);
    EXPECT_EQ(read.modulePath, "");
    EXPECT_TRUE(sys::UnregisterModule(kId));
    EXPECT_EQ(Contents(mFile), "?");
}

TEST_F(RegisterModule, RefusesOtherIdsAndBadValues) {
    for (const char* id :
         {"", "4C958AF9-36BE-4B70-A715-DA9F9B1D24E7", "{../../../../../../../../../../a.b.c/d/e}",
          "{4C958AF9-36BE-4B70-A715-DA9F9B1D24EG}", "{4C958AF9036BE04B700A7150DA9F9B1D24E7}"}) {
        sys::ModuleRegistration read;
        EXPECT_EQ(sys::RegisterModule(Sample(id)).code, EINVAL) << id;
        EXPECT_EQ(sys::UnregisterModule(id).code, EINVAL) << id;
        EXPECT_EQ(sys::ReadRegistration(id, read).code, EINVAL) << id;
    }
    for (const std::string& path : {std::string(), "/m\nClassId=x"s, std::string(2000, 'x')})
        EXPECT_EQ(sys::RegisterModule(Sample(kId, path)).code, EINVAL) << path;
    EXPECT_EQ(Contents(mFile), "?");
}

} // namespace
