/// Raw streams of 16-bit units: over strings, and over streams of bytes.
#pragma once

#include <cstddef>
#include <fstream>
#include <ios>
#include <memory>
#include <streambuf>
#include <string>
#include <string_view>

#include "quorel_export.h"

namespace io {

/// Over a string of 16-bit units that it holds: what was given, and what is written. Has a position
/// for reading and one for writing, both inside the string; writing overwrites and, at the end,
/// adds. Growing costs constant time a unit.
class QUOREL_API CString_streambuf : public std::basic_streambuf<char16_t> {
public:
    /// An empty string with room for `size` units.
    explicit CString_streambuf(std::size_t size = 0);
    /// A text, to be read from its start.
    explicit CString_streambuf(std::u16string text);
    ~CString_streambuf() override;
    CString_streambuf(const CString_streambuf&) = delete;
    CString_streambuf& operator=(const CString_streambuf&) = delete;

    /// The whole string, wherever the positions stand. Valid until the next write.
    std::u16string_view GetView() const noexcept;

protected:
    int_type underflow() override;
    int_type overflow(int_type unit) override;
    std::streamsize xsputn(const char16_t* units, std::streamsize count) override;
    /// Moves the positions that `which` names; from the present one that of reading if that alone
    /// is named.
    pos_type seekoff(off_type offset, std::ios_base::seekdir from,
                     std::ios_base::openmode which) override;
    pos_type seekpos(pos_type pos, std::ios_base::openmode which) override;

private:
    void Resize(std::size_t size);
    void NoteLength() noexcept;

    std::u16string mGiven;      ///< the text given, until the string grows
    char16_t* mUnits = nullptr; ///< mGiven's or, once grown, from std::malloc
    std::size_t mSize = 0;      ///< units that there is room for
    std::size_t mLength = 0;    ///< units in use, but for those written since it was noted
};

/// Over a stream of bytes, a byte a unit, with one position for reading and writing. Buffers by
/// itself; nobody else may use the bytes meanwhile. A unit above 255 can't be written: writing it
/// fails, when the buffer is written at the latest.
class QUOREL_API CByte_streambuf : public std::basic_streambuf<char16_t> {
public:
    /// Begins where the bytes stand. They are not owned and must outlive it. Positions are theirs;
    /// bytes that can't tell their position are read and written without any.
    explicit CByte_streambuf(std::streambuf& bytes);
    /// Writes what is buffered; pubsync tells whether that fails.
    ~CByte_streambuf() override;
    CByte_streambuf(const CByte_streambuf&) = delete;
    CByte_streambuf& operator=(const CByte_streambuf&) = delete;

    /// True when the bytes could not be read; reading then found the end.
    bool HasFailed() const noexcept { return mHasFailed; }

protected:
    int_type underflow() override;
    int_type overflow(int_type unit) override;
    int sync() override;
    pos_type seekoff(off_type offset, std::ios_base::seekdir from,
                     std::ios_base::openmode which) override;
    pos_type seekpos(pos_type pos, std::ios_base::openmode which) override;

private:
    static constexpr std::size_t kUnits = 1 << 15;

    off_type Tell() const noexcept;
    bool Flush();
    bool DropInput();
    off_type MoveTo(off_type offset, std::ios_base::seekdir from);

    std::streambuf& mBytes;
    std::unique_ptr<char16_t[]> mUnits; ///< the input or the output that is buffered
    std::unique_ptr<char[]> mRawBytes;
    off_type mPos = -1; ///< where the bytes stand; -1 if they can't tell
    bool mHasFailed = false;
};

/// Holds the file of a CFile_streambuf while its base is made and ended.
struct CFile_holder {
    CFile_holder(const std::string& path, std::ios_base::openmode mode) { mFile.open(path, mode); }

    std::filebuf mFile;
};

/// Over a file of bytes that it opens and closes.
class QUOREL_API CFile_streambuf : private CFile_holder, public CByte_streambuf {
public:
    /// Opens as std::filebuf does, always in binary mode. See IsOpen.
    CFile_streambuf(const std::string& path, std::ios_base::openmode mode);

    bool IsOpen() const { return mFile.is_open(); }
    /// Writes what is buffered and closes; false when any of that failed.
    bool Close();
};

} // namespace io
