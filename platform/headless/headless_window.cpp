#include "headless_window.h"

#include <set>
#include <utility>

#include "headless_desk.h"

HeadlessFont::~HeadlessFont() = default;

CellSurface::~CellSurface() = default;

CRect CellSurface::GetDeviceClip() const {
    const CRect all{0, 0, m_Size.cx, m_Size.cy};
    return m_Clip ? m_Clip->Intersect(all) : all;
}

CRect CellSurface::ToDevice(const CRect& rect) const {
    return rect.Offset(m_Origin.x, m_Origin.y).Intersect(GetDeviceClip());
}

void CellSurface::FillRect(const CRect& rect, ColorRef color) {
    m_Grid.Fill(ToDevice(rect), color);
}

void CellSurface::InvertRect(const CRect& rect) {
    m_Grid.Invert(ToDevice(rect));
}

int CellSurface::DrawText(CPoint at, std::u16string_view text, const TextStyle& style) {
    const CRect clip = GetDeviceClip();
    CPoint place{at.x + m_Origin.x, at.y + m_Origin.y};
    for (const char16_t c : text) {
        if (Cell* cell = m_Grid.Find(place, clip))
            *cell = {c, style.m_Color, style.m_Opaque ? style.m_Background : cell->m_Background,
                     false};
        place.x += kCellSize.cx;
    }
    return place.x - at.x - m_Origin.x;
}

CSize CellSurface::MeasureText(std::u16string_view text, const IBackendFont*) {
    return {static_cast<int>(text.size()) * kCellSize.cx, kCellSize.cy};
}

FontMetrics CellSurface::GetFontMetrics(const IBackendFont*) {
    return {kCellSize.cy, 0, kCellSize.cx, kCellSize.cx};
}

void CellSurface::SetClip(const CRect* clip) {
    m_Clip = clip ? std::optional(*clip) : std::nullopt;
}

CRect CellSurface::GetClipBox() {
    return GetDeviceClip().Offset(-m_Origin.x, -m_Origin.y);
}

HeadlessWindow::HeadlessWindow(HeadlessDesk& desk, WindowKind kind, HeadlessWindow* parent,
                               IWindowSink& sink, CSize size)
    : m_Desk(desk), m_Kind(kind), m_Parent(parent), m_Sink(sink), m_Size(size), m_Grid(size),
      m_Surface(m_Grid, m_Size), m_Invalid{0, 0, size.cx, size.cy}, m_Erase(true) {
    m_Desk.Enter(*this);
}

HeadlessWindow::~HeadlessWindow() {
    m_Desk.Leave(*this);
}

CRect HeadlessWindow::GetWindowRect() {
    return {0, -m_Desk.m_TitleHeight, m_Size.cx, m_Size.cy};
}

void HeadlessWindow::Invalidate(const CRect& rect, bool erase) {
    const CRect part = rect.Intersect({0, 0, m_Size.cx, m_Size.cy});
    if (part.IsEmpty())
        return;
    m_Invalid = m_Invalid.Union(part);
    m_Erase = m_Erase || erase;
}

void HeadlessWindow::Update() {
    if (m_Invalid.IsEmpty())
        return;
    const CRect invalid = m_Invalid;
    const bool erase = m_Erase;
    m_Invalid = {};
    m_Erase = false;
    CellSurface surface(m_Grid, m_Size);
    surface.SetClip(&invalid);
    m_Sink.HandlePaint(surface, erase);
}

void HeadlessWindow::ScrollPixels(CSize distance, const CRect& area) {
    m_Grid.Scroll(distance, area);
    const CRect moved = m_Invalid.Intersect(area);
    if (!moved.IsEmpty())
        m_Invalid = m_Invalid.Union(moved.Offset(distance.cx, distance.cy).Intersect(area));
}

IBackendSurface& HeadlessWindow::GetSurface() {
    m_Surface.SetOrigin({});
    m_Surface.SetClip(nullptr);
    return m_Surface;
}

void HeadlessWindow::SetCaret(const CRect* caret) {
    m_Caret = caret ? std::optional(*caret) : std::nullopt;
}

void HeadlessWindow::SetFocus() {
    m_Desk.m_Focus.Move(this);
}

void HeadlessWindow::Post(unsigned message, std::uintptr_t first, std::intptr_t second) {
    m_Desk.Queue({this, message, first, second});
}

void HeadlessWindow::Show(int showCommand) {
    m_Shown = showCommand != kShowHide;
    if (showCommand == kShowNormal || showCommand == kShowRestore)
        m_Placement.m_ShowCommand = kShowNormal;
    else if (showCommand == kShowMinimized || showCommand == kShowMaximized)
        m_Placement.m_ShowCommand = showCommand;
}

void HeadlessWindow::PressKey(unsigned key, unsigned modifiers) {
    constexpr std::pair<unsigned, unsigned> kKeys[] = {
        {kModShift, kKeyShift}, {kModControl, kKeyControl}, {kModAlt, kKeyAlt}};
    HeadlessDesk& desk = m_Desk; // which outlives a window that the key closes
    const std::set<unsigned> before = desk.m_KeysDown;
    for (const auto& [modifier, modifierKey] : kKeys)
        if (modifiers & modifier)
            desk.m_KeysDown.insert(modifierKey);
    if (!m_Sink.PreTranslateKey(key, modifiers))
        m_Sink.HandleMessage(kMsgKeyDown, key, 1);
    desk.m_KeysDown = before;
}

std::intptr_t HeadlessWindow::Send(unsigned message, std::uintptr_t first, std::intptr_t second) {
    return m_Sink.HandleMessage(message, first, second);
}

void HeadlessWindow::Resize(CSize size) {
    m_Size = size;
    m_Grid.Resize(size);
    m_Invalid = {0, 0, size.cx, size.cy};
    m_Erase = true;
    Send(kMsgSize, 0, MakePointValue(size.cx, size.cy));
}

ScrollInfo HeadlessWindow::GetScrollBar(ScrollBar bar) const {
    const auto info = m_ScrollBars.find(bar);
    return info == m_ScrollBars.end() ? ScrollInfo{} : info->second;
}
