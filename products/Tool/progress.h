/// Progress: how far a long job is, for a person who waits.
#pragma once

#include <cstdint>
#include <string>
#include <thread>

/// One line on standard error, if that is a terminal, from the job's second second on: what runs,
/// with the percentage that is done or, while that isn't known, the seconds that it took. It stands
/// there until somebody writes to the terminal, and at most until the object's end.
class Progress {
public:
    /// One at a time.
    explicit Progress(std::string what);
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    ~Progress();

    /// Tells how much of the total is done; a total of 0: it isn't known. As cheap as two stores.
    static void Set(std::uint64_t done, std::uint64_t total);
    /// Shows nothing from here on: a person types the input.
    static void Stop();

    /// Takes the line away and keeps it away while it lives: for whoever writes to the terminal.
    class Pause {
    public:
        Pause();
        Pause(const Pause&) = delete;
        Pause& operator=(const Pause&) = delete;
        ~Pause();
    };

private:
    void Run(const std::stop_token& stop) const;

    std::string m_What;
    std::jthread m_Thread; ///< none unless standard error is a terminal
};
