#include "profile_store.h"

#include <gtest/gtest.h>

#include "profile_file.h"

namespace {

sys::ProfileStore Parsed(std::string_view text) {
    sys::ProfileStore store;
    store.Parse(text);
    return store;
}

TEST(ProfileStore, SetsOneLineAndKeepsTheOthers) {
    const struct {
        const char *text, *section, *key, *value, *result;
    } rows[] = {{"", "a", "x", "1", "[a]\nx=1\n"},
                {"; mine\n", "a", "x", "1", "; mine\n\n[a]\nx=1\n"},
                {"[a]\nx=1\ny=2\n", "A", "X", "3", "[a]\nX=3\ny=2\n"},
                {"[a]\nx=1\n\n[b]\ny=2", "a", "z", "3", "[a]\nx=1\nz=3\n\n[b]\ny=2\n"},
                {"[a]\n\n[b]\n", "c", "x", "1", "[a]\n\n[b]\n\n[c]\nx=1\n"},
                {"[a]\r\n; why\r\nx = 1\r\nodd", "a", "x", "2", "[a]\r\n; why\r\nx=2\r\nodd\r\n"},
                {"[a]\rx=1\r", "a", "x", "2", "[a]\rx=2\r"},
                {"\xEF\xBB\xBF[a]\nx=1\n", "a", "x", "2", "\xEF\xBB\xBF[a]\nx=2\n"},
                {"\xEF\xBB\xBF\xEF\xBB\xBF[b]\n", "b", "x", "1",
                 "\xEF\xBB\xBF\xEF\xBB\xBF[b]\n\n[b]\nx=1\n"},
                {"[a]\nx=1\n[a]\nx=2\n", "a", "x", "3", "[a]\nx=3\n[a]\nx=2\n"},
                {"", "", "x", "", "[]\nx=\n"},
                {"", "a", "x", " 1", "[a]\nx=\" 1\"\n"},
                {"", "a", "x", "'1'", "[a]\nx=\"'1'\"\n"},
                {"", "a", "x", "\"", "[a]\nx=\"\n"}};
    for (const auto& row : rows) {
        sys::ProfileStore store = Parsed(row.text);
        EXPECT_TRUE(store.Set(row.section, row.key, row.value)) << row.text;
        EXPECT_EQ(store.ToText(), row.result);
        EXPECT_EQ(store.Find(row.section, row.key), row.value) << row.text;
        sys::ProfileFile reader;
        ASSERT_TRUE(reader.Parse(store.ToText()));
        EXPECT_EQ(reader.GetString(row.section, row.key, "none"), row.value) << row.text;
    }
}

TEST(ProfileStore, RefusesWhatCannotBeReadBack) {
    const std::string tooLong(sys::ProfileFile::kMaxValue + 1, 'x');
    const struct {
        std::string_view section, key, value;
    } rows[] = {{"a", "", "1"},     {"a", " x", "1"},  {"a", "x ", "1"},   {"a", ";x", "1"},
                {"a", "[x", "1"},   {"a", "x=y", "1"}, {"a", "x\ny", "1"}, {"a", "x", "1\n2"},
                {"a", "x", "1\r"},  {"a]", "x", "1"},  {" a", "x", "1"},   {"a\n", "x", "1"},
                {"a", "x", tooLong}};
    for (const auto& row : rows) {
        sys::ProfileStore store = Parsed("[a]\nx=0\n");
        EXPECT_FALSE(store.Set(row.section, row.key, row.value)) << row.section << row.key;
        EXPECT_EQ(store.ToText(), "[a]\nx=0\n");
    }
}

TEST(ProfileStore, RemovesAllEqualKeys) {
    sys::ProfileStore store = Parsed("[a]\nx=1\n; c\nX=2\ny=3\n[b]\nx=4\n");
    EXPECT_TRUE(store.Remove("A", "x"));
    EXPECT_EQ(store.ToText(), "[a]\n; c\ny=3\n[b]\nx=4\n");
    EXPECT_EQ(store.Find("a", "x"), std::nullopt);
    EXPECT_FALSE(store.Remove("a", "x"));
    EXPECT_FALSE(store.Remove("none", "x"));
}

} // namespace
