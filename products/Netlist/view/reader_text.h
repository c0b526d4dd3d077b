/// CSimEditView::ReaderText: what a screen reader reads of a view.
#pragma once

#include <cstdint>

#include "backend.h"
#include "sim_edit_view.h"

/// The text with its tabs as blanks, so that offsets within a line are columns. Nothing is kept: an
/// offset costs a walk over the lines before it, which only a running reader asks for.
class CSimEditView::ReaderText final : public IAccessibleText {
public:
    explicit ReaderText(const CSimEditView& view) : m_View(view) {}

    int GetLength() override;
    AString GetText(Range range) override;
    int GetCaretOffset() override;
    /// A block gives all between its corners.
    Range GetSelection() override;
    Range GetLineAt(int offset) override;
    AString GetSelectedText() override;

private:
    std::int64_t OffsetOfRow(std::int32_t row) const;
    int OffsetOf(TextPlace place) const;
    TextPlace PlaceOf(int offset) const;

    const CSimEditView& m_View;
};
