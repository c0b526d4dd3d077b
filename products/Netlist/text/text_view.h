/// What the text engine knows of a view.
#pragma once

#include "quorel_export.h"

#include <cstdint>

/// A view of a CSimEditDoc implements this beside the framework's view; the document finds it by
/// dynamic_cast.
class QUOREL_API ITextView {
public:
    /// The text is about to be replaced: show one line and lines of at most width columns.
    virtual void ResetText(std::int32_t lineCount, std::int32_t width) = 0;
    /// The longest line of a text just loaded is width columns long.
    virtual void SetMaxLineLength(std::int32_t width) = 0;

protected:
    ~ITextView() = default;
};

/// The least width measure of a view, in columns.
inline constexpr std::int32_t kLeastViewWidth = 1000;
