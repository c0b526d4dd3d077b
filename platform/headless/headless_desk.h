/// HeadlessDesk: a backend without a screen that records what it is told and answers by script.
#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <set>
#include <vector>

#include "focus_holder.h"
#include "headless_dialog.h"
#include "headless_printer.h"
#include "headless_window.h"

/// The backend for tests, scripts and batch work. Answers are taken from the queues below, first
/// in first out; an empty queue gives the cancelling answer (of a message box: the last button).
/// Records and queues are plain data for whoever drives the desk.
class QUOREL_API HeadlessDesk : public IBackendDesk {
public:
    HeadlessDesk();
    HeadlessDesk(const HeadlessDesk&) = delete;
    HeadlessDesk& operator=(const HeadlessDesk&) = delete;
    /// Windows must be gone by then.
    virtual ~HeadlessDesk();

    std::unique_ptr<IBackendWindow> CreateWindow(WindowKind kind, IBackendWindow* parent,
                                                 IWindowSink& sink) override;
    bool SetClipboardText(const AString& text) override;
    std::optional<AString> GetClipboardText() override;
    bool HasClipboardText() override;
    bool IsKeyDown(unsigned key, bool now) override;
    CPoint GetPointer() override { return m_Pointer; }
    void SetCursor(CursorShape shape) override { m_Cursors.push_back(shape); }
    std::unique_ptr<IBackendFont> CreateFont(const LogFont& font) override;
    std::vector<AString> GetFixedPitchFonts() override { return m_Fonts; }
    int GetBorderWidth() override { return 1; }
    CSize GetFrameAreaSize() override { return m_FrameArea; }
    IBackendSurface& GetScreen() override { return m_ScreenSurface; }
    int ShowMessage(const AString& text, int style) override;
    std::optional<AString> AskFile(const FileRequest& request) override;
    std::optional<ColorRef> AskColor(ColorRef preset, std::span<const ColorRef> custom) override;
    int RunDialog(const AString& title, std::span<const DialogResource* const> pages,
                  IDialogSink& sink) override;
    unsigned TrackMenu(const CMenu& menu, CPoint at, CCmdTarget& target) override;
    DropEffect DragText(const AString& text) override;
    std::unique_ptr<IBackendPrinter> AskPrinter(PrintRequest& request) override;
    void ShowPreview(const PrintFunction& print) override;
    void Wait(int milliseconds) override { m_WaitedMilliseconds += milliseconds; }

    /// Sends the messages posted, those posted meanwhile too, but no more than limit; then paints
    /// what is invalid. @return the messages sent
    int Pump(int limit = 1000);
    /// The windows there are, in the order of their making.
    const std::vector<HeadlessWindow*>& GetWindows() const { return m_Windows; }
    HeadlessWindow* GetFocus() const { return m_Focus.Get(); }

    /// @name How the desk stands and answers
    /// @{
    CSize m_FrameArea;                                        ///< empty: frames stand on the screen
    CSize m_ClientSize{80 * kCellSize.cx, 25 * kCellSize.cy}; ///< of windows made from now on
    int m_TitleHeight = 0; ///< of the part of each window above its client area
    std::optional<AString> m_Clipboard;
    bool m_ClipboardBusy = false;
    std::set<unsigned> m_KeysDown;
    CPoint m_Pointer;
    std::vector<AString> m_Fonts;
    PrinterSettings m_Printer;
    DropEffect m_DropEffect = DropEffect::none;

    std::deque<int> m_MessageAnswers;
    std::deque<AString> m_FileAnswers;
    std::deque<ColorRef> m_ColorAnswers;
    std::deque<unsigned> m_MenuAnswers; ///< a command that is disabled or missing gives 0
    /// Each works a dialog after it has been shown; one left on show is closed.
    std::deque<std::function<void(HeadlessDialog&)>> m_DialogScripts;
    /// Each may change the request; false cancels. Without one the request is taken as it stands.
    std::deque<std::function<bool(PrintRequest&)>> m_PrintAnswers;
    /// @}

    /// @name What the desk was told
    /// @{
    struct ShownMessage {
        AString m_Text;
        int m_Style;
    };
    std::vector<ShownMessage> m_Messages;
    std::vector<FileRequest> m_FileRequests;
    std::vector<CursorShape> m_Cursors;
    std::vector<AString> m_Dragged;
    std::vector<std::shared_ptr<PrintRecord>> m_PrintJobs;
    std::vector<std::shared_ptr<PrintRecord>> m_Previews;
    long m_WaitedMilliseconds = 0;
    /// @}

private:
    friend class HeadlessWindow;
    struct PostedMessage {
        HeadlessWindow* m_Window;
        unsigned m_Message;
        std::uintptr_t m_First;
        std::intptr_t m_Second;
    };

    void Enter(HeadlessWindow& window) { m_Windows.push_back(&window); }
    void Leave(HeadlessWindow& window);
    void Queue(const PostedMessage& message) { m_Posted.push_back(message); }
    void PaintInvalid();

    std::vector<HeadlessWindow*> m_Windows;
    FocusHolder<HeadlessWindow> m_Focus;
    std::deque<PostedMessage> m_Posted;
    CSize m_ScreenSize{1280, 1024};
    CellGrid m_Screen;
    CellSurface m_ScreenSurface;
};
