/// The errors of regular expressions.
#pragma once

#include "quorel_export.h"

/// The error codes that the engine can report. The table of texts knows more, which are kept for
/// callers that hold codes of other engines of this family.
enum class RegError : int {
    None = 0,
    NullSubject = 1,
    NullExpression = 10,
    TooBig = 11,
    TooManyGroups = 12,
    UnterminatedGroup = 13,
    UnmatchedGroup = 14,
    EmptyOperand = 16,
    NestedRepeat = 17,
    InvalidRange = 18,
    UnmatchedClass = 19,
    NothingToRepeat = 21,
    TrailingBackslash = 22,
};

/// Keeps the last error of an expression. The first error of a compilation stays.
class QUOREL_API CRegErrorHandler {
public:
    /// The text of an error code, "Unknown error" for codes that the table lacks.
    static const char* ErrorText(int code);

    /// The text of the last error, empty if there was none.
    const char* LastError() const {
        return m_error == RegError::None ? "" : ErrorText(LastErrorCode());
    }

    /// The code of the last error, 0 if there was none.
    int LastErrorCode() const { return static_cast<int>(m_error); }

    bool HasError() const { return m_error != RegError::None; }
    void SetError(RegError error) { m_error = error; }

private:
    RegError m_error = RegError::None;
};
