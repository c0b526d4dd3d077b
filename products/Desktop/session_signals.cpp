#include "session_signals.h"

#include <csignal>

#include <sys/socket.h>
#include <unistd.h>

namespace {

int sWriteEnd = -1;

/// A handler may do next to nothing: it leaves a byte for the event loop.
void LeaveByte(int) {
    const char byte = 1;
    static_cast<void>(!write(sWriteEnd, &byte, sizeof byte));
}

} // namespace

SessionSignals::SessionSignals(std::function<void()> ends) : m_Ends(std::move(ends)) {
    int pair[2] = {};
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, pair) != 0)
        return;
    sWriteEnd = pair[0];
    m_Notifier = std::make_unique<QSocketNotifier>(pair[1], QSocketNotifier::Read);
    QObject::connect(m_Notifier.get(), &QSocketNotifier::activated, m_Notifier.get(), [this] {
        m_Notifier->setEnabled(false);
        m_Ends();
    });
    for (const int signal : {SIGTERM, SIGHUP, SIGINT})
        std::signal(signal, LeaveByte);
}
