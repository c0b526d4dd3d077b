/// CArchive: the byte stream of a document's Serialize, over memory or over a file.
#pragma once

#include <cstddef>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>

#include "exceptions.h"
#include "file.h"
#include "quorel_export.h"

/// Bytes in one direction, in order. Reading copies nothing that its caller doesn't ask for: over
/// memory the whole input is one chunk, over a file a chunk is what the buffer holds. Writing
/// gathers in a buffer of kBufferSize bytes, so that many small writes cost a copy each.
/// A use against the direction throws CArchiveException (readOnly, writeOnly); a failing file
/// throws CFileException; what was read or written before stays good.
class QUOREL_API CArchive {
public:
    enum Mode { load, store };
    static constexpr std::size_t kBufferSize = 64 * 1024;

    /// Loads from bytes, which must outlive the archive. Nothing is copied.
    explicit CArchive(std::string_view bytes);
    /// Stores by appending to target, which must outlive the archive. The last bytes are there
    /// after Close (or the destructor).
    /// A pointer, so that a string to load from can't be taken for one to store to.
    explicit CArchive(std::string* target);
    /// Loads from or stores to file, which must outlive the archive and isn't closed by it.
    CArchive(CFile& file, Mode mode);
    CArchive(const CArchive&) = delete;
    CArchive& operator=(const CArchive&) = delete;
    /// Closes; a failure at this point is lost, so a writer calls Close itself.
    ~CArchive();

    bool IsLoading() const { return m_Mode == load; }
    bool IsStoring() const { return m_Mode == store; }

    /// The bytes at hand that haven't been read, fetched from the file when none are; empty only
    /// at the end. Valid until the next operation on the archive but Skip.
    std::string_view PeekChunk() {
        if (m_Current == m_End)
            Fill();
        return {m_Current, static_cast<std::size_t>(m_End - m_Current)};
    }
    /// Marks count bytes of the last PeekChunk as read; more than it held counts as all of it.
    void Skip(std::size_t count) {
        const auto left = static_cast<std::size_t>(m_End - m_Current);
        m_Current += count < left ? count : left;
    }
    /// Reads up to size bytes into buffer; fewer only at the end.
    std::size_t Read(void* buffer, std::size_t size);
    /// Reads one byte as a value. @return false at the end, byte is untouched then
    bool TryReadByte(unsigned char& byte) {
        if (m_Current == m_End && !Fill())
            return false;
        byte = static_cast<unsigned char>(*m_Current++);
        return true;
    }
    /// Reads one byte. @throws CArchiveException (endOfFile) at the end
    unsigned char ReadByte();

    /// Writes size bytes.
    void Write(const void* bytes, std::size_t size) {
        if (m_Mode != store || size >= static_cast<std::size_t>(m_BufferEnd - m_Put))
            return WriteSlow(bytes, size);
        std::memcpy(m_Put, bytes, size);
        m_Put += size;
    }
    /// Writes the characters of text as they stand, without an end mark.
    void WriteString(std::string_view text) {
        if (!text.empty())
            Write(text.data(), text.size());
    }
    /// Hands everything written so far to the target.
    void Flush();
    /// Flushes and ends the archive: it reads as ended and throws on writing. Twice is harmless.
    void Close();

private:
    bool Fill();
    void WriteSlow(const void* bytes, std::size_t size);
    void Deliver(const char* bytes, std::size_t size);
    void CheckLoading() const;

    Mode m_Mode;
    bool m_Closed = false;
    const char* m_Current = nullptr; ///< next byte to read
    const char* m_End = nullptr;     ///< end of the chunk at hand
    char* m_Put = nullptr;           ///< where the next byte written goes
    char* m_BufferEnd = nullptr;
    std::unique_ptr<char[]> m_Buffer; ///< null when loading from memory
    CFile* m_File = nullptr;
    std::string* m_Target = nullptr;
};
