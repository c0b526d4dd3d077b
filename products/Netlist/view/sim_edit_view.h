/// CSimEditView: shows a text document in a scrolling window, and edits it.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "ieditor_inspector.h"
#include "text_view.h"
#include "view.h"

class CBaseEditor;
class CFindDialog;
class CSimEditLine;
class IDesignInstance;
class IViewKey;
class PaintGathering;

/// A place in the text, 0-based; the column counts in the expanded text.
struct TextPlace {
    std::int32_t Column = 0;
    std::int32_t Row = 0;
    bool operator==(const TextPlace&) const = default;
};

/// Two places in order.
struct TextRange {
    TextPlace From;
    TextPlace To;
};

/// The columns of a word, the end behind it.
struct WordRange {
    std::int32_t Start = 0;
    std::int32_t End = 0;
};

/// One of the views of an editor; it belongs to a design instance or to none. Caret, selection and
/// scroll state are the view's, the text is shared. A column is always column times character width
/// pixels and a row a fixed height, so that a pixel maps to a place by two divisions.
///
/// The selection and the caret are drawn by inverting what is there, so every operation that paints
/// leaves the picture as a full repaint would draw it. Sources: layout and scrolling, painting,
/// selection, mouse, keys, editing, clipboard, bookmarks, search, replay, printing.
class CSimEditView : public CScrollView, public ITextView {
public:
    CSimEditView();
    /// The document then has another active view, or none.
    ~CSimEditView() override;

    /// @name Layout, caret and selection
    /// @{
    /// Back to the start state, as every load does first.
    void ResetView(std::int32_t lineCount, std::int32_t width);
    /// Works out the scrollable sizes of a text of that many lines. @return whether one changed
    bool UpdateScrollSizes(bool horizontal, bool vertical, std::int32_t lineCount,
                           bool keepPosition);
    /// Scrolls so far that the caret is in sight; with `centre` its row to the middle; with
    /// `evenAtLastRow` one row up when it stands on the last visible row. @return whether it
    /// scrolled
    bool EnsureVisible(bool showCaret, bool centre = false, bool evenAtLastRow = false);
    /// Puts TopRow to a row and moves the pixels that stay in sight.
    void ScrollToRow(std::int32_t row);
    /// Draws one row. With trailing blanks, 4 blanks overwrite what a shorter line left; with
    /// bookmark or erase the whole row is filled first.
    /// @param dc null: a context of its own
    void PaintLine(const CSimEditLine& line, std::int32_t row, CDC* dc, bool trailingBlanks,
                   bool bookmark, bool erase);
    /// @param point in logical coordinates: behind the horizontal scroll offset
    /// @param clamp whether the column is kept inside the line
    TextPlace PointToPosition(CPoint point, bool clamp = true) const;
    void SetCaretFromPoint(CPoint point, bool show, bool extend, bool finish);
    /// A selection without extent at the caret.
    void BeginSelection(bool block);
    /// Takes the selection's end to the caret and inverts the difference.
    void ExtendSelection();
    void CancelSelection(bool clearBlock = true);
    /// The two places by rows, then columns.
    static TextRange NormalizeSelection(TextPlace anchor, TextPlace end);
    static WordRange WordAt(std::string_view text, std::int32_t column);
    /// Reads the measures of the option font; with refresh the layout follows.
    void SetFont(bool refresh);
    void SetBookmarkColor(ColorRef color);
    void HideCaret();
    void ShowCaret();
    /// @}

    /// @name Editing. Rows, columns and journal as the document's primitives.
    /// @{
    /// Deletes the selected text; the selection's flags stay.
    void DeleteSelection();
    /// The bytes that GetSelectedText writes.
    std::size_t GetSelectionLength() const;
    /// The clipboard's form of the selection: tabs restored, CR LF between rows.
    std::string GetSelectedText() const;
    void PasteText(std::string_view text, bool replaceSelection);
    /// Inserts at the caret. @return the number of line ends in text
    std::int32_t InsertText(std::string_view text);
    /// @}

    /// @name Commands
    /// @{
    void CopySelection();
    void CutSelection();
    void PasteClipboard();
    void SelectAll();
    void ToggleBookmark();
    void NextBookmark();
    void PrevBookmark();
    void ClearBookmarks();
    void OnEditFind();
    void OnEditReplace();
    void OnGoTo();
    /// Undoes the newest user action of the journal; with a count, that many, painted once.
    /// @return the actions undone
    std::int32_t UndoEdit(std::int32_t count = 1);
    std::int32_t RedoEdit(std::int32_t count = 1);
    /// @}

    /// @name Search
    /// @{
    void SearchAgain(bool down, bool keepCase);
    /// The selection within one row, else the find box's text.
    std::string GetSearchText() const;
    /// What a button of a search dialog asks: the history, then the action.
    void DialogAction(CFindDialog& dialog);
    /// Goes to the next match of the search text. @return whether there is one
    bool FindText(bool reportFailure);
    /// @}

    /// The instance of the view's key; null without a key, and when the instance is gone.
    IDesignInstance* GetInstance() const;
    /// Keeps the instance's key; null clears it.
    void SetInstance(IDesignInstance* instance);

    /// @name For whoever looks at the view
    /// @{
    std::int32_t GetMaxLineLength() const { return m_MaxLineLength; }
    TextPlace GetCaretPlace() const { return m_Caret; }
    /// What IEditorInspector tells of a view.
    CaretState GetCaretState() const;
    SelectionState GetSelectionState() const;
    ScrollState GetScrollState() const;
    /// @}

    void ResetText(std::int32_t lineCount, std::int32_t width) override;
    void SetMaxLineLength(std::int32_t width) override;

    void OnActivateView(bool activate, CView* activated, CView* deactivated) override;

    /// The view has become the active one of its document (activate), or losing is no longer it:
    /// tells the document, and the instance or the desktop.
    virtual void ActivationNotice(bool activate, CSimEditView* view, CSimEditView* losing);
    /// The mark that the frame sets while it gives that notice itself; good when the view has gone.
    std::shared_ptr<bool> BusyMark() const { return m_Busy; }

private:
    friend class PaintGathering;

    CBaseEditor* GetEditor() const;
    void TellActivation(CBaseEditor& editor, bool activate);

    std::int32_t m_MaxLineLength = kLeastViewWidth;
    std::int32_t m_TopRow = 0;
    std::int32_t m_MaxTopRow = 0;
    std::int32_t m_LineHeight = 1;   ///< pixels per row
    std::int32_t m_CharWidth = 1;    ///< pixels per column
    std::int32_t m_CaretWidth = 2;   ///< pixels
    std::int32_t m_LinesPerPage = 0; ///< whole rows in the client area

    TextPlace m_Caret;
    std::int32_t m_WantedColumn = 0; ///< where up and down come back to; 0 for none
    bool m_HasFocus = false;
    bool m_CaretHidden = true;
    bool m_InsertMode = true;

    bool m_Selected = false;
    bool m_BlockSelect = false;
    bool m_MouseSelecting = false;
    bool m_SearchSelected = false;
    bool m_WordSelecting = false;
    TextPlace m_SelAnchor;
    TextPlace m_SelOld; ///< the end as the screen shows it
    TextPlace m_SelEnd;
    TextPlace m_WordStart; ///< of the word that a double click took
    TextPlace m_WordEnd;

    ColorRef m_BookmarkColor = 0xC0C0C0;
    bool m_Recording = true;
    bool m_SearchCase = false;
    bool m_SearchDown = true;
    bool m_TitleShown = false; ///< the title shows the hover text

    std::int32_t m_Gathering = 0;  ///< above 0: nothing is painted until the gathering ends
    IViewKey* m_ViewKey = nullptr; ///< the instance's
    std::shared_ptr<bool> m_Busy = std::make_shared<bool>(false);
};
