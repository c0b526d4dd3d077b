#include "file.h"

#include <cerrno>

namespace {

CFileException::Cause CauseOf(int error) {
    switch (error) {
    case ENOENT:
        return CFileException::fileNotFound;
    case EACCES:
    case EPERM:
    case EROFS:
        return CFileException::accessDenied;
    case ENOSPC:
        return CFileException::diskFull;
    case ENOTDIR:
    case EISDIR:
    case ENAMETOOLONG:
        return CFileException::badPath;
    default:
        return CFileException::genericException;
    }
}

[[noreturn]] void Fail(int error, const std::string& path) {
    throw CFileException(CauseOf(error), AString::FromMultiByte(AString::kUtf8, path));
}

} // namespace

CFile::CFile(const std::string& path, Mode mode)
    : m_File(std::fopen(path.c_str(), mode == modeRead ? "rb" : "wb")), m_Path(path) {
    if (!m_File)
        Fail(errno, path);
}

CFile::~CFile() {
    if (m_File)
        std::fclose(m_File);
}

std::size_t CFile::Read(void* buffer, std::size_t size) {
    if (!m_File || size == 0)
        return 0;
    errno = 0;
    const std::size_t count = std::fread(buffer, 1, size, m_File);
    if (count < size && std::ferror(m_File))
        Fail(errno, m_Path);
    return count;
}

void CFile::Write(const void* bytes, std::size_t size) {
    if (size == 0)
        return;
    errno = 0;
    if (!m_File || std::fwrite(bytes, 1, size, m_File) < size)
        Fail(errno, m_Path);
}

void CFile::Close() {
    if (!m_File)
        return;
    errno = 0;
    std::FILE* file = m_File;
    m_File = nullptr;
    if (std::fclose(file) != 0)
        Fail(errno, m_Path);
}
