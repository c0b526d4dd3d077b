/// The backend: the little that only a window system can do for the framework.
///
/// Four interfaces (surface, window, printer, desk), one for a dialog on show, and the two through
/// which a backend reports to the framework. A backend knows nothing of documents and modules. The
/// framework calls it on the user interface thread only. Sizes and places are pixels of the screen,
/// or device units of a printer, y downward. Texts are 16-bit.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "astring.h"
#include "geometry.h"
#include "log_font.h"
#include "messages.h"
#include "quorel_export.h"
#include "resources.h"

class CCmdTarget;
class CMenu;

/// A font made by a desk, good on all its surfaces.
class QUOREL_API IBackendFont {
public:
    virtual ~IBackendFont() = default;
};

/// A font's measures on one surface.
struct FontMetrics {
    int m_Height = 0;          ///< of a row, without external leading
    int m_ExternalLeading = 0; ///< between rows
    int m_AverageWidth = 0;
    int m_MaxWidth = 0;
};

/// How text is drawn.
struct TextStyle {
    const IBackendFont* m_Font = nullptr; ///< null: the backend's default font
    ColorRef m_Color = kBlack;
    ColorRef m_Background = kWhite;
    bool m_Opaque = true; ///< the background fills the text's cells
};

/// What is drawn on: a window's client area or a printed page. Drawing outside is cut off.
class QUOREL_API IBackendSurface {
public:
    virtual ~IBackendSurface() = default;

    virtual void FillRect(const CRect& rect, ColorRef color) = 0;
    /// Inverts every colour in the rectangle; twice gives back what was there.
    virtual void InvertRect(const CRect& rect) = 0;
    /// Draws text with its upper left corner at that place. @return the width drawn
    virtual int DrawText(CPoint at, std::u16string_view text, const TextStyle& style) = 0;
    virtual CSize MeasureText(std::u16string_view text, const IBackendFont* font) = 0;
    virtual FontMetrics GetFontMetrics(const IBackendFont* font) = 0;
    virtual void DrawLine(CPoint from, CPoint to, int width, ColorRef color) = 0;
    /// The device place of the logical point (0, 0), for all drawing that follows; the clip and
    /// the sizes stay as they are on the device.
    virtual void SetOrigin(CPoint origin) = 0;
    /// Limits drawing to a device rectangle; null takes the limit away.
    virtual void SetClip(const CRect* clip) = 0;
    /// What needs drawing, in logical coordinates: while painting, the invalid part.
    virtual CRect GetClipBox() = 0;
    virtual CSize GetSize() = 0;
    /// Device units per inch, across and down.
    virtual CSize GetResolution() = 0;
};

/// A window's text as a screen reader reads it: one text with an LF behind each line but the last.
/// Offsets count 16-bit units from its start and are clamped to it. Asked only while a reader runs.
class QUOREL_API IAccessibleText {
public:
    struct Range {
        int m_From = 0;
        int m_To = 0; ///< not included
        bool operator==(const Range&) const = default;
    };

    virtual int GetLength() = 0;
    virtual AString GetText(Range range) = 0;
    virtual int GetCaretOffset() = 0;
    /// Empty when nothing is selected.
    virtual Range GetSelection() = 0;
    /// The selected text as a copy gives it, tabs and columns of a block included.
    virtual AString GetSelectedText() = 0;
    /// The line of an offset, without its line end.
    virtual Range GetLineAt(int offset) = 0;

protected:
    ~IAccessibleText() = default;
};

/// Hears from a backend's window. Implemented by the framework's windows.
class QUOREL_API IWindowSink {
public:
    /// Handles a WindowMessage at once and gives its result.
    virtual std::intptr_t HandleMessage(unsigned message, std::uintptr_t first,
                                        std::intptr_t second) = 0;
    /// Draws what GetClipBox of the surface says; with erase the background first.
    virtual void HandlePaint(IBackendSurface& surface, bool erase) = 0;
    /// Asked before a key-down is sent, with the key and the KeyModifiers that are down.
    /// @return true: an accelerator took the key, which is then sent neither as key nor character
    virtual bool PreTranslateKey(unsigned, unsigned) { return false; }
    /// What a screen reader reads of the window, owned by the sink; null: nothing.
    virtual IAccessibleText* GetAccessibleText() { return nullptr; }

protected:
    ~IWindowSink() = default;
};

enum class ScrollBar { horizontal, vertical };

/// A scroll bar's settings, in pixels. A total not above the client's size hides the bar.
struct ScrollInfo {
    int m_Total = 0;
    int m_Page = 0;
    int m_Line = 0;
    int m_Position = 0;
    bool operator==(const ScrollInfo&) const = default;
};

/// How a frame stands, as a project stores it.
struct WindowPlacement {
    int m_ShowCommand = kShowNormal;
    CPoint m_MinPosition;
    CPoint m_MaxPosition;
    CRect m_Normal;
    bool operator==(const WindowPlacement&) const = default;
};

/// A window on the screen, destroyed with this object. Frames hold one view each.
class QUOREL_API IBackendWindow {
public:
    virtual ~IBackendWindow() = default;

    virtual CSize GetClientSize() = 0;
    /// The whole window, on the screen.
    virtual CRect GetWindowRect() = 0;
    virtual CPoint ClientToScreen(CPoint point) = 0;
    /// Marks a part of the client area as to be painted; erase adds up until it is painted.
    virtual void Invalidate(const CRect& rect, bool erase) = 0;
    /// Paints what is invalid at once, through the sink.
    virtual void Update() = 0;
    /// Moves the pixels of an area by a distance. Pixels moved out of it are lost; what is
    /// uncovered keeps its old pixels and isn't invalidated. Invalid parts move along.
    virtual void ScrollPixels(CSize distance, const CRect& area) = 0;
    /// For drawing outside of a paint; valid until the next call to the window.
    virtual IBackendSurface& GetSurface() = 0;
    /// Shows a caret of that rectangle, or none for null.
    virtual void SetCaret(const CRect* caret) = 0;
    virtual void SetCapture(bool on) = 0;
    /// Takes the keyboard focus; the messages about it come through the sinks before this returns.
    virtual void SetFocus() = 0;
    virtual void SetScrollBar(ScrollBar bar, const ScrollInfo& info) = 0;
    /// Sends a message through the sink once the present one and those waiting are done.
    virtual void Post(unsigned message, std::uintptr_t first, std::intptr_t second) = 0;
    /// @name Of frames; a view's window ignores them
    /// @{
    virtual void SetTitle(const AString& title) = 0;
    /// Shows and raises the frame; the framework tells the windows concerned itself.
    virtual void Show(int showCommand) = 0;
    virtual WindowPlacement GetPlacement() = 0;
    virtual void SetPlacement(const WindowPlacement& placement) = 0;
    /// @}
};

/// A dialog on show: its controls by number. A control that isn't there is empty, and writing to
/// it does nothing.
class QUOREL_API IBackendDialog {
public:
    virtual AString GetText(unsigned control) = 0;
    virtual void SetText(unsigned control, const AString& text) = 0;
    virtual bool IsChecked(unsigned control) = 0;
    /// Checking a radio button clears the others of its group.
    virtual void SetChecked(unsigned control, bool checked) = 0;
    virtual void Enable(unsigned control, bool enabled) = 0;
    virtual void AddItem(unsigned control, const AString& text) = 0;
    /// The index of the selected item, -1 for none.
    virtual int GetSelection(unsigned control) = 0;
    virtual void SetSelection(unsigned control, int index) = 0;
    /// Shows a control's text in a font, which must outlive its use.
    virtual void SetFont(unsigned control, const IBackendFont* font) = 0;
    /// Fills a colour sample.
    virtual void SetColor(unsigned control, ColorRef color) = 0;
    /// Ends the dialog once the present notice is done.
    virtual void End(int result) = 0;

protected:
    ~IBackendDialog() = default;
};

/// Notices about a control.
enum ControlNotice : unsigned {
    kNoticeClicked = 0,
    kNoticeSelectionDone = 9,
    kNoticeTextChanged = 0x300
};

/// The logic of a dialog. Implemented by the framework's dialogs.
class QUOREL_API IDialogSink {
public:
    /// The controls are there and hold their resource's texts.
    virtual void DialogShown(IBackendDialog& dialog) = 0;
    /// The user did something. The sink ends the dialog; a backend ends none by itself but gives
    /// a closed window as a click on kIdCancel.
    virtual void ControlNotice(unsigned control, unsigned notice) = 0;

protected:
    ~IDialogSink() = default;
};

/// Stands for the last page of whatever job.
inline constexpr int kLastPage = 0x7FFFFFFF;

/// What a print dialog asks and gives.
struct PrintRequest {
    bool m_Direct = false; ///< no dialog: the default printer, all pages
    bool m_AllowSelection = false;
    bool m_Selection = false; ///< print the selection: preset and answer
    int m_FromPage = 1;
    int m_ToPage = kLastPage;
};

/// One print job. Destroying it before EndDocument drops the job.
class QUOREL_API IBackendPrinter {
public:
    virtual ~IBackendPrinter() = default;

    virtual CSize GetPageSize() = 0;
    virtual CSize GetResolution() = 0;
    /// For measuring before the first page and for drawing on the present one.
    virtual IBackendSurface& GetSurface() = 0;
    /// @return false: the device refuses, the job is over
    virtual bool StartDocument(const AString& title) = 0;
    /// Asked ahead of each page with its number and that of the last one, so that a long job can
    /// show how far it is. @return false: the user has given up, the job is to be dropped
    virtual bool GoOn(int page, int lastPage) = 0;
    virtual bool StartPage() = 0;
    virtual bool EndPage() = 0;
    virtual bool EndDocument() = 0;
};

/// Prints a whole job on the printer that it is given.
using PrintFunction = std::function<void(std::unique_ptr<IBackendPrinter> printer)>;

/// What a file dialog asks.
struct FileRequest {
    bool m_Open = true;
    AString m_Title;
    AString m_FileName; ///< preset
    /// Pairs of a text and a pattern, each followed by "|", one more "|" at the end.
    AString m_Filter;
    bool m_OverwritePrompt = false;
    bool m_PathMustExist = false;
};

enum class CursorShape { arrow, iBeam, wait };
enum class WindowKind { frame, view };
/// What became of a text that was dragged.
enum class DropEffect { none, copy, move };

/// What a user sits at: the screen with its windows and dialogs, the keyboard, pointer, clipboard
/// and fonts. Modal operations return when the user has answered.
class QUOREL_API IBackendDesk {
public:
    /// Makes a hidden window inside a parent (null: at the top) and reports to the sink, which
    /// outlives it.
    virtual std::unique_ptr<IBackendWindow> CreateWindow(WindowKind kind, IBackendWindow* parent,
                                                         IWindowSink& sink) = 0;
    virtual bool SetClipboardText(const AString& text) = 0;
    /// @return nothing when there is no text or the clipboard is busy
    virtual std::optional<AString> GetClipboardText() = 0;
    virtual bool HasClipboardText() = 0;
    /// Whether a key or button is down: at the message being handled, or now.
    virtual bool IsKeyDown(unsigned key, bool now) = 0;
    virtual CPoint GetPointer() = 0;
    virtual void SetCursor(CursorShape shape) = 0;
    /// Never null: a font that isn't there is replaced.
    virtual std::unique_ptr<IBackendFont> CreateFont(const LogFont& font) = 0;
    /// The names of all fixed-pitch font families, in any order, repeats allowed.
    virtual std::vector<AString> GetFixedPitchFonts() = 0;
    /// The width of a window's border.
    virtual int GetBorderWidth() = 0;
    /// The size of the area in which frames stand; empty when they stand on the screen.
    virtual CSize GetFrameAreaSize() { return {}; }
    /// A surface for measuring on the screen.
    virtual IBackendSurface& GetScreen() = 0;
    /// @param style buttons and icon, as IPrompt's. @return a DialogResult
    virtual int ShowMessage(const AString& text, int style) = 0;
    /// @return the path chosen, nothing when cancelled
    virtual std::optional<AString> AskFile(const FileRequest& request) = 0;
    /// @return the colour chosen, nothing when cancelled
    virtual std::optional<ColorRef> AskColor(ColorRef preset, std::span<const ColorRef> custom) = 0;
    /// Shows the pages as one dialog, several with tabs; a title that isn't empty replaces theirs.
    /// Control numbers are unique over all pages. Pages with neither a kIdOk nor a kIdCancel get a
    /// button for each. @return what End was given
    virtual int RunDialog(const AString& title, std::span<const DialogResource* const> pages,
                          IDialogSink& sink) = 0;
    /// Opens a popup menu at a place on the screen; the target's UpdateCommand gives the entries'
    /// states. @return the command chosen, 0 for none
    virtual unsigned TrackMenu(const CMenu& menu, CPoint at, CCmdTarget& target) = 0;
    virtual DropEffect DragText(const AString& text) = 0;
    /// @return the job, null when cancelled or when there is no printer
    virtual std::unique_ptr<IBackendPrinter> AskPrinter(PrintRequest& request) = 0;
    /// Shows the pages of a job. @param print is called for the pages, none or many times, and no
    /// longer when this has returned
    virtual void ShowPreview(const PrintFunction& print) = 0;
    /// Waits that many milliseconds without handling messages.
    virtual void Wait(int milliseconds) = 0;

protected:
    ~IBackendDesk() = default;
};

/// Gives the framework its backend, before any window is made; null takes it away. Not owned.
QUOREL_API void SetBackend(IBackendDesk* desk);
/// The backend in use; null while there is none: windows then have no screen side, dialogs are
/// cancelled, the clipboard is empty.
QUOREL_API IBackendDesk* GetBackend();
