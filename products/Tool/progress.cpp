#include "progress.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <mutex>
#include <system_error>
#include <utility>

#include <unistd.h>

using namespace std::chrono_literals;

namespace {

constexpr auto kSilence = 1s;
constexpr auto kRound = 200ms;

std::atomic<std::uint64_t> sDone = 0;
std::atomic<std::uint64_t> sTotal = 0;
std::atomic<bool> sStopped = false;

std::mutex sTerminal; // whoever writes to it
bool sIsOnShow = false;

void TakeAway() {
    if (std::exchange(sIsOnShow, false))
        std::fputs("\r\x1b[K", stderr);
}

std::string HowFar(std::chrono::steady_clock::time_point start) {
    const double done = static_cast<double>(sDone), total = static_cast<double>(sTotal);
    if (total > 0)
        return std::to_string(static_cast<int>(100 * std::min(done / total, 1.0))) + " %";
    const auto taken = std::chrono::steady_clock::now() - start;
    return std::to_string(std::chrono::duration_cast<std::chrono::seconds>(taken).count()) + " s";
}

} // namespace

Progress::Progress(std::string what) : m_What(std::move(what)) {
    if (::isatty(STDERR_FILENO) == 0)
        return;
    try {
        m_Thread = std::jthread([this](const std::stop_token& stop) { Run(stop); });
    } catch (const std::system_error&) {
        // The job is done without a word then.
    }
}

Progress::~Progress() {
    if (!m_Thread.joinable())
        return;
    m_Thread.request_stop();
    m_Thread.join();
    TakeAway();
}

void Progress::Run(const std::stop_token& stop) const {
    const auto start = std::chrono::steady_clock::now();
    std::condition_variable_any never;
    std::unique_lock terminal(sTerminal);
    for (auto wait = std::chrono::milliseconds(kSilence);; wait = kRound) {
        never.wait_for(terminal, stop, wait, [] { return false; });
        if (stop.stop_requested())
            return;
        if (sStopped)
            continue;
        std::fprintf(stderr, "\r%s: %s\x1b[K", m_What.c_str(), HowFar(start).c_str());
        sIsOnShow = true;
    }
}

void Progress::Set(std::uint64_t done, std::uint64_t total) {
    sDone.store(done, std::memory_order_relaxed);
    sTotal.store(total, std::memory_order_relaxed);
}

void Progress::Stop() {
    sStopped = true;
}

Progress::Pause::Pause() {
    sTerminal.lock();
    TakeAway();
}

Progress::Pause::~Pause() {
    sTerminal.unlock();
}
