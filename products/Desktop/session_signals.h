/// SessionSignals: the end of a session as the system tells it.
#pragma once

#include <functional>
#include <memory>

#include <QSocketNotifier>

/// Calls back, in the event loop, once a signal asks the process to end (SIGTERM, SIGHUP, SIGINT).
/// One a process.
class SessionSignals {
public:
    explicit SessionSignals(std::function<void()> ends);

private:
    std::function<void()> m_Ends;
    std::unique_ptr<QSocketNotifier> m_Notifier;
};
