/// AccessibleCanvas: what a screen reader sees of a view.
#pragma once

#include <QAccessibleWidget>

class Canvas;
class IAccessibleText;

/// The view as an editable text, read through the sink's IAccessibleText. Without one it is an
/// empty text.
class AccessibleCanvas : public QAccessibleWidget, public QAccessibleTextInterface {
public:
    explicit AccessibleCanvas(Canvas& canvas);

    /// Makes these known to Qt; once a process.
    static void Install();
    /// Tells readers, if there are any, that text, caret or selection have changed.
    static void TellChanges(Canvas& canvas);

    void* interface_cast(QAccessible::InterfaceType type) override;
    QAccessible::State state() const override;

    void selection(int index, int* start, int* end) const override;
    int selectionCount() const override;
    /// The view's own keys select; these do nothing.
    void addSelection(int, int) override {}
    void removeSelection(int) override {}
    void setSelection(int, int, int) override {}
    int cursorPosition() const override;
    void setCursorPosition(int) override {}
    using QAccessibleWidget::text;
    QString text(int start, int end) const override;
    QString textBeforeOffset(int offset, QAccessible::TextBoundaryType boundary, int* start,
                             int* end) const override;
    QString textAfterOffset(int offset, QAccessible::TextBoundaryType boundary, int* start,
                            int* end) const override;
    QString textAtOffset(int offset, QAccessible::TextBoundaryType boundary, int* start,
                         int* end) const override;
    int characterCount() const override;
    QRect characterRect(int offset) const override;
    int offsetAtPoint(const QPoint&) const override { return -1; }
    void scrollToSubstring(int, int) override {}
    QString attributes(int offset, int* start, int* end) const override;

private:
    IAccessibleText* GetText() const;
    /// The piece around an offset; lines whole, words and characters within their line.
    QString PieceAt(int offset, QAccessible::TextBoundaryType boundary, int* start, int* end) const;
};
