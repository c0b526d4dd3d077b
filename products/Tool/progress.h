/// Progress: how far a long job is, for a person who waits.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>

/// Shows a percentage on standard error once the job has taken a second, if that is a terminal and
/// standard output is none. Cleared at the end.
class Progress {
public:
    Progress(std::string what, std::uint64_t total);
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    ~Progress();

    /// Tells how much of the total is done. Cheap: most calls only count.
    void Set(std::uint64_t done) {
        if (m_IsShown && ++m_Calls % 1024 == 0)
            Show(done);
    }

private:
    void Show(std::uint64_t done);

    std::string m_What;
    std::uint64_t m_Total;
    std::uint64_t m_Calls = 0;
    bool m_IsShown;
    int m_Percent = -1; ///< the one on show
    std::chrono::steady_clock::time_point m_Start = std::chrono::steady_clock::now();
};
