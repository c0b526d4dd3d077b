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

/// Over a string of 16-bit units that it holds. Reads and writes at one common position; writing
/// overwrites, and grows the string at its end. Seeks anywhere inside the string.
class QUOREL_API CString_streambuf : public std::basic_streambuf<char16_t> {
public:
    /// An empty string with room for `size` units.
    explicit CString_streambuf(std::size_t size = 0);
    /// A string to read, standing at its start.
    explicit CString_streambuf(std::u16string text);

    /// What was given or written: all of it, wherever the position stands. Valid until the next
    /// write.
    std::u16string_view GetView() const noexcept;

protected:
    int_type underflow() override;
    int_type overflow(int_type unit) override;
    std::streamsize xsputn(const char16_t* units, std::streamsize count) override;
    pos_type seekoff(off_type offset, std::ios_base::seekdir from,
                     std::ios_base::openmode which) override;
    pos_type seekpos(pos_type pos, std::ios_base::openmode which) override;

private:
    std::size_t Position() const noexcept;
    void SetPosition(std::size_t pos);
    void Grow(std::size_t count);

    std::u16string mText; ///< as long as there is room for
    std::size_t mLength;  ///< units in use, when the put area doesn't reach further
    bool mIsReading = true;
};

/// Over a stream of bytes, a byte a unit. Buffers in itself; the bytes must not be moved by others
/// meanwhile. A unit above 255 can't be written and fails. Positions are those of the bytes.
class QUOREL_API CByte_streambuf : public std::basic_streambuf<char16_t> {
public:
    /// The bytes are not owned and must outlive it. The position is where they stand.
    explicit CByte_streambuf(std::streambuf& bytes);
    /// Writes what is buffered; a failure is lost, see pubsync.
    ~CByte_streambuf() override;

protected:
    int_type underflow() override;
    int_type overflow(int_type unit) override;
    int sync() override;
    pos_type seekoff(off_type offset, std::ios_base::seekdir from,
                     std::ios_base::openmode which) override;
    pos_type seekpos(pos_type pos, std::ios_base::openmode which) override;

private:
    static constexpr std::size_t kUnits = 1 << 15;

    bool Flush();
    bool DropInput();

    std::streambuf& mBytes;
    std::unique_ptr<char16_t[]> mUnits; ///< the input or the output that is buffered
    std::unique_ptr<char[]> mRawBytes;
};

/// Over a file of bytes that it opens.
class QUOREL_API CFile_streambuf : public CByte_streambuf {
public:
    /// Opens as std::filebuf does; `std::ios::binary` is added. See IsOpen.
    CFile_streambuf(const std::string& path, std::ios_base::openmode mode);
    ~CFile_streambuf() override;
    bool IsOpen() const;
    /// Writes what is buffered and closes; false when any of that failed.
    bool Close();

private:
    struct File;
    explicit CFile_streambuf(std::unique_ptr<File> file);

    std::unique_ptr<File> mFile;
};

} // namespace io
