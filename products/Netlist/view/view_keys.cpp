/// Keys of a CSimEditView: what each one does to caret, selection and text.
#include <algorithm>
#include <string_view>

#include "base_editor.h"
#include "char_class.h"
#include "code_page.h"
#include "editor_options.h"
#include "record_type.h"
#include "resource_ids.h"
#include "sim_edit_doc.h"
#include "sim_edit_view.h"

namespace {

bool IsDown(unsigned key) {
    IBackendDesk* const desk = GetBackend();
    return desk && desk->IsKeyDown(key, false);
}

bool IsWordChar(char character) {
    return character == '_' ||
           chars::IsAlnum(codepage::DecodeByte(codepage::Page::kWindows1252, character));
}

bool IsBlank(char character) {
    return character == ' ';
}

/// The first place from `at` on whose character isn't of a class; the text's size when there is
/// none.
template <class Class>
std::size_t Skip(std::string_view text, std::size_t at, Class isOfClass) {
    while (at < text.size() && isOfClass(text[at]))
        ++at;
    return at;
}

/// Behind other characters than those of words, and behind the blanks that follow.
std::size_t SkipOthers(std::string_view text, std::size_t at) {
    at = Skip(text, at, [](char character) { return !IsWordChar(character); });
    return Skip(text, at, IsBlank);
}

/// The start of the word before a place, 0 when there is none.
std::size_t WordStartBefore(std::string_view text, std::size_t at) {
    while (at > 0 && !IsWordChar(text[at - 1]))
        --at;
    while (at > 0 && IsWordChar(text[at - 1]))
        --at;
    return at;
}

/// The place after a place to which a move by words goes; the same place when the line has none.
std::size_t WordStartBehind(std::string_view text, std::size_t at) {
    const std::size_t behind = Skip(text, Skip(text, at, IsWordChar), IsBlank);
    return behind != at ? behind : SkipOthers(text, at);
}

/// Where a move by words that comes from the line before stops.
std::size_t FirstWordStart(std::string_view text) {
    const std::size_t behind = Skip(text, 0, IsBlank);
    return behind != 0 ? behind : SkipOthers(text, 0);
}

/// The columns of the white space at a line's begin.
std::int32_t Indentation(std::string_view text) {
    return static_cast<std::int32_t>(std::min(text.find_first_not_of(" \v\f"), text.size()));
}

} // namespace

/// A key that moves the caret.
struct CSimEditView::Motion {
    using Move = void (CSimEditView::*)();

    unsigned Key;
    Move Plain;
    Move WithControl;
    bool KeepsWantedColumn;
    bool CanBlock; ///< with Alt, a selection that it begins is a block
};

std::intptr_t CSimEditView::OnKeyDown(std::uintptr_t key, std::intptr_t) {
    using V = CSimEditView;
    static constexpr Motion kMotions[] = {
        {kKeyUp, &V::MoveUp, &V::MoveUp, true, true},
        {kKeyDown, &V::MoveDown, &V::MoveDown, true, true},
        {kKeyPageUp, &V::MovePageUp, &V::MovePageUp, true, true},
        {kKeyPageDown, &V::MovePageDown, &V::MovePageDown, true, true},
        {kKeyLeft, &V::MoveLeft, &V::MoveWordLeft, false, true},
        {kKeyRight, &V::MoveRight, &V::MoveWordRight, false, true},
        {kKeyHome, &V::MoveHome, &V::MoveToFirstRow, false, false},
        {kKeyEnd, &V::MoveEnd, &V::MoveToLastRow, false, false},
    };
    struct Other {
        unsigned Key;
        void (V::*Handler)();
    };
    static constexpr Other kOthers[] = {
        {kKeyReturn, &V::OnEnter},  {kKeyBack, &V::OnBackspace}, {kKeyDelete, &V::OnDelete},
        {kKeyInsert, &V::OnInsert}, {kKeyEscape, &V::OnEscape},
    };
    if (!GetTextDocument())
        return 0;
    for (const Motion& motion : kMotions)
        if (motion.Key == key)
            MoveCaret(motion);
    const auto* other = std::ranges::find(kOthers, key, &Other::Key);
    if (other != std::end(kOthers))
        (this->*other->Handler)(); // a host that hears of it may close the view
    return 0;
}

bool CSimEditView::PreTranslateKey(unsigned key, unsigned modifiers) {
    if (key != kKeyDelete)
        return CScrollView::PreTranslateKey(key, modifiers);
    SendCommand(kCommandClear);
    return true;
}

void CSimEditView::MoveCaret(const Motion& motion) {
    HideCaret();
    const bool extends = IsDown(kKeyShift);
    if (m_Selected && !extends)
        CancelSelection();
    else if (!m_Selected && extends)
        BeginSelection(motion.CanBlock && IsDown(kKeyAlt));
    if (!motion.KeepsWantedColumn)
        m_WantedColumn = 0;
    (this->*(IsDown(kKeyControl) ? motion.WithControl : motion.Plain))();
    if (m_Selected)
        ExtendSelection();
    EnsureVisible(true);
}

void CSimEditView::MoveUp() {
    MoveOneRow(-1);
}

void CSimEditView::MoveDown() {
    MoveOneRow(1);
}

void CSimEditView::MovePageUp() {
    MoveRows(1 - std::max(m_LinesPerPage, 1));
}

void CSimEditView::MovePageDown() {
    MoveRows(std::max(m_LinesPerPage, 1) - 1);
}

void CSimEditView::MoveOneRow(std::int32_t rows) {
    const std::int32_t row = m_Caret.Row + rows;
    const bool moves = row >= 0 && row < GetTextDocument()->LineCount();
    if (moves && m_Selected && !m_BlockSelect && m_Caret.Column == 0)
        m_WantedColumn = 0;
    MoveRows(rows);
}

/// Moves as far as there are rows, to the wanted column or the nearest that the line has.
void CSimEditView::MoveRows(std::int32_t rows) {
    const CSimEditDoc& document = *GetTextDocument();
    const std::int32_t row = std::clamp(m_Caret.Row + rows, 0, document.LineCount() - 1);
    if (row == m_Caret.Row)
        return;
    const CSimEditLine& line = document.Line(row);
    std::int32_t column = std::max(m_Caret.Column, m_WantedColumn);
    if (const TabEntry* tab = line.TabAt(column))
        column = tab->Position;
    if (column > line.Length()) {
        if (m_WantedColumn == 0)
            m_WantedColumn = column;
        column = line.Length();
    }
    m_Caret = {column, row};
}

void CSimEditView::MoveLeft() {
    if (m_Caret.Column > 0)
        m_Caret.Column = ColumnBeforeCaret();
    else if (m_Caret.Row > 0)
        m_Caret = EndOfRow(m_Caret.Row - 1);
}

void CSimEditView::MoveRight() {
    const CSimEditDoc& document = *GetTextDocument();
    const CSimEditLine& line = document.Line(m_Caret.Row);
    if (m_Caret.Column < line.Length()) {
        const TabEntry* tab = line.TabAt(m_Caret.Column);
        m_Caret.Column = tab ? tab->Position + tab->Width : m_Caret.Column + 1;
    } else if (m_Caret.Row + 1 < document.LineCount()) {
        m_Caret = {0, m_Caret.Row + 1};
    }
}

void CSimEditView::MoveWordLeft() {
    const CSimEditDoc& document = *GetTextDocument();
    TextPlace from = m_Caret;
    while (from.Column == 0 && from.Row > 0)
        from = EndOfRow(from.Row - 1);
    const std::size_t start =
        WordStartBefore(document.Line(from.Row).Text(), static_cast<std::size_t>(from.Column));
    m_Caret = {static_cast<std::int32_t>(start), from.Row};
}

void CSimEditView::MoveWordRight() {
    const CSimEditDoc& document = *GetTextDocument();
    const auto column = static_cast<std::size_t>(m_Caret.Column);
    const std::size_t behind = WordStartBehind(document.Line(m_Caret.Row).Text(), column);
    if (behind != column)
        m_Caret.Column = static_cast<std::int32_t>(behind);
    else if (const std::int32_t next = m_Caret.Row + 1; next < document.LineCount())
        m_Caret = {static_cast<std::int32_t>(FirstWordStart(document.Line(next).Text())), next};
}

void CSimEditView::MoveHome() {
    const std::string_view text = GetTextDocument()->Line(m_Caret.Row).Text();
    const std::size_t behind = Skip(text, 0, IsBlank);
    const bool toText = m_Caret.Column == 0 && behind < text.size();
    m_Caret.Column = toText ? static_cast<std::int32_t>(behind) : 0;
}

void CSimEditView::MoveToFirstRow() {
    m_Caret = {};
}

void CSimEditView::MoveEnd() {
    m_Caret = EndOfRow(m_Caret.Row);
}

void CSimEditView::MoveToLastRow() {
    m_Caret = {0, GetTextDocument()->LineCount() - 1};
}

TextPlace CSimEditView::EndOfRow(std::int32_t row) const {
    return {GetTextDocument()->Line(row).Length(), row};
}

/// The start of the tab or character before the caret, which isn't at column 0.
std::int32_t CSimEditView::ColumnBeforeCaret() const {
    const TabEntry* tab = GetTextDocument()->Line(m_Caret.Row).TabAt(m_Caret.Column - 1);
    return tab ? tab->Position : m_Caret.Column - 1;
}

void CSimEditView::OnEnter() {
    HideCaret();
    m_WantedColumn = 0;
    TakeSelection();
    CSimEditDoc& document = *GetTextDocument();
    const CSimEditLine& line = document.Line(m_Caret.Row);
    const bool indents = CurrentOptions().FillBlanksOnEnter != 0 && line.Length() != 0 &&
                         m_Caret.Column == line.Length();
    document.SplitLine(m_Caret.Row, m_Caret.Column, 1, indents ? Indentation(line.Text()) : 0,
                       m_Recording);
    const std::int32_t row = m_Caret.Row + 1;
    m_Caret = {indents ? document.Line(row).Length() : 0, row};
    TextChanged(row - 1);
    EndKey();
}

void CSimEditView::OnBackspace() {
    HideCaret();
    m_WantedColumn = 0;
    if (TakeSelection()) {
        TextChanged(m_Caret.Row);
    } else if (m_Caret.Column > 0) {
        m_Caret.Column = ColumnBeforeCaret();
        DeleteCharAtCaret();
    } else if (m_Caret.Row > 0) {
        m_Caret = EndOfRow(m_Caret.Row - 1);
        JoinAtCaret();
    }
    EndKey();
}

void CSimEditView::OnDelete() {
    HideCaret();
    m_WantedColumn = 0;
    const CSimEditDoc& document = *GetTextDocument();
    if (TakeSelection())
        TextChanged(m_Caret.Row);
    else if (m_Caret.Column < document.Line(m_Caret.Row).Length())
        DeleteCharAtCaret();
    else if (m_Caret.Row + 1 < document.LineCount())
        JoinAtCaret();
    EndKey();
}

void CSimEditView::OnInsert() {
    if (IsDown(kKeyShift))
        SendCommand(kCommandPaste);
    else
        m_InsertMode = !m_InsertMode;
}

void CSimEditView::OnEscape() {
    if (!m_Selected)
        return;
    if (IBackendWindow* window = GetBackendWindow();
        window && (m_MouseSelecting || m_WordSelecting))
        window->SetCapture(false);
    m_WordSelecting = false;
    CancelSelection();
    EnsureVisible(false);
}

/// What Enter, Backspace and Delete end with, whether they changed anything or not.
void CSimEditView::EndKey() {
    EnsureVisible(true);
    if (!GetTextDocument()->Replaying())
        MakeCommand();
}

std::intptr_t CSimEditView::OnChar(std::uintptr_t character, std::intptr_t flags) {
    CBaseEditor* const editor = GetEditor();
    const auto unit = static_cast<char16_t>(character);
    const bool isUnit = character == unit;
    const char byte =
        isUnit ? codepage::EncodeUnit(codepage::Page::kWindows1252, unit) : codepage::kLackingByte;
    if (!editor || !CanBeTyped(byte))
        return 0;
    if (!isUnit || !codepage::CanEncode(codepage::Page::kWindows1252, {&unit, 1}))
        editor->NoteReplacedInput();
    TypeChar(byte);
    if (flags != 0)
        MakeCommand();
    return 0;
}

void CSimEditView::TypeChar(char character) {
    CSimEditDoc& document = *GetTextDocument();
    HideCaret();
    m_WantedColumn = 0;
    const bool replaced = TakeSelection();
    const RowState before = StateOfRow(m_Caret.Row);
    std::int32_t width = 0;
    if (m_InsertMode || document.Replaying())
        document.InsertChar(m_Caret.Row, m_Caret.Column, character, m_Recording, width);
    else
        document.OverwriteChar(m_Caret.Row, m_Caret.Column, character, m_Recording, width);
    document.SetModifiedFlag();
    RaiseMaxLineLength(m_Caret.Row);
    m_Caret.Column += width;
    const bool resized = UpdateScrollSizes(true, replaced, document.LineCount(), true);
    if (resized || replaced)
        document.UpdateAllViews(nullptr, m_Caret.Row);
    else
        ShowEditedRow(before);
    EnsureVisible(true);
}
