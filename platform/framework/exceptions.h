/// The framework's exceptions: thrown by value, caught by const reference, never through the
/// module's entry.
#pragma once

#include <exception>

#include "astring.h"
#include "quorel_export.h"

/// What every exception of the framework offers.
class QUOREL_API CException : public std::exception {
public:
    ~CException() override;
    /// The fixed name of the kind, for logs. Never null.
    const char* what() const noexcept override;
    /// The text that a user reads.
    virtual AString GetErrorMessage() const = 0;
    /// Shows GetErrorMessage in a message box of the backend; nothing without a backend.
    void ReportError() const;
};

/// A file that can't be opened, read or written.
class QUOREL_API CFileException : public CException {
public:
    enum Cause { genericException, fileNotFound, accessDenied, diskFull, badPath };

    CFileException(Cause cause, AString path);
    ~CFileException() override;

    AString GetErrorMessage() const override;

    Cause m_Cause;
    /// The path as it was given; empty when the file has none.
    AString m_FileName;
};

/// An archive that can't go on.
class QUOREL_API CArchiveException : public CException {
public:
    enum Cause { genericException, readOnly, endOfFile, writeOnly };

    explicit CArchiveException(Cause cause);
    ~CArchiveException() override;

    AString GetErrorMessage() const override;

    Cause m_Cause;
};
