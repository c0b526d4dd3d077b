#include "progress.h"

#include <cstdio>
#include <utility>

#include <unistd.h>

#include "output.h"

Progress::Progress(std::string what, std::uint64_t total)
    : m_What(std::move(what)), m_Total(total),
      m_IsShown(total > 0 && ::isatty(STDERR_FILENO) != 0 && !Output::Get().IsTerminal()) {}

Progress::~Progress() {
    if (m_Percent >= 0)
        std::fputs("\r\x1b[K", stderr);
}

void Progress::Show(std::uint64_t done) {
    using namespace std::chrono_literals;
    const int percent =
        static_cast<int>(100.0 * static_cast<double>(done) / static_cast<double>(m_Total));
    if (percent == m_Percent || std::chrono::steady_clock::now() - m_Start < 1s)
        return;
    m_Percent = percent;
    std::fprintf(stderr, "\r%s: %d %%", m_What.c_str(), percent);
}
