#include "environment.h"

#include <array>
#include <cerrno>
#include <cstdlib>
#include <dlfcn.h>
#include <memory>
#include <pwd.h>
#include <unistd.h>
#include <vector>

#include "directory.h"

namespace sys {
namespace {

struct FolderRule {
    const char* variable;
    const char* belowHome;
};
constexpr std::array<FolderRule, 3> kFolderRules{{
    {"XDG_CONFIG_HOME", ".config"},    // kConfig
    {"XDG_DATA_HOME", ".local/share"}, // kData
    {"XDG_STATE_HOME", ".local/state"} // kState
}};

constexpr const char* kOwnName = "quorel/";

bool IsAbsolute(const std::string& path) {
    return !path.empty() && path.front() == '/';
}

/// The home directory of the user data base, for processes that were started without "HOME".
std::string HomeOfUser() {
    constexpr std::size_t kEnough = 16u << 10u;
    std::vector<char> buffer(kEnough);
    passwd entry{};
    passwd* found = nullptr;
    const int error = ::getpwuid_r(::getuid(), &entry, buffer.data(), buffer.size(), &found);
    return error == 0 && found != nullptr ? found->pw_dir : "";
}

std::string HomeDirectory() {
    const std::string home = GetEnvironment("HOME").value_or("");
    return IsAbsolute(home) ? home : HomeOfUser();
}

std::string RealPath(const char* path) {
    const std::unique_ptr<char, decltype(&std::free)> full(::realpath(path, nullptr), &std::free);
    return full ? full.get() : "";
}

} // namespace

std::optional<std::string> GetEnvironment(const std::string& name) {
    const char* value = std::getenv(name.c_str());
    return value == nullptr ? std::nullopt : std::optional<std::string>(value);
}

std::string UserDirectory(UserFolder folder) {
    const FolderRule& rule = kFolderRules.at(static_cast<std::size_t>(folder));
    const std::string base = GetEnvironment(rule.variable).value_or("");
    if (IsAbsolute(base)) {
        return WithClosingSlash(base) + kOwnName;
    }
    const std::string home = HomeDirectory();
    return IsAbsolute(home) ? WithClosingSlash(home) + rule.belowHome + '/' + kOwnName : "";
}

int ProcessId() {
    return ::getpid();
}

std::string ExecutablePath() {
    return RealPath("/proc/self/exe");
}

std::string ModulePath(const void* address) {
    Dl_info info{};
    if (::dladdr(address, &info) == 0 || info.dli_fname == nullptr) {
        return {};
    }
    // The program itself is known by the name that it was called by, which may be found by search.
    const std::string path = RealPath(info.dli_fname);
    return path.empty() ? ExecutablePath() : path;
}

} // namespace sys
