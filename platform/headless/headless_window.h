/// HeadlessWindow: a window without a screen, which keeps its picture as a grid of cells.
#pragma once

#include <map>
#include <optional>

#include "backend.h"
#include "cell_grid.h"

class HeadlessDesk;

/// A font: it only remembers what was asked for.
class QUOREL_API HeadlessFont : public IBackendFont {
public:
    explicit HeadlessFont(const LogFont& font) : m_Font(font) {}
    ~HeadlessFont() override;

    LogFont m_Font;
};

/// Draws into a grid of cells. Every font has the cell's size.
class QUOREL_API CellSurface : public IBackendSurface {
public:
    /// @param grid and size must outlive the surface
    CellSurface(CellGrid& grid, const CSize& size) : m_Grid(grid), m_Size(size) {}
    ~CellSurface() override;

    void FillRect(const CRect& rect, ColorRef color) override;
    void InvertRect(const CRect& rect) override;
    int DrawText(CPoint at, std::u16string_view text, const TextStyle& style) override;
    CSize MeasureText(std::u16string_view text, const IBackendFont* font) override;
    FontMetrics GetFontMetrics(const IBackendFont* font) override;
    /// A line leaves no trace in cells.
    void DrawLine(CPoint, CPoint, int, ColorRef) override {}
    void SetOrigin(CPoint origin) override { m_Origin = origin; }
    void SetClip(const CRect* clip) override;
    CRect GetClipBox() override;
    CSize GetSize() override { return m_Size; }
    CSize GetResolution() override { return {96, 96}; }

private:
    CRect GetDeviceClip() const;
    CRect ToDevice(const CRect& rect) const;

    CellGrid& m_Grid;
    const CSize& m_Size;
    CPoint m_Origin;
    std::optional<CRect> m_Clip;
};

/// A window of a HeadlessDesk. Nothing is painted before Update or the desk's Pump.
class QUOREL_API HeadlessWindow : public IBackendWindow {
public:
    HeadlessWindow(HeadlessDesk& desk, WindowKind kind, HeadlessWindow* parent, IWindowSink& sink,
                   CSize size);
    ~HeadlessWindow() override;

    CSize GetClientSize() override { return m_Size; }
    CRect GetWindowRect() override;
    CPoint ClientToScreen(CPoint point) override { return point; }
    void Invalidate(const CRect& rect, bool erase) override;
    void Update() override;
    void ScrollPixels(CSize distance, const CRect& area) override;
    IBackendSurface& GetSurface() override;
    void SetCaret(const CRect* caret) override;
    void SetCapture(bool on) override { m_Captured = on; }
    void SetFocus() override;
    void SetScrollBar(ScrollBar bar, const ScrollInfo& info) override { m_ScrollBars[bar] = info; }
    void Post(unsigned message, std::uintptr_t first, std::intptr_t second) override;
    void SetTitle(const AString& title) override { m_Title = title; }
    void Show(int showCommand) override;
    WindowPlacement GetPlacement() override { return m_Placement; }
    void SetPlacement(const WindowPlacement& placement) override { m_Placement = placement; }

    /// Sends a message through the sink at once, as a user's doing.
    std::intptr_t Send(unsigned message, std::uintptr_t first = 0, std::intptr_t second = 0);
    /// Presses a key with KeyModifiers down, and lets all go: a key-down unless an accelerator
    /// takes the key. The flags of the message are 1.
    void PressKey(unsigned key, unsigned modifiers = 0);
    /// Changes the client size and tells the sink.
    void Resize(CSize size);

    /// @name What the framework has made of the window
    /// @{
    WindowKind GetKind() const { return m_Kind; }
    HeadlessWindow* GetParent() const { return m_Parent; }
    const CellGrid& GetGrid() const { return m_Grid; }
    const std::optional<CRect>& GetCaret() const { return m_Caret; }
    bool IsCaptured() const { return m_Captured; }
    bool IsShown() const { return m_Shown; }
    /// All zeros when the bar was never set.
    ScrollInfo GetScrollBar(ScrollBar bar) const;
    const AString& GetTitle() const { return m_Title; }
    const CRect& GetInvalid() const { return m_Invalid; }
    /// What a screen reader would read; null: nothing.
    IAccessibleText* GetAccessibleText() { return m_Sink.GetAccessibleText(); }
    /// @}

private:
    friend class HeadlessDesk;

    HeadlessDesk& m_Desk;
    WindowKind m_Kind;
    HeadlessWindow* m_Parent;
    IWindowSink& m_Sink;
    CSize m_Size;
    CellGrid m_Grid;
    CellSurface m_Surface;
    CRect m_Invalid;
    bool m_Erase = false;
    std::optional<CRect> m_Caret;
    bool m_Captured = false;
    bool m_Shown = false;
    std::map<ScrollBar, ScrollInfo> m_ScrollBars;
    AString m_Title;
    WindowPlacement m_Placement;
};
