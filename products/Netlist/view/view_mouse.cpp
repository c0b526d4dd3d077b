/// The mouse on a CSimEditView: caret and selection by clicks and drags, words, the hover title.
#include <algorithm>
#include <cstdlib>
#include <new>
#include <tuple>
#include <utility>

#include "base_editor.h"
#include "code_page.h"
#include "idesign.h"
#include "menu.h"
#include "ole_data_source.h"
#include "resource_ids.h"
#include "sim_edit_view.h"

namespace {

/// Between two steps of a drag that scrolls by itself.
constexpr int kAutoScrollMilliseconds = 50;

/// So far apart may be the roundings of one place on a scaled screen.
constexpr int kSamePlace = 2;

bool IsBefore(TextPlace a, TextPlace b) {
    return std::tie(a.Row, a.Column) < std::tie(b.Row, b.Column);
}

/// The place of a message, no farther than reckoning with it bears.
CPoint PointOf(std::intptr_t value) {
    constexpr int kFarthest = 1 << 28;
    return {std::clamp(PointValueX(value), -kFarthest, kFarthest),
            std::clamp(PointValueY(value), -kFarthest, kFarthest)};
}

bool IsSamePlace(CPoint a, CPoint b) {
    return std::abs(a.x - b.x) <= kSamePlace && std::abs(a.y - b.y) <= kSamePlace;
}

} // namespace

CPoint CSimEditView::ToLogical(CPoint point) const {
    return {point.x + GetScrollPosition().x, point.y};
}

bool CSimEditView::IsInSelection(CPoint point) const {
    if (!m_Selected)
        return false;
    const TextPlace at = PointToPosition(point, false);
    const auto [from, to] = NormalizeSelection(m_SelAnchor, m_SelEnd);
    if (at.Row < from.Row || at.Row > to.Row)
        return false;
    if (m_BlockSelect && from.Row != to.Row)
        return true;
    return (at.Row > from.Row || at.Column >= from.Column) &&
           (at.Row < to.Row || at.Column < to.Column);
}

std::intptr_t CSimEditView::OnLButtonDown(std::uintptr_t, std::intptr_t place) {
    const CPoint point = ToLogical(PointOf(place));
    if (IsInSelection(point)) {
        DragSelection(point);
        return 0;
    }
    m_WantedColumn = 0;
    CancelSelection();
    SetCaretFromPoint(point, true, false, false);
    IBackendDesk* const desk = GetBackend();
    BeginSelection(desk && desk->IsKeyDown(kKeyAlt, false));
    CaptureMouse(true);
    m_MouseSelecting = true;
    return 0;
}

/// Offers the selected text to other programs. A drag that ends where it began was a click. The
/// user may close the view meanwhile.
void CSimEditView::DragSelection(CPoint point) {
    IBackendDesk* const desk = GetBackend();
    if (!desk)
        return;
    const std::weak_ptr<bool> alive = m_Busy;
    const CPoint before = desk->GetPointer();
    try {
        COleDataSource source;
        source.CacheText(GetSelectedText());
        if (source.DoDragDrop() != DropEffect::none)
            return;
    } catch (const std::bad_alloc&) {
        return;
    }
    if (alive.expired() || !IsSamePlace(desk->GetPointer(), before))
        return;
    CancelSelection();
    SetCaretFromPoint(point, true, false, false);
}

std::intptr_t CSimEditView::OnMouseMove(std::uintptr_t modifiers, std::intptr_t place) {
    HideHoverTitle();
    const CPoint point = ToLogical(PointOf(place));
    if (m_Selected && m_MouseSelecting)
        SetCaretFromPoint(point, false, true, false);
    else if (m_Selected && m_WordSelecting)
        ExtendByWords(PointToPosition(point));
    else {
        ShowCursorAt(point);
        return 0;
    }
    if (EnsureVisible(false))
        AutoScroll(modifiers, place);
    return 0;
}

/// Goes on with a drag that has scrolled the text while the mouse stands still.
void CSimEditView::AutoScroll(std::uintptr_t modifiers, std::intptr_t place) {
    IBackendDesk* const desk = GetBackend();
    IBackendWindow* const window = GetBackendWindow();
    if (!desk || !window || !desk->IsKeyDown(kKeyLeftButton, true) ||
        !IsSamePlace(desk->GetPointer(), window->ClientToScreen(PointOf(place))))
        return;
    window->Update();
    desk->Wait(kAutoScrollMilliseconds);
    PostMessage(kMsgMouseMove, modifiers, place);
}

/// Takes the selection from the word first taken to the word at a place.
void CSimEditView::ExtendByWords(TextPlace at) {
    WordRange word = WordAt(GetTextDocument()->Line(at.Row).Text(), at.Column);
    if (word.Start == word.End)
        word = {at.Column, at.Column};
    const bool isBefore = IsBefore(at, m_WordStart);
    const Highlight shown = ShownHighlight();
    m_SelAnchor = isBefore ? m_WordEnd : m_WordStart;
    m_Caret = {isBefore ? word.Start : word.End, at.Row};
    m_SelOld = m_SelEnd = m_Caret;
    ChangeHighlight(shown, ShownHighlight());
}

std::intptr_t CSimEditView::OnLButtonUp(std::uintptr_t, std::intptr_t place) {
    CaptureMouse(false);
    if (m_Selected && m_MouseSelecting)
        SetCaretFromPoint(ToLogical(PointOf(place)), false, false, true);
    m_MouseSelecting = m_WordSelecting = false;
    if (m_Selected && m_SelAnchor == m_SelEnd)
        CancelSelection();
    return 0;
}

std::intptr_t CSimEditView::OnLButtonDblClk(std::uintptr_t, std::intptr_t) {
    CancelSelection();
    m_WordSelecting = true;
    const WordRange word = RowCount() > 0
                               ? WordAt(GetTextDocument()->Line(m_Caret.Row).Text(), m_Caret.Column)
                               : WordRange{};
    if (word.Start < word.End) {
        m_WordStart = {word.Start, m_Caret.Row};
        m_WordEnd = {word.End, m_Caret.Row};
        m_Caret = m_WordStart;
        BeginSelection(false);
        m_Caret = m_WordEnd;
        ExtendSelection();
    }
    CaptureMouse(true);
    return 0;
}

void CSimEditView::CaptureMouse(bool on) {
    if (IBackendWindow* window = GetBackendWindow())
        window->SetCapture(on);
}

/// The arrow over a selection, which can be dragged, else the window's own shape.
void CSimEditView::ShowCursorAt(CPoint point) {
    const bool arrow = IsInSelection(point);
    IBackendDesk* const desk = GetBackend();
    if (std::exchange(m_ArrowShown, arrow) != arrow && desk)
        desk->SetCursor(arrow ? CursorShape::arrow : CursorShape::iBeam);
}

std::intptr_t CSimEditView::OnSetCursor(std::uintptr_t, std::intptr_t) {
    return m_ArrowShown;
}

std::intptr_t CSimEditView::OnNcMouseMove(std::uintptr_t, std::intptr_t place) {
    if (std::exchange(m_TitleShown, true))
        return 0;
    IBackendWindow* const window = GetBackendWindow();
    CBaseEditor* const editor = GetEditor();
    const CPoint point = PointOf(place);
    if (window && editor && window->GetWindowRect().Contains(point) &&
        point.y < window->ClientToScreen({0, 0}).y)
        editor->UpdateTitle(HoverTitle(*editor), true);
    return 0;
}

/// The names of what the editor's commands act on and of the editor's object.
AString CSimEditView::HoverTitle(CBaseEditor& editor) {
    AString context;
    if (ICommandContext* owner = editor.GetCommandContext())
        owner->GetName(context);
    AString object;
    static_cast<IViewDoc*>(editor.GetInterface(IViewDoc::kViewDocInterface))->GetObjectName(object);
    AString title;
    return title.Format(u"%s - %s", context, object);
}

void CSimEditView::HideHoverTitle() {
    CBaseEditor* const editor = GetEditor();
    if (std::exchange(m_TitleShown, false) && editor)
        editor->UpdateTitle({}, false);
}

std::intptr_t CSimEditView::OnContextMenu(std::uintptr_t, std::intptr_t place) {
    CMenu menu;
    IBackendDesk* const desk = GetBackend();
    const CMenu* const popup = desk && menu.LoadMenu(kMenuContext) ? menu.GetSubMenu(0) : nullptr;
    const std::weak_ptr<bool> alive = m_Busy;
    const unsigned command = popup ? desk->TrackMenu(*popup, PointOf(place), *this) : 0;
    if (command != 0 && !alive.expired())
        RunCommand(command);
    return 0;
}
