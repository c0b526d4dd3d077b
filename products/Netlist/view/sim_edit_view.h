/// CSimEditView: shows a text document in a scrolling window, and edits it.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "ieditor_inspector.h"
#include "text_place.h"
#include "text_view.h"
#include "view.h"

class CBaseEditor;
class CNetlistFactory;
class CComboBox;
class CFindDialog;
class CSimEditDoc;
class CSimEditLine;
class EditReplay;
class IDesignInstance;
class IViewKey;
class PaintGathering;
class RecordList;
struct PrintLayout;
class TextSearch;

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
    /// Draws one row of a line that has its colours. With trailing blanks, 4 blanks overwrite what
    /// a shorter line left; with bookmark or erase the whole row is filled first.
    /// @param dc null: a context of its own
    void PaintLine(const CSimEditLine& line, std::int32_t row, CDC* dc, bool trailingBlanks,
                   bool bookmark, bool erase);
    /// @param point in logical coordinates: behind the horizontal scroll offset
    /// @param clamp whether row and column are kept inside the text
    TextPlace PointToPosition(CPoint point, bool clamp = true) const;
    void SetCaretFromPoint(CPoint point, bool show, bool extend, bool finish);
    /// Puts the caret to a place, clamped to the text, without a selection, and shows it.
    void GoToPlace(TextPlace place);
    /// A selection without extent at the caret.
    void BeginSelection(bool block);
    /// Takes the selection's end to the caret and inverts the difference.
    void ExtendSelection();
    void CancelSelection(bool clearBlock = true);
    /// Selects as a drag from one place to the other does; places are clamped to the text.
    void SelectRange(TextPlace anchor, TextPlace end, bool block);
    /// The two places by rows, then columns.
    static TextRange NormalizeSelection(TextPlace anchor, TextPlace end);
    /// The word that holds a column or ends there, between delimiters; empty when there is none.
    static WordRange WordAt(std::string_view text, std::int32_t column);
    /// Reads the measures of the option font; with refresh the layout follows.
    void SetFont(bool refresh);
    void SetBookmarkColor(ColorRef color);
    /// The caret shows only while the view has the focus. ShowCaret puts it to its place too.
    void HideCaret();
    void ShowCaret();
    /// @}

    /// @name Editing. Rows, columns and journal as the document's primitives.
    /// @{
    /// Deletes the selected text; the selection's flags stay.
    void DeleteSelection();
    /// The units that GetSelectedText gives at most: a tab counts as its columns.
    std::size_t GetSelectionLength() const;
    /// The clipboard's form of the selection: tabs restored, CR LF between rows.
    AString GetSelectedText() const;
    /// Whether anything is selected that a copy would take.
    bool HasWidth() const;
    /// Inserts a text at the caret as a paste does: the views are updated and the caret shown.
    /// Selected text goes first if replaceSelection.
    void PasteText(std::string_view text, bool replaceSelection);
    /// Inserts at the caret, CR, LF and CR LF being line ends, with one record for each line; no
    /// view is updated. @return the number of line ends in text
    std::int32_t InsertText(std::string_view text);
    /// @}

    /// @name Commands
    /// @{
    /// The find box takes these three while it has the focus. A clipboard that fails changes
    /// nothing.
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

    /// @name Search. A match is a literal text inside one row, its tabs being blanks.
    /// @{
    /// Selects the next match of the find box's text, in that direction from now on.
    void SearchAgain(bool down, bool keepCase);
    /// The selection within one row, else the find box's text.
    AString GetSearchText() const;
    /// What a button of a search dialog asks: the history of the find box, then the action.
    void DialogAction(CFindDialog& dialog);
    /// Puts caret and selection to the next match of the search text, but doesn't select it. A
    /// failure changes neither. @return whether there is one
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
    std::optional<PrintState> GetPrintState() const;
    /// @}

    void ResetText(std::int32_t lineCount, std::int32_t width) override;
    void SetMaxLineLength(std::int32_t width) override;

    void OnPrepareDC(CDC& dc, CPrintInfo* info) override;
    /// The view becomes its editor's active one.
    void OnInitialUpdate() override;
    void OnActivateView(bool activate, CView* activated, CView* deactivated) override;
    /// @param hint the first row changed; caret and selection are kept inside the text
    void OnUpdate(CView* sender, std::intptr_t hint, CObject* object) override;
    void OnDraw(CDC& dc) override;
    /// The dialog offers the selection, if there is one.
    bool OnPreparePrinting(CPrintInfo& info) override;
    void OnBeginPrinting(CDC& dc, CPrintInfo& info) override;
    void OnPrint(CDC& dc, CPrintInfo& info) override;
    void OnEndPrinting(CDC& dc, CPrintInfo& info) override;
    /// Takes the Delete key, which deletes whatever an accelerator says.
    bool PreTranslateKey(unsigned key, unsigned modifiers) override;
    IAccessibleText* GetAccessibleText() override;

    /// The view has become the active one of its document (activate), or losing is no longer it:
    /// tells the document, and the instance or the desktop.
    virtual void ActivationNotice(bool activate, CSimEditView* view, CSimEditView* losing);
    /// The mark that the frame sets while it gives that notice itself; good when the view has gone.
    std::shared_ptr<bool> BusyMark() const { return m_Busy; }

protected:
    const MessageMap& GetMessageMap() const override;
    const CommandMap& GetCommandMap() const override;
    void OnEraseBackground(CDC& dc) override;

private:
    friend class PaintGathering;
    class CaretPause;
    class ReaderText;
    class ReplayKeys;
    struct Motion;

    CBaseEditor* GetEditor() const;
    CNetlistFactory* GetFactory() const;
    CSimEditDoc* GetTextDocument() const;
    void TellActivation(CBaseEditor& editor, bool activate);
    void CreateToolBars();

    // Messages.
    std::intptr_t OnCreate(std::uintptr_t, std::intptr_t);
    std::intptr_t OnSize(std::uintptr_t, std::intptr_t);
    std::intptr_t OnDpiChanged(std::uintptr_t, std::intptr_t);
    std::intptr_t OnSetFocus(std::uintptr_t other, std::intptr_t);
    std::intptr_t OnKillFocus(std::uintptr_t other, std::intptr_t);
    std::intptr_t OnVScroll(std::uintptr_t code, std::intptr_t position);
    std::intptr_t OnHScroll(std::uintptr_t code, std::intptr_t position);
    std::intptr_t OnMouseWheel(std::uintptr_t delta, std::intptr_t);
    std::intptr_t OnKeyDown(std::uintptr_t key, std::intptr_t flags);
    /// @param character a 16-bit unit @param flags 0: no command is made
    std::intptr_t OnChar(std::uintptr_t character, std::intptr_t flags);
    std::intptr_t OnPaste(std::uintptr_t, std::intptr_t);

    // Commands.
    void OnEditClear();
    void OnUpdateNeedsBookmark(CCmdUI& ui);
    void OnUpdateNeedsSelection(CCmdUI& ui);
    void OnUpdatePaste(CCmdUI& ui);
    void OnSearchDown() { SearchAgain(true, false); }
    void OnSearchUp() { SearchAgain(false, false); }
    void OnSearchDownCase() { SearchAgain(true, true); }
    void OnSearchUpCase() { SearchAgain(false, true); }

    // Search. The text document is there.
    CComboBox* GetFindBox() const;
    void RunSearchDialog(CFindDialog& dialog);
    void DoDialogAction(const CFindDialog& dialog);
    void TakeSearchSettings(const CFindDialog& dialog);
    void FindNext(const CFindDialog& dialog);
    void Replace(const CFindDialog& dialog);
    void ReplaceAll(const CFindDialog& dialog);
    std::string ReplacementOf(const CFindDialog& dialog) const;
    std::optional<TextRange> FindFrom(const TextSearch& search, TextPlace from) const;
    void TakeMatch(const TextRange& match);
    void LeaveMatch();
    void SelectMatch();
    void ShowNextMatch();
    void ReportNotFound(const AString& wanted) const;

    // Keys. The text document is there.
    void MoveCaret(const Motion& motion);
    void MoveUp();
    void MoveDown();
    void MovePageUp();
    void MovePageDown();
    void MoveOneRow(std::int32_t rows);
    void MoveRows(std::int32_t rows);
    void MoveLeft();
    void MoveRight();
    void MoveWordLeft();
    void MoveWordRight();
    void MoveHome();
    void MoveToFirstRow();
    void MoveEnd();
    void MoveToLastRow();
    TextPlace EndOfRow(std::int32_t row) const;
    std::int32_t ColumnBeforeCaret() const;
    void OnEnter();
    void OnBackspace();
    void OnDelete();
    void OnInsert();
    void OnEscape();
    void EndKey();
    void TypeChar(char character);

    // Editing. The text document is there.
    /// A row as far as it matters to those below, and to what it covers on the screen.
    struct RowState {
        std::int32_t Length;
        std::int32_t RangeOut;
    };
    RowState StateOfRow(std::int32_t row) const;
    void ShowEditedRow(const RowState& before);
    void RaiseMaxLineLength(std::int32_t row);
    void TextChanged(std::int32_t row);
    void DeleteCharAtCaret();
    void JoinAtCaret();
    void MakeCommand();
    bool TakeSelection();
    TextRange SelectedRange() const;
    WordRange SelectedColumns(std::int32_t row) const;
    void DeleteColumns(std::int32_t from, std::int32_t to);
    void DeleteRows(const TextRange& range);
    void InsertPlainText(std::string_view text);
    void InsertPiece(std::string_view piece, bool isFirst, bool hasLineEnd);
    bool FindBoxTakes(unsigned message) const;
    bool CopyToClipboard() const;
    void PasteFromClipboard();
    void GoToBookmark(std::int32_t step);
    std::int32_t ReplayActions(std::int32_t count, std::int32_t (EditReplay::*replay)(),
                               const RecordList& (CSimEditDoc::*list)() const);
    std::intptr_t OnLButtonDown(std::uintptr_t, std::intptr_t place);
    std::intptr_t OnLButtonUp(std::uintptr_t, std::intptr_t place);
    std::intptr_t OnLButtonDblClk(std::uintptr_t, std::intptr_t);
    std::intptr_t OnMouseMove(std::uintptr_t modifiers, std::intptr_t place);
    std::intptr_t OnSetCursor(std::uintptr_t, std::intptr_t);
    std::intptr_t OnNcMouseMove(std::uintptr_t, std::intptr_t place);
    std::intptr_t OnContextMenu(std::uintptr_t, std::intptr_t place);

    // Layout.
    bool CanPaint() const;
    void MeasureFont();
    void TakeChangedOptions();
    /// Rows of the client area; then TopRow no further than MaxTopRow.
    void FitToClient();
    CSize PageSize() const;
    std::int32_t RowCount() const;
    int ColumnX(std::int32_t column) const;
    int RowY(std::int32_t row) const;
    CRect RowRect(std::int32_t row, std::int32_t from, std::int32_t to) const;
    std::int32_t RowOfThumb(std::int64_t position) const;
    void ScrollByUser(std::int32_t row);
    void ScrollPixelsTo(std::int32_t topRow);
    void MoveThumb();
    bool ShowColumn();
    std::int32_t TopRowFor(bool centre, bool evenAtLastRow) const;

    // Painting.
    /// Shows what was gathered.
    void EndGathering();
    void DrawRow(CDC& dc, const CSimEditLine& line, std::int32_t row, bool trailingBlanks,
                 bool bookmark, bool erase);
    void KeepInsideText();
    void ApplyCaret();
    void PutCaret(const CRect* caret);

    // Printing.
    void PreparePrintDC(CDC& dc, CPrintInfo& info) const;
    void BuildPageTable(bool selectionOnly);
    /// What a PageTable asks.
    std::function<std::int32_t(std::int32_t row)> PrintedLengths() const;

    // Selection.
    struct Highlight {
        TextPlace Anchor;
        TextPlace End;
        bool Shown = false;
    };
    Highlight ShownHighlight() const { return {m_SelAnchor, m_SelOld, m_Selected}; }
    WordRange HighlightedColumns(const Highlight& highlight, std::int32_t row) const;
    void ChangeHighlight(const Highlight& before, const Highlight& after);
    void InvertRow(CDC& dc, std::int32_t row) const;

    // Mouse. Logical points are in the coordinates of OnDraw.
    CPoint ToLogical(CPoint point) const;
    bool IsInSelection(CPoint logical) const;
    void DragSelection(CPoint logical);
    void ExtendByWords(TextPlace at);
    void AutoScroll(std::uintptr_t modifiers, std::intptr_t place);
    void CaptureMouse(bool on);
    void ShowCursorAt(CPoint logical);
    static AString HoverTitle(CBaseEditor& editor);
    void HideHoverTitle();

    std::int32_t m_MaxLineLength = kLeastViewWidth;
    std::int32_t m_TopRow = 0;
    std::int32_t m_MaxTopRow = 0;
    std::int32_t m_LineHeight = 1;   ///< pixels per row
    std::int32_t m_CharWidth = 1;    ///< pixels per column
    std::int32_t m_CaretWidth = 2;   ///< pixels
    int m_FontNumber = 0;            ///< of the option font that was measured
    std::int32_t m_LinesPerPage = 1; ///< whole rows in the client area, at least 1

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

    bool m_ArrowShown = false;         ///< instead of the I-beam
    std::optional<CRect> m_ShownCaret; ///< as the window was told last

    std::unique_ptr<ReaderText> m_ReaderText; ///< made when first asked for
    std::unique_ptr<PrintLayout> m_Print;     ///< of the print job that runs, else null

    std::int32_t m_Gathering = 0;  ///< above 0: nothing is painted until the gathering ends
    IViewKey* m_ViewKey = nullptr; ///< the instance's
    std::shared_ptr<bool> m_Busy = std::make_shared<bool>(false);

    // Every key asks for the text several times: the cast of the view's document is kept.
    mutable const CDocument* m_CastDocument = nullptr;
    mutable CSimEditDoc* m_TextDocument = nullptr;
};
