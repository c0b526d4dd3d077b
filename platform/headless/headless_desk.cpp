#include "headless_desk.h"

#include <algorithm>

#include "cmd_target.h"
#include "menu.h"

namespace {

/// Takes the first of a queue's answers; nothing when it is empty.
template <class T>
std::optional<T> Take(std::deque<T>& answers) {
    if (answers.empty())
        return std::nullopt;
    T first = std::move(answers.front());
    answers.pop_front();
    return first;
}

/// The last button that a message box's style asks for.
int LastButton(int style) {
    constexpr int kLast[] = {kIdOk, kIdCancel, kIdIgnore, kIdCancel, kIdNo};
    const int buttons = style & 0xF;
    return buttons < static_cast<int>(std::size(kLast)) ? kLast[buttons] : kIdCancel;
}

} // namespace

HeadlessDesk::HeadlessDesk() : m_Screen({0, 0}), m_ScreenSurface(m_Screen, m_ScreenSize) {}

HeadlessDesk::~HeadlessDesk() {
    if (GetBackend() == this)
        SetBackend(nullptr);
}

std::unique_ptr<IBackendWindow> HeadlessDesk::CreateWindow(WindowKind kind, IBackendWindow* parent,
                                                           IWindowSink& sink) {
    return std::make_unique<HeadlessWindow>(*this, kind, static_cast<HeadlessWindow*>(parent), sink,
                                            m_ClientSize);
}

void HeadlessDesk::Leave(HeadlessWindow& window) {
    std::erase(m_Windows, &window);
    std::erase_if(m_Posted, [&](const PostedMessage& p) { return p.m_Window == &window; });
    for (HeadlessWindow* other : m_Windows)
        if (other->m_Parent == &window)
            other->m_Parent = nullptr;
    m_Focus.Forget(window);
}

int HeadlessDesk::Pump(int limit) {
    int sent = 0;
    for (; sent < limit && !m_Posted.empty(); ++sent) {
        const PostedMessage message = m_Posted.front();
        m_Posted.pop_front();
        message.m_Window->Send(message.m_Message, message.m_First, message.m_Second);
    }
    PaintInvalid();
    return sent;
}

void HeadlessDesk::PaintInvalid() {
    const std::vector<HeadlessWindow*> windows = m_Windows;
    for (HeadlessWindow* window : windows)
        if (std::ranges::find(m_Windows, window) != m_Windows.end())
            window->Update();
}

bool HeadlessDesk::SetClipboardText(const AString& text) {
    if (m_ClipboardBusy)
        return false;
    m_Clipboard = text;
    return true;
}

std::optional<AString> HeadlessDesk::GetClipboardText() {
    return m_ClipboardBusy ? std::nullopt : m_Clipboard;
}

bool HeadlessDesk::HasClipboardText() {
    return m_Clipboard.has_value();
}

bool HeadlessDesk::IsKeyDown(unsigned key, bool) {
    return m_KeysDown.contains(key);
}

std::unique_ptr<IBackendFont> HeadlessDesk::CreateFont(const LogFont& font) {
    return std::make_unique<HeadlessFont>(font);
}

int HeadlessDesk::ShowMessage(const AString& text, int style) {
    m_Messages.push_back({text, style});
    return Take(m_MessageAnswers).value_or(LastButton(style));
}

std::optional<AString> HeadlessDesk::AskFile(const FileRequest& request) {
    m_FileRequests.push_back(request);
    return Take(m_FileAnswers);
}

std::optional<ColorRef> HeadlessDesk::AskColor(ColorRef, std::span<const ColorRef>) {
    return Take(m_ColorAnswers);
}

int HeadlessDesk::RunDialog(const AString& title, std::span<const DialogResource* const> pages,
                            IDialogSink& sink) {
    HeadlessDialog dialog(title, pages, sink);
    sink.DialogShown(dialog);
    if (const auto script = Take(m_DialogScripts); script && !dialog.GetResult())
        (*script)(dialog);
    if (!dialog.GetResult())
        dialog.Click(kIdCancel);
    return dialog.GetResult().value_or(kIdCancel);
}

unsigned HeadlessDesk::TrackMenu(const CMenu& menu, CPoint, CCmdTarget& target) {
    const std::optional<unsigned> answer = Take(m_MenuAnswers);
    if (!answer || !menu.FindCommand(*answer))
        return 0;
    CCmdUI ui(*answer);
    target.UpdateCommand(ui);
    return ui.IsEnabled() ? *answer : 0;
}

DropEffect HeadlessDesk::DragText(const AString& text) {
    m_Dragged.push_back(text);
    return m_DropEffect;
}

void HeadlessDesk::ShowPreview(const PrintFunction& print) {
    m_Previews.push_back(std::make_shared<PrintRecord>());
    print(std::make_unique<HeadlessPrinter>(m_Printer, m_Previews.back()));
}

std::unique_ptr<IBackendPrinter> HeadlessDesk::AskPrinter(PrintRequest& request) {
    const auto answer = Take(m_PrintAnswers);
    if (answer && !(*answer)(request))
        return nullptr;
    m_PrintJobs.push_back(std::make_shared<PrintRecord>());
    return std::make_unique<HeadlessPrinter>(m_Printer, m_PrintJobs.back());
}
