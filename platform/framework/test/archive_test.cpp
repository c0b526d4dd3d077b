#include "archive.h"

#include <filesystem>
#include <functional>

#include <gtest/gtest.h>
#include <unistd.h>

namespace {

constexpr std::size_t kBuffer = CArchive::kBufferSize;

/// Bytes whose every place differs from its neighbours.
std::string Pattern(std::size_t size) {
    std::string bytes(size, '\0');
    for (std::size_t i = 0; i < size; ++i)
        bytes[i] = static_cast<char>(i * 131 >> 3 ^ i);
    return bytes;
}

class TempFile {
public:
    TempFile()
        : m_Path(std::filesystem::temp_directory_path() /
                 ("archive_test_" + std::to_string(::getpid()))) {}
    ~TempFile() { std::filesystem::remove(m_Path); }
    std::string Path() const { return m_Path.string(); }

private:
    std::filesystem::path m_Path;
};

/// Bytes from memory as a file that fails behind them, or at the writing of so many.
class FailingFile : public CFile {
public:
    explicit FailingFile(std::string bytes, std::size_t room = 0)
        : m_Bytes(std::move(bytes)), m_Room(room) {}
    std::size_t Read(void* buffer, std::size_t size) override {
        if (m_Bytes.empty())
            throw CFileException(CFileException::genericException, u"broken");
        const std::size_t count = m_Bytes.copy(static_cast<char*>(buffer), size);
        m_Bytes.erase(0, count);
        return count;
    }
    void Write(const void*, std::size_t size) override {
        ++m_Writes;
        if (size > m_Room)
            throw CFileException(CFileException::diskFull, u"full");
        m_Room -= size;
    }
    int m_Writes = 0;

private:
    std::string m_Bytes;
    std::size_t m_Room;
};

/// The three ways of reading to the end.
const std::function<std::string(CArchive&)> kReaders[] = {
    [](CArchive& archive) {
        std::string all;
        char piece[1000];
        while (const std::size_t count = archive.Read(piece, sizeof piece))
            all.append(piece, count);
        return all;
    },
    [](CArchive& archive) {
        std::string all;
        for (unsigned char byte; archive.TryReadByte(byte);)
            all += static_cast<char>(byte);
        return all;
    },
    [](CArchive& archive) {
        std::string all;
        while (!archive.PeekChunk().empty()) {
            const std::size_t part = archive.PeekChunk().size() / 2 + 1;
            all += archive.PeekChunk().substr(0, part);
            archive.Skip(part);
        }
        return all;
    }};

} // namespace

TEST(Archive, GivesBackWhatWasWrittenInWhateverPieces) {
    const TempFile temp;
    for (const std::size_t piece :
         {std::size_t{1}, std::size_t{7}, kBuffer - 1, kBuffer, kBuffer + 1, 3 * kBuffer}) {
        const std::string all = Pattern(2 * kBuffer + 13);
        std::string memory = "before";
        {
            CArchive toMemory(&memory);
            CFile file(temp.Path(), CFile::modeCreate);
            CArchive toFile(file, CArchive::store);
            for (std::size_t i = 0; i < all.size(); i += piece) {
                toMemory.WriteString(std::string_view(all).substr(i, piece));
                toFile.Write(all.data() + i, std::min(piece, all.size() - i));
                toFile.WriteString({});
            }
            toFile.Close();
            file.Close();
        }
        EXPECT_TRUE(memory == "before" + all) << piece;
        for (const auto& reader : kReaders) {
            CArchive fromMemory{std::string_view(all)};
            EXPECT_TRUE(reader(fromMemory) == all);
            CFile file(temp.Path(), CFile::modeRead);
            CArchive fromFile(file, CArchive::load);
            EXPECT_TRUE(reader(fromFile) == all);
        }
        CFile file(temp.Path(), CFile::modeRead);
        CArchive mixed(file, CArchive::load);
        std::string read(2 * kBuffer + 12, '\0');
        read.insert(0, 1, static_cast<char>(mixed.ReadByte()));
        EXPECT_EQ(mixed.Read(read.data() + 1, read.size()), read.size() - 1);
        EXPECT_TRUE(read == all);
    }
}

TEST(Archive, MemoryIsOneChunkAndIsNotCopied) {
    const std::string bytes = Pattern(5 * kBuffer);
    CArchive archive{std::string_view(bytes)};
    EXPECT_EQ(archive.PeekChunk().data(), bytes.data());
    EXPECT_EQ(archive.PeekChunk().size(), bytes.size());
    archive.Skip(bytes.size() + 5);
    EXPECT_TRUE(archive.PeekChunk().empty());
}

TEST(Archive, TellsTheEndAsValueOrAsException) {
    CArchive archive(std::string_view("x"));
    unsigned char byte = 0;
    EXPECT_EQ(archive.ReadByte(), 'x');
    byte = 'u';
    EXPECT_FALSE(archive.TryReadByte(byte));
    EXPECT_EQ(byte, 'u');
    try {
        archive.ReadByte();
        FAIL();
    } catch (const CArchiveException& exception) {
        EXPECT_EQ(exception.m_Cause, CArchiveException::endOfFile);
    }
}

TEST(Archive, RefusesTheOtherDirectionAndWritingAfterClose) {
    std::string target;
    CArchive store(&target);
    CArchive load(std::string_view("abc"));
    char byte;
    const std::pair<std::function<void()>, CArchiveException::Cause> kRows[] = {
        {[&] { load.Write("x", 1); }, CArchiveException::readOnly},
        {[&] { store.Read(&byte, 1); }, CArchiveException::writeOnly},
        {[&] { store.PeekChunk(); }, CArchiveException::writeOnly},
        {[&] {
             store.Close();
             store.Write("x", 1);
         },
         CArchiveException::genericException}};
    for (const auto& [act, cause] : kRows) {
        try {
            act();
            ADD_FAILURE() << cause;
        } catch (const CArchiveException& exception) {
            EXPECT_EQ(exception.m_Cause, cause);
            EXPECT_FALSE(exception.GetErrorMessage().empty());
        }
    }
    EXPECT_EQ(target, "");
    EXPECT_EQ(load.ReadByte(), 'a');
}

TEST(Archive, AFailingFileCostsOnlyWhatComesAfter) {
    FailingFile broken(Pattern(kBuffer + 10));
    CArchive load(broken, CArchive::load);
    std::string read;
    EXPECT_THROW(
        {
            while (true)
                read += static_cast<char>(load.ReadByte());
        },
        CFileException);
    EXPECT_TRUE(read == Pattern(kBuffer + 10));

    FailingFile full({}, kBuffer);
    {
        CArchive store(full, CArchive::store);
        store.WriteString(Pattern(kBuffer - 1));
        store.WriteString("xy");
        EXPECT_THROW(store.WriteString(Pattern(2 * kBuffer)), CFileException);
        const int writes = full.m_Writes;
        EXPECT_NO_THROW(store.Close());
        EXPECT_EQ(full.m_Writes, writes) << "refused bytes were offered again";
        store.Close();
    }
    {
        FailingFile none({}, 0);
        CArchive store(none, CArchive::store);
        store.WriteString("lost");
        // The destructor must swallow the failure.
    }
}

TEST(File, SaysWhyItCannotBeOpened) {
    const std::string missing = "/nonexistent-folder/\xC3\xA4.txt";
    const std::tuple<std::string, CFile::Mode, CFileException::Cause> kRows[] = {
        {missing, CFile::modeRead, CFileException::fileNotFound},
        {missing, CFile::modeCreate, CFileException::fileNotFound},
        {"/", CFile::modeCreate, CFileException::badPath},
        {"/dev/null/x", CFile::modeRead, CFileException::badPath},
        {"/" + std::string(5000, 'a'), CFile::modeRead, CFileException::badPath}};
    for (const auto& [path, mode, cause] : kRows) {
        try {
            CFile file(path, mode);
            ADD_FAILURE() << path;
        } catch (const CFileException& exception) {
            EXPECT_EQ(exception.m_Cause, cause) << path;
            EXPECT_EQ(exception.m_FileName.ToCString(AString::kUtf8), path);
            EXPECT_NE(exception.GetErrorMessage().find(exception.m_FileName), AString::npos);
        }
    }
    CFile directory("/", CFile::modeRead);
    char byte;
    EXPECT_THROW(directory.Read(&byte, 1), CFileException);
    CFile closed;
    EXPECT_EQ(closed.Read(&byte, 1), 0u);
    EXPECT_THROW(closed.Write("x", 1), CFileException);
}
