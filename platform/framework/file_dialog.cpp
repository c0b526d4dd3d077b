#include "file_dialog.h"

#include "backend.h"

CFileDialog::CFileDialog(bool open, const AString& fileName, unsigned flags, const AString& filter)
    : m_Open(open), m_FileName(fileName), m_Flags(flags), m_Filter(filter) {}

CFileDialog::~CFileDialog() = default;

int CFileDialog::DoModal() {
    m_PathName.clear();
    IBackendDesk* desk = GetBackend();
    if (!desk)
        return kIdCancel;
    const FileRequest request{.m_Open = m_Open,
                              .m_Title = m_Title,
                              .m_FileName = m_FileName,
                              .m_Filter = m_Filter,
                              .m_OverwritePrompt = (m_Flags & overwritePrompt) != 0,
                              .m_PathMustExist = (m_Flags & pathMustExist) != 0};
    std::optional<AString> path = desk->AskFile(request);
    if (!path || path->size() >= m_MaxPath)
        return kIdCancel;
    m_PathName = std::move(*path);
    return kIdOk;
}
