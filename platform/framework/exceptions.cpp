#include "exceptions.h"

#include "backend.h"

namespace {

constexpr const char16_t* kFileTexts[] = {
    u"The file '%s' can't be used.", u"The file '%s' isn't there.", u"Access to '%s' was denied.",
    u"The disk is full: '%s'.",      u"'%s' is no valid path.",
};
constexpr const char16_t* kArchiveTexts[] = {
    u"The document can't be read or written.",
    u"The archive is for reading only.",
    u"The document ends too early.",
    u"The archive is for writing only.",
};

} // namespace

CException::~CException() = default;

const char* CException::what() const noexcept {
    return "framework exception";
}

void CException::ReportError() const {
    if (IBackendDesk* desk = GetBackend())
        desk->ShowMessage(GetErrorMessage(), kWarningStyle);
}

CFileException::CFileException(Cause cause, AString path)
    : m_Cause(cause), m_FileName(std::move(path)) {}

CFileException::~CFileException() = default;

AString CFileException::GetErrorMessage() const {
    AString text;
    text.Format(kFileTexts[m_Cause], m_FileName);
    return text;
}

CArchiveException::CArchiveException(Cause cause) : m_Cause(cause) {}

CArchiveException::~CArchiveException() = default;

AString CArchiveException::GetErrorMessage() const {
    return kArchiveTexts[m_Cause];
}
