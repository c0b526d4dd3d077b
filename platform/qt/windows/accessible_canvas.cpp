#include "accessible_canvas.h"

#include <algorithm>

#include <QTextBoundaryFinder>

#include "backend.h"
#include "qt_canvas.h"
#include "qt_text.h"
#include "view_window.h"

namespace {

QAccessibleInterface* MakeAccessible(const QString&, QObject* object) {
    auto* canvas = dynamic_cast<Canvas*>(object);
    return canvas ? new AccessibleCanvas(*canvas) : nullptr;
}

IAccessibleText* TextOf(const Canvas& canvas) {
    return canvas.GetViewWindow() ? canvas.GetViewWindow()->GetSink().GetAccessibleText() : nullptr;
}

/// What readers were told last; there is one text with the focus.
struct Told {
    const Canvas* m_Canvas = nullptr;
    int m_Length = 0;
    int m_Caret = 0;
    IAccessibleText::Range m_Selection;
};

/// A change of length next to the caret is what was typed or deleted there.
void TellLength(Canvas& canvas, IAccessibleText& text, const Told& before, const Told& now) {
    const int grown = now.m_Length - before.m_Length;
    if (grown > 0) {
        const int from = std::max(now.m_Caret - grown, 0);
        QAccessibleTextInsertEvent event(&canvas, from, ToQt(text.GetText({from, from + grown})));
        QAccessible::updateAccessibility(&event);
    } else if (grown < 0) {
        QAccessibleTextRemoveEvent event(&canvas, now.m_Caret, QString(-grown, QLatin1Char(' ')));
        QAccessible::updateAccessibility(&event);
    }
}

QTextBoundaryFinder::BoundaryType FinderType(QAccessible::TextBoundaryType boundary) {
    return boundary == QAccessible::WordBoundary ? QTextBoundaryFinder::Word
                                                 : QTextBoundaryFinder::Grapheme;
}

} // namespace

AccessibleCanvas::AccessibleCanvas(Canvas& canvas)
    : QAccessibleWidget(&canvas, QAccessible::EditableText) {}

void AccessibleCanvas::Install() {
    static const bool done = (QAccessible::installFactory(&MakeAccessible), true);
    static_cast<void>(done);
}

void AccessibleCanvas::TellChanges(Canvas& canvas) {
    static Told sTold;
    IAccessibleText* text = QAccessible::isActive() ? TextOf(canvas) : nullptr;
    if (!text)
        return;
    const Told now{&canvas, text->GetLength(), text->GetCaretOffset(), text->GetSelection()};
    const Told before = std::exchange(sTold, now);
    if (before.m_Canvas == &canvas)
        TellLength(canvas, *text, before, now);
    if (before.m_Selection != now.m_Selection) {
        QAccessibleTextSelectionEvent event(&canvas, now.m_Selection.m_From, now.m_Selection.m_To);
        QAccessible::updateAccessibility(&event);
    }
    QAccessibleTextCursorEvent event(&canvas, now.m_Caret);
    QAccessible::updateAccessibility(&event);
}

IAccessibleText* AccessibleCanvas::GetText() const {
    const auto* canvas = dynamic_cast<const Canvas*>(object());
    return canvas ? TextOf(*canvas) : nullptr;
}

void* AccessibleCanvas::interface_cast(QAccessible::InterfaceType type) {
    return type == QAccessible::TextInterface ? static_cast<QAccessibleTextInterface*>(this)
                                              : QAccessibleWidget::interface_cast(type);
}

QAccessible::State AccessibleCanvas::state() const {
    QAccessible::State state = QAccessibleWidget::state();
    state.editable = true;
    state.multiLine = true;
    state.selectableText = true;
    return state;
}

void AccessibleCanvas::selection(int index, int* start, int* end) const {
    IAccessibleText* const text = GetText();
    const auto range = text && index == 0 ? text->GetSelection() : IAccessibleText::Range{};
    *start = range.m_From;
    *end = range.m_To;
}

int AccessibleCanvas::selectionCount() const {
    IAccessibleText* const text = GetText();
    return text && text->GetSelection().m_From < text->GetSelection().m_To ? 1 : 0;
}

int AccessibleCanvas::cursorPosition() const {
    IAccessibleText* const text = GetText();
    return text ? text->GetCaretOffset() : 0;
}

QString AccessibleCanvas::text(int start, int end) const {
    IAccessibleText* const text = GetText();
    return text ? ToQt(text->GetText({start, end})) : QString();
}

int AccessibleCanvas::characterCount() const {
    IAccessibleText* const text = GetText();
    return text ? text->GetLength() : 0;
}

QString AccessibleCanvas::PieceAt(int offset, QAccessible::TextBoundaryType boundary, int* start,
                                  int* end) const {
    IAccessibleText* const source = GetText();
    *start = *end = -1;
    if (!source || offset < 0 || offset > source->GetLength())
        return {};
    IAccessibleText::Range piece = source->GetLineAt(offset);
    const QString line = ToQt(source->GetText(piece));
    const bool inLine =
        boundary == QAccessible::CharBoundary || boundary == QAccessible::WordBoundary;
    if (inLine && offset < piece.m_To) {
        QTextBoundaryFinder finder(FinderType(boundary), line);
        const int lineStart = piece.m_From;
        finder.setPosition(offset - lineStart);
        if (!finder.isAtBoundary())
            finder.toPreviousBoundary();
        piece.m_From = lineStart + static_cast<int>(finder.position());
        piece.m_To = lineStart + static_cast<int>(finder.toNextBoundary());
    } else {
        if (inLine)
            piece.m_From = piece.m_To;
        piece.m_To = std::min(piece.m_To + 1, source->GetLength()); // with the line end
    }
    *start = piece.m_From;
    *end = piece.m_To;
    return ToQt(source->GetText(piece));
}

QString AccessibleCanvas::textAtOffset(int offset, QAccessible::TextBoundaryType boundary,
                                       int* start, int* end) const {
    return PieceAt(offset, boundary, start, end);
}

QString AccessibleCanvas::textBeforeOffset(int offset, QAccessible::TextBoundaryType boundary,
                                           int* start, int* end) const {
    PieceAt(offset, boundary, start, end);
    return PieceAt(*start - 1, boundary, start, end);
}

QString AccessibleCanvas::textAfterOffset(int offset, QAccessible::TextBoundaryType boundary,
                                          int* start, int* end) const {
    PieceAt(offset, boundary, start, end);
    return PieceAt(*end == characterCount() ? -1 : *end, boundary, start, end);
}

QRect AccessibleCanvas::characterRect(int offset) const {
    const auto* canvas = dynamic_cast<const Canvas*>(object());
    if (!canvas || !canvas->GetViewWindow() || !canvas->GetViewWindow()->GetCaret() ||
        offset != cursorPosition())
        return {};
    const QRect own = canvas->FromDevice(*canvas->GetViewWindow()->GetCaret());
    return {canvas->mapToGlobal(own.topLeft()), own.size()};
}

QString AccessibleCanvas::attributes(int, int* start, int* end) const {
    *start = 0;
    *end = characterCount();
    return {};
}
