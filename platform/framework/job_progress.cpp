#include "job_progress.h"

#include <algorithm>
#include <utility>

#include "backend.h"

namespace {

IProgressDesk* Desk() {
    return dynamic_cast<IProgressDesk*>(GetBackend());
}

} // namespace

std::chrono::milliseconds CJobProgress::s_Interval{50};

CJobProgress::CJobProgress(AString what)
    : m_What(std::move(what)), m_Next(Clock::now() + s_Interval) {}

CJobProgress::~CJobProgress() {
    if (IProgressDesk* desk = m_Shown ? Desk() : nullptr)
        desk->EndProgress();
}

bool CJobProgress::GoOn(std::int64_t done, std::int64_t total) {
    const Clock::time_point now = Clock::now();
    if (m_Stopped || now < m_Next)
        return !m_Stopped;
    if (IProgressDesk* desk = done > 0 ? Desk() : nullptr) {
        m_Shown = true;
        const double part = static_cast<double>(done) / static_cast<double>(std::max(total, done));
        m_Stopped = !desk->ShowProgress(m_What, static_cast<int>(part * 1000));
    }
    m_Next = Clock::now() + s_Interval;
    return !m_Stopped;
}
