/// CFileDialog: asks the user for a file.
#pragma once

#include <cstddef>

#include "astring.h"
#include "object.h"

/// A dialog for opening (true) or saving (false) a file. Fields are set before DoModal.
class QUOREL_API CFileDialog : public CObject {
public:
    enum Flags : unsigned {
        overwritePrompt = 0x0002,
        hideReadOnly = 0x0004,
        pathMustExist = 0x0800,
    };

    /// @param filter as FileRequest's
    CFileDialog(bool open, const AString& fileName, unsigned flags, const AString& filter);
    ~CFileDialog() override;

    /// Empty: the backend's own.
    AString m_Title;
    /// The room for the path in characters, with its end mark: a longer answer counts as cancelled.
    std::size_t m_MaxPath = 260;

    /// Shows the dialog. @return kIdOk, or kIdCancel, also without a backend
    int DoModal();
    /// The path chosen; empty unless DoModal gave kIdOk.
    const AString& GetPathName() const { return m_PathName; }

private:
    bool m_Open;
    AString m_FileName;
    unsigned m_Flags;
    AString m_Filter;
    AString m_PathName;
};
