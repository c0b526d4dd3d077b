/// BreakingDesk: a backend that passes everything on to another one and breaks chosen operations.
#pragma once

#include "backend.h"

/// What can be broken, one bit each.
enum BreakableOperation : unsigned {
    kBreakClipboardRead = 1u << 0,  ///< the clipboard is busy: it has no text for anybody
    kBreakClipboardWrite = 1u << 1, ///< setting its text is refused
    kBreakFont = 1u << 2,           ///< making a font throws std::bad_alloc
    kBreakPrintStart = 1u << 3,     ///< a job's start is refused
    kBreakPrintPage = 1u << 4,      ///< the device is gone at the start of page m_LostPage
    kBreakPrintPageEnd = 1u << 5,   ///< the device is gone at the end of page m_LostPage
    kBreakPrintEnd = 1u << 6,       ///< a job's end is refused
    kBreakDragMemory = 1u << 7,     ///< a drag throws std::bad_alloc
    kBreakFileWrite = 1u << 8,      ///< the file chosen is on a device that is full
};

/// The forwarding desk. Windows, fonts and surfaces are the other desk's own.
class QUOREL_API BreakingDesk : public IBackendDesk {
public:
    /// @param desk must outlive this one and its windows
    explicit BreakingDesk(IBackendDesk& desk) : m_Desk(desk) {}
    /// Takes itself away as the framework's backend.
    virtual ~BreakingDesk();

    unsigned m_Broken = 0; ///< BreakableOperations, joined
    int m_LostPage = 1;    ///< of a job, 1-based; a job notes it when it is asked for
    int m_Refusals = 0;    ///< how often a broken operation was asked for

    std::unique_ptr<IBackendWindow> CreateWindow(WindowKind kind, IBackendWindow* parent,
                                                 IWindowSink& sink) override {
        return m_Desk.CreateWindow(kind, parent, sink);
    }
    bool SetClipboardText(const AString& text) override;
    std::optional<AString> GetClipboardText() override;
    bool HasClipboardText() override { return m_Desk.HasClipboardText(); }
    bool IsKeyDown(unsigned key, bool now) override { return m_Desk.IsKeyDown(key, now); }
    CPoint GetPointer() override { return m_Desk.GetPointer(); }
    void SetCursor(CursorShape shape) override { m_Desk.SetCursor(shape); }
    std::unique_ptr<IBackendFont> CreateFont(const LogFont& font) override;
    std::vector<AString> GetFixedPitchFonts() override { return m_Desk.GetFixedPitchFonts(); }
    int GetBorderWidth() override { return m_Desk.GetBorderWidth(); }
    IBackendSurface& GetScreen() override { return m_Desk.GetScreen(); }
    int ShowMessage(const AString& text, int style) override {
        return m_Desk.ShowMessage(text, style);
    }
    std::optional<AString> AskFile(const FileRequest& request) override;
    std::optional<ColorRef> AskColor(ColorRef preset, std::span<const ColorRef> custom) override {
        return m_Desk.AskColor(preset, custom);
    }
    int RunDialog(const AString& title, std::span<const DialogResource* const> pages,
                  IDialogSink& sink) override {
        return m_Desk.RunDialog(title, pages, sink);
    }
    unsigned TrackMenu(const CMenu& menu, CPoint at, CCmdTarget& target) override {
        return m_Desk.TrackMenu(menu, at, target);
    }
    DropEffect DragText(const AString& text) override;
    std::unique_ptr<IBackendPrinter> AskPrinter(PrintRequest& request) override;
    void ShowPreview(const PrintFunction& print) override;
    void Wait(int milliseconds) override { m_Desk.Wait(milliseconds); }

private:
    /// Whether that operation is broken; counts the refusal.
    bool Refuses(BreakableOperation operation);
    /// A job that breaks as m_Broken says; null stays null.
    std::unique_ptr<IBackendPrinter> Break(std::unique_ptr<IBackendPrinter> printer) const;

    IBackendDesk& m_Desk;
};
