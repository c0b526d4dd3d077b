#include "option_store.h"

#include <filesystem>
#include <fstream>
#include <iterator>

#include <gtest/gtest.h>

#include "abstract_istream.h"
#include "host_desktop.h"
#include "read_error.h"
#include "streamio_object.h"

namespace {

class Options : public testing::Test {
protected:
    ~Options() override { std::filesystem::remove_all(mFolder); }

    void Write(const std::string& text) const {
        std::filesystem::create_directories(mFolder);
        std::ofstream(mPath, std::ios::binary) << text;
    }
    std::string Read() const {
        std::ifstream file(mPath, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    const std::filesystem::path mFolder =
        std::filesystem::path(testing::TempDir()) /
        (std::string("options-") + testing::UnitTest::GetInstance()->current_test_info()->name());
    const std::string mPath = (mFolder / "deep" / ".." / "options.ini").lexically_normal();
};

TEST_F(Options, AnyTextComesBackFromTheFileOrIsNamed) {
    const std::u16string unpaired(1, u'\xD800');
    const std::pair<AString, bool> rows[] = {{u"", true},
                                             {u"plain", true},
                                             {u" blanks around ", true},
                                             {u"\"quoted\"", true},
                                             {u"' ; = [x]", true},
                                             {u"\u00B5 \u20AC \U0001F600", true},
                                             {u"tab\there", true},
                                             {AString(1023, u'x'), true},
                                             {AString(1024, u'x'), false},
                                             {u"two\nlines", false},
                                             {u"cr\r", false}};
    for (const auto& [value, isStored] : rows) {
        std::filesystem::remove(mPath);
        OptionStore store;
        ASSERT_TRUE(store.Open(mPath));
        store.Set(u"Options", u"Key", value);
        store.Set(u"Options", u"Other", u"1");
        EXPECT_EQ(store.Find(u"OPTIONS", u"key"), value) << "names have no case";
        const sys::Status saved = store.Save();
        EXPECT_EQ(saved.IsOk(), isStored) << value.ToCString();
        EXPECT_EQ(saved.reason.find("Options/Key") != std::string::npos, !isStored);
        OptionStore again;
        ASSERT_TRUE(again.Open(mPath));
        EXPECT_EQ(again.Find(u"Options", u"Key"), isStored ? std::optional(value) : std::nullopt);
        EXPECT_EQ(again.Find(u"Options", u"Other"), AString(u"1"));
    }
}

TEST_F(Options, SaveTouchesNothingButWhatWasSet) {
    Write("; mine\r\n[Options]\r\nA=1\r\nB=2\r\n");
    OptionStore store;
    ASSERT_TRUE(store.Open(mPath));
    store.Set(u"Options", u"A", u"3");
    Write("; mine\r\n[Options]\r\nA=1\r\nB=5\r\n[Later]\r\nC=1\r\n"); // by another process
    ASSERT_TRUE(store.Save());
    EXPECT_EQ(Read(), "; mine\r\n[Options]\r\nA=3\r\nB=5\r\n[Later]\r\nC=1\r\n");
    Write("untouched");
    ASSERT_TRUE(store.Save());
    EXPECT_EQ(Read(), "untouched") << "nothing was set since";
}

TEST_F(Options, RelativePathIsThatOfTheTimeOfOpening) {
    std::filesystem::create_directories(mFolder);
    std::filesystem::current_path(mFolder);
    OptionStore store;
    ASSERT_TRUE(store.Open("options.ini"));
    std::filesystem::current_path("/");
    store.Set(u"Options", u"A", u"3");
    EXPECT_TRUE(store.Save());
    EXPECT_EQ(Read(), "[Options]\nA=3\n");
    EXPECT_TRUE(store.Open("") && store.Save()) << "no path at all: in memory";
}

TEST_F(Options, WhatIsNoFileIsNotReadAndNotWritten) {
    std::filesystem::create_directories(mPath);
    OptionStore store;
    EXPECT_FALSE(store.Open(mPath));
    store.Set(u"Options", u"A", u"3");
    EXPECT_TRUE(store.Save()) << "it stays in memory";
    EXPECT_EQ(store.Find(u"Options", u"A"), AString(u"3"));
    EXPECT_TRUE(std::filesystem::is_directory(mPath));
}

TEST_F(Options, DesktopReadsIntegersFromText) {
    OptionStore store;
    HostDesktop desktop({}, store);
    const std::pair<const char16_t*, int> rows[] = {{u"12", 12},
                                                    {u"-5", -5},
                                                    {u" 7 ", 7},
                                                    {u"", 99},
                                                    {u"12x", 99},
                                                    {u"1e3", 99},
                                                    {u"abc", 99},
                                                    {u"2147483647", 2147483647},
                                                    {u"2147483648", 99},
                                                    {u"-2147483648", -2147483647 - 1},
                                                    {u"99999999999999999999", 99}};
    for (const auto& [text, value] : rows) {
        store.Set(u"Options", u"Tab", text);
        EXPECT_EQ(desktop.GetIntegerOption(0, u"Options", u"Tab", 99), value)
            << AString(text).ToCString();
    }
    desktop.SetIntegerOption(0, u"Options", u"Tab", -8);
    EXPECT_EQ(desktop.GetIntegerOption(0, u"options", u"TAB", 99), -8);
    AString text;
    desktop.GetStringOption(text, 0, u"Options", u"Tab", u"none");
    EXPECT_EQ(text, u"-8");
    desktop.GetStringOption(text, 0, u"Elsewhere", u"Tab", u"none");
    EXPECT_EQ(text, u"none");
}

/// A place, stored as its two numbers.
struct Place : io::CStreamio_object {
    void Read(io::CAbstract_istream& stream) override {
        if (!stream.Read(m_X) || !stream.Read(m_Y))
            throw io::XStreamioError(io::ReadError::kValue, 1);
    }
    void Write(io::CAbstract_ostream&) const override {}
    int m_X = 0, m_Y = 0;
};

TEST_F(Options, DesktopFillsAnObjectFromItsStoredText) {
    OptionStore store;
    HostDesktop desktop({}, store);
    const std::pair<const char16_t*, bool> rows[] = {
        {u"12 34", true}, {u"12 word", false}, {u"", false}};
    Place place;
    EXPECT_FALSE(desktop.GetBlockOption(0, u"Bars", u"Place", place)) << "nothing is stored";
    for (const auto& [text, isRead] : rows) {
        desktop.SetStringOption(0, u"Bars", u"Place", text);
        EXPECT_EQ(desktop.GetBlockOption(0, u"Bars", u"Place", place), isRead);
    }
    EXPECT_EQ(place.m_Y, 34);
}

} // namespace
