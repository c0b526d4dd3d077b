#include "host_prompt.h"

#include <utility>

#include "assertion.h"
#include "backend.h"

namespace {

constexpr int kButtons = 0x0F; // of a style

} // namespace

HostPrompt::~HostPrompt() = default;

int HostPrompt::ShowPrompt(const AString& text, int style, int) {
    m_Shown.push_back({text, style});
    if (m_OnShown)
        m_OnShown(Shown{text, style});
    if (IBackendDesk* const desk = GetBackend())
        return desk->ShowMessage(text, style);
    return (style & kButtons) == kOk ? kAnswerOk : kAnswerCancel;
}

void HostPrompt::ShowMessages(const QuorelCommandContext&) {
    for (const Shown& message : std::exchange(m_Collected, {}))
        ShowPrompt(message.m_Text, message.m_Style, 0);
}

void HostPrompt::Collect(const AString& text, int style) {
    m_Collected.push_back({text, style});
}

HostMessageSink::~HostMessageSink() = default;

void HostMessageSink::PostMessage(const QuorelMessage& message) {
    USE_ASSERT(m_ToText != nullptr);
    if (!m_ToText)
        return;
    const HostPrompt::Shown shown = m_ToText(message);
    m_Prompt.Collect(shown.m_Text, shown.m_Style);
}
