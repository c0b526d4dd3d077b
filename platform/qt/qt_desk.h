/// QtDesk: the backend with real windows.
#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "backend.h"
#include "job_progress.h"
#include "pdf_desk.h"

class QKeyEvent;
class QMdiArea;
class QProgressDialog;
class QtSeat;
class QWidget;

/// What a host hears of the frames, beside the messages that the framework gets. Each may be empty.
struct FrameHooks {
    /// The frame has become the active one, by the user or by the program.
    std::function<void(IBackendWindow& frame)> m_Activated;
    std::function<void(IBackendWindow& frame, const AString& title)> m_TitleChanged;
    /// The user wants to close the frame. @return false: the host sees to it, or keeps the frame
    std::function<bool(IBackendWindow& frame)> m_Closing;
};

/// A desk on Qt's windows. Made after the QApplication and gone before it, once all windows, fonts
/// and print jobs are gone. User interface thread only.
///
/// A pixel is one of the screen's, whatever Qt's pixel ratio is: sizes, places and fonts' measures
/// count device pixels, so that cells tile without seams at any ratio. A font of height -12 has 12
/// pixels at the ratio 1, 15 at 1.25; the resolution is 96 at all of them, so that what is scaled
/// from screen to printer comes out alike. When the ratio changes a window gets kMsgDpiChanged,
/// upon which fonts are to be measured anew. Places on the screen are Qt's global ones times the
/// main screen's ratio. A WindowPlacement holds Qt's own units, the same at every ratio.
///
/// A view's window rectangle is that of the frame around it, and the pointer on the frame's title
/// gives the view kMsgNcMouseMove with the place on the screen. The middle button gives a view a
/// click, and then kMsgPaste with the clipboard standing for the primary selection.
class QUOREL_API QtDesk : public IBackendDesk, public IProgressDesk {
public:
    QtDesk();
    QtDesk(const QtDesk&) = delete;
    QtDesk& operator=(const QtDesk&) = delete;
    /// Takes itself away as the framework's backend.
    virtual ~QtDesk();

    /// Where frames made from now on go, not owned; null: each is a window of its own.
    void SetFrameArea(QMdiArea* area);
    void SetFrameHooks(FrameHooks hooks);
    /// Offers a key that a widget of the host has no use for to the active frame: its accelerators.
    /// @return whether it was one
    bool OfferKey(const QKeyEvent& key);
    /// The widget of a window of this desk: of a frame the window itself, a QMdiSubWindow in the
    /// frame area; of a view its area with the scroll bars. Owned by the window.
    static QWidget* GetWidget(IBackendWindow& window);

    /// Jobs go into that file without asking; nothing: they are asked for again.
    void SetPdfOutput(std::optional<PdfOutput> output);

    std::unique_ptr<IBackendWindow> CreateWindow(WindowKind kind, IBackendWindow* parent,
                                                 IWindowSink& sink) override;
    bool SetClipboardText(const AString& text) override;
    std::optional<AString> GetClipboardText() override;
    bool HasClipboardText() override;
    bool IsKeyDown(unsigned key, bool now) override;
    CPoint GetPointer() override;
    void SetCursor(CursorShape shape) override;
    std::unique_ptr<IBackendFont> CreateFont(const LogFont& font) override;
    std::vector<AString> GetFixedPitchFonts() override;
    int GetBorderWidth() override;
    CSize GetFrameAreaSize() override;
    IBackendSurface& GetScreen() override;
    int ShowMessage(const AString& text, int style) override;
    std::optional<AString> AskFile(const FileRequest& request) override;
    std::optional<ColorRef> AskColor(ColorRef preset, std::span<const ColorRef> custom) override;
    int RunDialog(const AString& title, std::span<const DialogResource* const> pages,
                  IDialogSink& sink) override;
    unsigned TrackMenu(const CMenu& menu, CPoint at, CCmdTarget& target) override;
    DropEffect DragText(const AString& text) override;
    std::unique_ptr<IBackendPrinter> AskPrinter(PrintRequest& request) override;
    void ShowPreview(const PrintFunction& print) override;
    void Wait(int milliseconds) override;
    /// A job that takes longer shows a dialog with a bar and a way to stop.
    bool ShowProgress(const AString& what, int thousandths) override;
    void EndProgress() override;

private:
    std::unique_ptr<QtSeat> m_Seat;
    std::unique_ptr<QProgressDialog> m_Progress; ///< of the job that runs, else null
};
