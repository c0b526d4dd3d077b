// Raw streams over strings, bytes and files.
#include <filesystem>
#include <sstream>

#include <gtest/gtest.h>

#include "raw_streambufs.h"

namespace io::test {
namespace {

using std::ios_base;

std::u16string ReadAll(std::basic_streambuf<char16_t>& raw) {
    std::u16string units;
    for (auto unit = raw.sbumpc(); unit != 0xFFFF; unit = raw.sbumpc())
        units += static_cast<char16_t>(unit);
    return units;
}

TEST(RawStreambufs, StringReadsAndOverwrites) {
    CString_streambuf raw;
    EXPECT_EQ(raw.sgetc(), 0xFFFF);
    raw.sputn(u"hello", 5);
    for (int i = 0; i < 100; ++i)
        raw.sputc(u'.');
    EXPECT_EQ(raw.pubseekoff(0, ios_base::cur, ios_base::out), 105);
    EXPECT_EQ(raw.pubseekpos(1, ios_base::out), 1);
    raw.sputn(u"ipp", 3);
    EXPECT_EQ(raw.GetView(), u"hippo" + std::u16string(100, u'.'));
    EXPECT_EQ(raw.pubseekoff(-2, ios_base::end, ios_base::out), 103);
    raw.sputn(u"!!!!", 4);
    EXPECT_EQ(raw.GetView().substr(100), u"...!!!!");
    EXPECT_EQ(ReadAll(raw), raw.GetView());
    EXPECT_EQ(raw.pubseekoff(-107, ios_base::cur, ios_base::in), 0);
    EXPECT_EQ(raw.sgetc(), u'h');
    EXPECT_EQ(raw.pubseekpos(108, ios_base::in), -1);
    EXPECT_EQ(raw.pubseekoff(-1, ios_base::beg, ios_base::in), -1);

    CString_streambuf given(std::u16string(u"abc"));
    EXPECT_EQ(given.sbumpc(), u'a');
    given.sputn(u"xyzzy", 5);
    EXPECT_EQ(ReadAll(given), u"yzzy");
}

TEST(RawStreambufs, BytesReadAndWriteAtOnePosition) {
    std::string text;
    for (int i = 0; i < 100000; ++i)
        text += static_cast<char>(i % 251);
    std::stringbuf bytes(text, ios_base::in | ios_base::out);
    CByte_streambuf raw(bytes);
    const std::u16string units = ReadAll(raw);
    ASSERT_EQ(units.size(), text.size());
    EXPECT_EQ(units[250], 250);
    for (const std::streamoff pos : {99990, 10, 40000, 40001, 39000, 0}) {
        EXPECT_EQ(raw.pubseekpos(pos), pos);
        EXPECT_EQ(raw.sbumpc(), pos % 251) << pos;
        EXPECT_EQ(raw.pubseekoff(0, ios_base::cur), pos + 1);
    }
    raw.sputn(u"XYZ", 3); // behind what was read last
    EXPECT_EQ(raw.pubseekoff(0, ios_base::cur), 4);
    EXPECT_EQ(raw.sbumpc(), 4);
    EXPECT_EQ(raw.pubseekoff(0, ios_base::end), 100000);
    raw.sputn(units.data(), 70000);
    EXPECT_EQ(raw.pubsync(), 0);
    EXPECT_EQ(bytes.str().size(), 170000U);
    EXPECT_EQ(bytes.str().substr(0, 5), std::string("\0XYZ\4", 5));
    raw.sputc(0x100);
    EXPECT_EQ(raw.pubsync(), -1);
}

TEST(RawStreambufs, Files) {
    const std::string path = testing::TempDir() + "raw_streambufs_test.bin";
    EXPECT_FALSE(CFile_streambuf(path + "/none", ios_base::in).IsOpen());
    {
        CFile_streambuf file(path, ios_base::in | ios_base::out | ios_base::trunc);
        ASSERT_TRUE(file.IsOpen());
        file.sputn(u"0123456789\r\n", 12);
        file.pubseekpos(2);
        EXPECT_EQ(file.sbumpc(), u'2');
        file.sputc(u'#');
        EXPECT_TRUE(file.Close());
    }
    CFile_streambuf file(path, ios_base::in);
    EXPECT_EQ(ReadAll(file), u"012#456789\r\n");
    EXPECT_EQ(file.pubseekoff(-4, ios_base::cur), 8);
    EXPECT_EQ(ReadAll(file), u"89\r\n");
    std::filesystem::remove(path);
}

} // namespace
} // namespace io::test
