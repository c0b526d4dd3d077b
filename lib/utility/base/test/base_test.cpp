// RefPtr, MRefCount and DebugLog.

#include <cstdlib>
#include <gtest/gtest.h>
#include <iterator>
#include <unistd.h>

#include "debug_log.h"

namespace {

struct Counted : MRefCount {
    ~Counted() { ++*gone; }
    int* gone = nullptr;
};

TEST(RefPtrTest, TheLastHolderDeletes) {
    int gone = 0;
    RefPtr<Counted> a(new Counted{{}, &gone});
    RefPtr<Counted> b = a, none;
    const RefPtr<Counted> moved = std::move(b);
    EXPECT_EQ(moved->referenceCount, 2);
    a = nullptr;
    EXPECT_EQ(moved->referenceCount, 1);
    a = new Counted(*moved); // a copy of the object has no holders yet
    EXPECT_EQ(a->referenceCount, 1);
    EXPECT_EQ(gone, 0);
    a = moved;
    EXPECT_EQ(gone, 1);
    EXPECT_TRUE(a == moved && !(a == none) && !b);
}

TEST(DebugLogTest, ReadsTheEnvironment) {
    const std::pair<const char*, std::int32_t> rows[] = {
        {"3", 3},          {" -7 ", -7}, {"+4", 4},  {"2147483647", 2147483647},
        {"2147483648", 0}, {"", 0},      {" ", 0},   {"3x", 0},
        {"+-4", 0},        {"+", 0},     {"0x10", 0}};
    for (const auto& [text, mode] : rows) {
        setenv("QUOREL_DEBUG_MODE", text, 1);
        EXPECT_EQ(DebugLog().mMode, mode) << text;
    }
    EXPECT_FALSE(DebugLog().mVerbose || DebugLog().mLog);
    const std::string path = testing::TempDir() + "/debug_log_" + std::to_string(getpid());
    setenv("QUOREL_DEBUG_VERBOSE", "", 1);
    setenv("QUOREL_DEBUG_FILE", "some file", 1);
    setenv("QUOREL_DEBUG_LOG", path.c_str(), 1);
    for (int i = 0; i < 2; ++i) {
        const DebugLog log;
        EXPECT_TRUE(log.mVerbose && log.mFile == "some file");
        ASSERT_TRUE(log.mLog);
        *log.mLog << "text";
    }
    std::ifstream written(path);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(written), {}), "texttext");
    std::remove(path.c_str());
    setenv("QUOREL_DEBUG_LOG", "/no such folder/log", 1);
    EXPECT_FALSE(DebugLog().mLog);
}

} // namespace
