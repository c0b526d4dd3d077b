/// CFile: a disk file read or written in order, the ground of an archive.
#pragma once

#include <cstddef>
#include <cstdio>
#include <string>

#include "exceptions.h"
#include "object.h"

/// A binary file on the disk. The virtual operations are all that an archive needs, so a derived
/// class may bring its bytes from elsewhere or fail on purpose.
class QUOREL_API CFile : public CObject {
public:
    enum Mode { modeRead, modeCreate };

    /// A file that isn't open; Read gives 0, Write throws.
    CFile() = default;
    /// Opens the path (UTF-8) for reading, or creates it anew for writing.
    /// @throws CFileException when that can't be done
    CFile(const std::string& path, Mode mode);
    CFile(const CFile&) = delete;
    CFile& operator=(const CFile&) = delete;
    /// Closes without reporting; call Close to learn whether the last bytes were written.
    ~CFile() override;

    /// Reads up to size bytes; fewer only at the end of the file.
    /// @throws CFileException on a failing device
    virtual std::size_t Read(void* buffer, std::size_t size);
    /// Writes all bytes.
    /// @throws CFileException when not all could be written
    virtual void Write(const void* bytes, std::size_t size);
    /// Writes what is pending and closes; a second call does nothing.
    /// @throws CFileException when the pending bytes could not be written
    virtual void Close();

private:
    std::FILE* m_File = nullptr;
    std::string m_Path;
};
