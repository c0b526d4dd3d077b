#include "edit_stage.h"

#include <algorithm>

namespace {

/// The module's numbers for its dialogs.
enum Number : unsigned {
    kCommandGoTo = 42002,
    kControlLine = 9001,
    kControlMatchCase = 9004,
    kControlUp = 9005,
    kControlFindWhat = 9007,
    kControlReplaceWith = 9008,
};

constexpr std::intptr_t kFromKeyboard = 1; // flags of a message that isn't a replayed one

/// The editor has opened one view.
HeadlessWindow& ViewWindow(const HeadlessDesk& desk) {
    const auto& windows = desk.GetWindows();
    const auto view = std::ranges::find(windows, WindowKind::view, &HeadlessWindow::GetKind);
    if (view == windows.end())
        throw ToolError(ExitCode::file, "the module opened no view");
    return **view;
}

} // namespace

EditDesk::EditDesk(CSize cells) {
    m_ClientSize = {cells.cx * kCellSize.cx, cells.cy * kCellSize.cy};
}

EditDesk::~EditDesk() = default;

DropEffect EditDesk::DragText(const AString&) {
    m_Pointer = m_DropPoint;
    return DropEffect::none;
}

EditStage::EditStage(EditorSession& session, EditDesk& desk)
    : m_Session(session), m_Desk(desk), m_Window(ViewWindow(desk)) {
    Settle();
}

void EditStage::Type(const AString& text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        std::uintptr_t character = text[i];
        constexpr std::uintptr_t kHigh = 0xD800, kLow = 0xDC00, kHalf = 0x400, kBeyond = 0x10000;
        if (character >= kHigh && character < kLow && i + 1 < text.size()) // one of two units
            character = kBeyond + (character - kHigh) * kHalf + (text[++i] - kLow);
        m_Window.Send(kMsgChar, character, kFromKeyboard);
    }
    Settle();
}

void EditStage::PressKey(unsigned key, unsigned modifiers) {
    m_Window.PressKey(key, modifiers);
    Settle();
}

void EditStage::RunCommand(unsigned id) {
    m_Session.GetDriver().RunCommand(id);
    Settle();
}

/// Where the left edge of a cell of the text is in the window, which may be outside.
CPoint EditStage::PointOf(TextPosition at) {
    const auto scroll = m_Session.GetInspector().GetScroll();
    const std::int64_t row = std::int64_t{at.m_Row} - (scroll ? scroll->m_TopRow : 0);
    const std::int64_t left = m_Window.GetScrollBar(ScrollBar::horizontal).m_Position;
    return {ToPixel(std::int64_t{at.m_Column} * kCellSize.cx - left), ToPixel(row * kCellSize.cy)};
}

void EditStage::SendMouse(unsigned message, TextPosition at) {
    m_Desk.m_Pointer = PointOf(at);
    m_Window.Send(message, 0, MakePointValue(m_Desk.m_Pointer.x, m_Desk.m_Pointer.y));
}

void EditStage::Drag(TextPosition from, TextPosition to, bool alt) {
    if (alt)
        m_Desk.m_KeysDown.insert(kKeyAlt);
    m_Desk.m_DropPoint = PointOf(to);
    SendMouse(kMsgLButtonDown, from);
    SendMouse(kMsgMouseMove, to);
    SendMouse(kMsgLButtonUp, to); // a move that scrolls has put the cell elsewhere
    m_Desk.m_KeysDown.clear();
    Settle();
}

void EditStage::DoubleClick(TextPosition at) {
    m_Desk.m_DropPoint = PointOf(at);
    for (const unsigned message :
         {kMsgLButtonDown, kMsgLButtonUp, kMsgLButtonDblClk, kMsgLButtonUp})
        SendMouse(message, at);
    Settle();
}

void EditStage::TurnWheel(int delta) {
    m_Window.Send(kMsgMouseWheel, static_cast<std::uintptr_t>(std::intptr_t{delta}));
    Settle();
}

void EditStage::Scroll(unsigned code) {
    m_Window.Send(kMsgVScroll, code);
    Settle();
}

void EditStage::RunDialog(unsigned command, std::function<void(HeadlessDialog&)> work) {
    m_Desk.m_DialogScripts.push_back(std::move(work));
    RunCommand(command);
    m_Desk.m_DialogScripts.clear();
}

void EditStage::Search(const SearchRequest& request) {
    RunDialog(request.m_Command, [&request](HeadlessDialog& dialog) {
        dialog.Type(kControlFindWhat, request.m_Text);
        dialog.Type(kControlReplaceWith, request.m_Replacement);
        if (dialog.IsChecked(kControlMatchCase) != request.m_MatchCase)
            dialog.Click(kControlMatchCase);
        if (request.m_Up)
            dialog.Click(kControlUp);
        dialog.Click(request.m_Button);
    });
}

void EditStage::GoToLine(const AString& line) {
    RunDialog(kCommandGoTo, [&line](HeadlessDialog& dialog) {
        dialog.Type(kControlLine, line);
        dialog.Click(kIdOk);
    });
}
