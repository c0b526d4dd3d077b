#include "file_session.h"

#include <algorithm>
#include <sstream>

#include "atomic_file.h"
#include "file_io.h"

namespace {

using FileTime = std::filesystem::file_time_type;

std::size_t HashOf(std::string_view bytes) {
    return std::hash<std::string_view>()(bytes);
}

} // namespace

void FileSession::Know(const std::string& path, std::string_view bytes) {
    m_Path = path;
    m_Stamp = FileStamp::Of(path);
    m_Hash = HashOf(bytes);
    m_FormChanged = false;
}

sys::Status FileSession::Load(const std::string& path, std::string& archive) {
    // Stamped before it is read: what is written meanwhile is noticed.
    const std::optional<FileStamp> stamp = FileStamp::Of(path);
    if (sys::Status status = sys::ReadWholeFile(path, kMostBytes, archive); !status)
        return status;
    Know(path, archive);
    m_Stamp = stamp;
    m_Form = DecodeFile(archive);
    return {};
}

bool FileSession::ReadKnown(bool modified, std::string& bytes) const {
    return !modified && !m_FormChanged && m_Stamp &&
           sys::ReadWholeFile(m_Path, kMostBytes, bytes) && HashOf(bytes) == m_Hash;
}

bool FileSession::KeepsBytes(bool modified) const {
    std::string bytes;
    return ReadKnown(modified, bytes);
}

sys::Status FileSession::Save(const std::string& path, std::string archive, bool modified) {
    std::string bytes;
    const bool isAsLoaded = ReadKnown(modified, bytes);
    if (isAsLoaded && path == m_Path)
        return {};
    if (!isAsLoaded) {
        NoteForm(archive);
        bytes = std::move(archive);
        EncodeFile(bytes, m_Form);
    }
    if (sys::Status status = sys::WriteFileAtomically(path, bytes); !status)
        return status;
    Know(path, bytes);
    return {};
}

/// Notes what becomes of the form by a text that it didn't have before.
void FileSession::NoteForm(const std::string& archive) {
    const auto isOther = [](char c) { return static_cast<unsigned char>(c) >= 0x80; };
    if (m_Form.m_Encoding == FileEncoding::ascii && std::ranges::any_of(archive, isOther))
        m_Form.m_Encoding = FileEncoding::utf8;
    if (m_Form.m_LineEnds == LineEnds::none && archive.find('\n') != archive.npos)
        m_Form.m_LineEnds = LineEnds::lf;
}

FileSession::Disk FileSession::CheckDisk() {
    if (m_Path.empty())
        return Disk::same;
    const std::optional<FileStamp> stamp = FileStamp::Of(m_Path);
    if (stamp == m_Stamp)
        return Disk::same;
    if (!stamp)
        return Disk::gone;
    std::string bytes;
    if (!sys::ReadWholeFile(m_Path, kMostBytes, bytes) || !m_Stamp || HashOf(bytes) != m_Hash)
        return Disk::changed;
    m_Stamp = stamp; // touched only
    return Disk::same;
}

void FileSession::AcceptDisk() {
    m_Stamp = FileStamp::Of(m_Path);
    std::string bytes;
    static_cast<void>(sys::ReadWholeFile(m_Path, kMostBytes, bytes));
    m_Hash = HashOf(bytes);
}

void FileSession::Adopt(const std::string& path, const FileForm& form,
                        const std::string& knownDisk) {
    m_Path = path;
    m_Form = form;
    m_Stamp.reset();
    std::istringstream words(knownDisk);
    FileStamp stamp;
    std::int64_t time = 0;
    if (words >> stamp.m_Size >> time >> m_Hash) {
        stamp.m_Time = FileTime(FileTime::duration(time));
        m_Stamp = stamp;
    }
}

std::string FileSession::GetKnownDisk() const {
    if (!m_Stamp)
        return {};
    const std::int64_t time = m_Stamp->m_Time.time_since_epoch().count();
    return std::to_string(m_Stamp->m_Size) + ' ' + std::to_string(time) + ' ' +
           std::to_string(m_Hash);
}

void FileSession::SetLineEnds(LineEnds ends) {
    m_FormChanged = m_FormChanged || ends != m_Form.m_LineEnds;
    m_Form.m_LineEnds = ends;
}

LineEnds FileSession::GetSavedLineEnds() const {
    return m_Form.m_LineEnds == LineEnds::none ? LineEnds::lf : m_Form.m_LineEnds;
}
