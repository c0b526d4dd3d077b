/// HostPrompt and HostMessageSink: what a host has told its user, and what it is still to tell.
#pragma once

#include <functional>
#include <vector>

#include "astring.h"
#include "idesktop.h"
#include "quorel_export.h"

/// A prompt that remembers every text it showed. The answer is the backend's; without a backend it
/// is the cancelling one, of a box with a single button that button.
class QUOREL_API HostPrompt : public IPrompt {
public:
    struct Shown {
        AString m_Text;
        int m_Style;
        bool operator==(const Shown&) const = default;
    };

    virtual ~HostPrompt();

    int ShowPrompt(const AString& text, int style, int reserved) override;
    int GetMessageCount() override { return static_cast<int>(m_Collected.size()); }
    /// Shows each message collected as a prompt of its own, in order.
    void ShowMessages(const QuorelCommandContext& context) override;

    /// Keeps a message for ShowMessages.
    void Collect(const AString& text, int style);

    /// Every text shown since the start, in order.
    const std::vector<Shown>& GetShown() const { return m_Shown; }
    /// Told of each text as it is shown, ahead of the answer; may be empty.
    std::function<void(const Shown&)> m_OnShown;

private:
    std::vector<Shown> m_Shown;
    std::vector<Shown> m_Collected;
};

/// Takes the messages of all modules: their texts are collected in the prompt.
class QUOREL_API HostMessageSink : public IMessageSink {
public:
    /// Makes the text and the prompt's style of a message. A host that knows the message library
    /// sets it; a message posted without it is an assertion and lost.
    std::function<HostPrompt::Shown(const QuorelMessage&)> m_ToText;

    /// @param prompt outlives the sink
    explicit HostMessageSink(HostPrompt& prompt) : m_Prompt(prompt) {}
    virtual ~HostMessageSink();

    void PostMessage(const QuorelMessage& message) override;

private:
    HostPrompt& m_Prompt;
};
