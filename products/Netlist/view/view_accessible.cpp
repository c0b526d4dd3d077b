/// A view's text for screen readers.
#include <algorithm>
#include <limits>

#include "code_page.h"
#include "reader_text.h"
#include "sim_edit_doc.h"

namespace {

int ToOffset(std::int64_t offset) {
    constexpr std::int64_t kMost = std::numeric_limits<int>::max();
    return static_cast<int>(std::min(offset, kMost));
}

} // namespace

IAccessibleText* CSimEditView::GetAccessibleText() {
    if (!GetTextDocument())
        return nullptr;
    if (!m_ReaderText)
        m_ReaderText = std::make_unique<ReaderText>(*this);
    return m_ReaderText.get();
}

std::int64_t CSimEditView::ReaderText::OffsetOfRow(std::int32_t row) const {
    const CSimEditDoc* const document = m_View.GetTextDocument();
    std::int64_t offset = row; // a line end behind each row before
    for (std::int32_t before = 0; document && before < row; ++before)
        offset += document->Line(before).Length();
    return offset;
}

int CSimEditView::ReaderText::OffsetOf(TextPlace place) const {
    return ToOffset(OffsetOfRow(place.Row) + place.Column);
}

TextPlace CSimEditView::ReaderText::PlaceOf(int offset) const {
    const CSimEditDoc* const document = m_View.GetTextDocument();
    TextPlace place{.Column = std::max(offset, 0), .Row = 0};
    while (document && place.Column > document->Line(place.Row).Length()) {
        const std::int32_t length = document->Line(place.Row).Length();
        if (place.Row + 1 == document->LineCount())
            return {.Column = length, .Row = place.Row};
        place.Column -= length + 1;
        ++place.Row;
    }
    return place;
}

int CSimEditView::ReaderText::GetLength() {
    const CSimEditDoc* const document = m_View.GetTextDocument();
    return document ? ToOffset(OffsetOfRow(document->LineCount()) - 1) : 0;
}

AString CSimEditView::ReaderText::GetText(Range range) {
    AString text;
    const CSimEditDoc* const document = m_View.GetTextDocument();
    if (!document)
        return text;
    const TextPlace to = PlaceOf(range.m_To);
    for (TextPlace at = PlaceOf(range.m_From);
         at.Row < to.Row || (at.Row == to.Row && at.Column < to.Column);
         at = {.Column = 0, .Row = at.Row + 1}) {
        const std::string_view line = document->Line(at.Row).Text();
        const std::int32_t end = at.Row == to.Row ? to.Column : document->Line(at.Row).Length();
        codepage::AppendDecoded(codepage::Page::kWindows1252,
                                line.substr(static_cast<std::size_t>(at.Column),
                                            static_cast<std::size_t>(end - at.Column)),
                                text);
        if (at.Row != to.Row)
            text += u'\n';
    }
    return text;
}

int CSimEditView::ReaderText::GetCaretOffset() {
    return OffsetOf(m_View.m_Caret);
}

IAccessibleText::Range CSimEditView::ReaderText::GetSelection() {
    if (!m_View.m_Selected || !m_View.GetTextDocument())
        return {};
    const TextRange selected = m_View.SelectedRange();
    return {OffsetOf(selected.From), OffsetOf(selected.To)};
}

AString CSimEditView::ReaderText::GetSelectedText() {
    return m_View.HasWidth() ? m_View.GetSelectedText() : AString();
}

IAccessibleText::Range CSimEditView::ReaderText::GetLineAt(int offset) {
    const CSimEditDoc* const document = m_View.GetTextDocument();
    if (!document)
        return {};
    const std::int32_t row = PlaceOf(offset).Row;
    const int start = OffsetOf({.Column = 0, .Row = row});
    return {start, ToOffset(std::int64_t{start} + document->Line(row).Length())};
}
