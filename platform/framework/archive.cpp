#include "archive.h"

#include <algorithm>

CArchive::CArchive(std::string_view bytes)
    : m_Mode(load), m_Current(bytes.data()), m_End(bytes.data() + bytes.size()) {}

CArchive::CArchive(std::string* target)
    : m_Mode(store), m_Buffer(std::make_unique_for_overwrite<char[]>(kBufferSize)),
      m_Target(target) {
    m_Put = m_Buffer.get();
    m_BufferEnd = m_Put + kBufferSize;
}

CArchive::CArchive(CFile& file, Mode mode)
    : m_Mode(mode), m_Buffer(std::make_unique_for_overwrite<char[]>(kBufferSize)), m_File(&file) {
    if (mode == store) {
        m_Put = m_Buffer.get();
        m_BufferEnd = m_Put + kBufferSize;
    }
}

CArchive::~CArchive() {
    try {
        Close();
    } catch (const CException&) {
        // Too late to tell anybody: who must know calls Close.
    }
}

void CArchive::CheckLoading() const {
    if (m_Mode != load)
        throw CArchiveException(CArchiveException::writeOnly);
}

bool CArchive::Fill() {
    CheckLoading();
    if (!m_File || m_Closed)
        return false;
    m_Current = m_End = m_Buffer.get();
    m_End += m_File->Read(m_Buffer.get(), kBufferSize);
    return m_Current != m_End;
}

std::size_t CArchive::Read(void* buffer, std::size_t size) {
    CheckLoading();
    char* to = static_cast<char*>(buffer);
    std::size_t left = size;
    while (left > 0) {
        if (m_Current == m_End && m_File && !m_Closed && left >= kBufferSize) {
            const std::size_t count = m_File->Read(to, left);
            return size - left + count;
        }
        const std::size_t count = std::min(left, PeekChunk().size());
        if (count == 0)
            break;
        std::memcpy(to, m_Current, count);
        Skip(count);
        to += count;
        left -= count;
    }
    return size - left;
}

unsigned char CArchive::ReadByte() {
    unsigned char byte = 0;
    if (!TryReadByte(byte))
        throw CArchiveException(CArchiveException::endOfFile);
    return byte;
}

void CArchive::WriteSlow(const void* bytes, std::size_t size) {
    if (m_Mode != store)
        throw CArchiveException(CArchiveException::readOnly);
    if (size == 0)
        return;
    if (m_Closed)
        throw CArchiveException(CArchiveException::genericException);
    Flush();
    if (size >= kBufferSize)
        return Deliver(static_cast<const char*>(bytes), size);
    std::memcpy(m_Put, bytes, size);
    m_Put += size;
}

void CArchive::Deliver(const char* bytes, std::size_t size) {
    if (m_Target)
        m_Target->append(bytes, size);
    else
        m_File->Write(bytes, size);
}

void CArchive::Flush() {
    if (m_Mode != store || m_Closed)
        return;
    const auto size = static_cast<std::size_t>(m_Put - m_Buffer.get());
    // Emptied first: bytes that the target has refused aren't offered again.
    m_Put = m_Buffer.get();
    if (size > 0)
        Deliver(m_Buffer.get(), size);
}

void CArchive::Close() {
    if (m_Closed)
        return;
    const char* const begin = m_Buffer.get();
    const auto size = m_Mode == store ? static_cast<std::size_t>(m_Put - begin) : 0;
    m_Closed = true;
    m_Current = m_End = nullptr;
    m_Put = m_BufferEnd = nullptr;
    if (size > 0)
        Deliver(begin, size);
}
