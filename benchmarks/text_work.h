/// The names of the work that several programs do, and what they share in doing it. Header only:
/// the programs of peers link no room.
#pragma once

#include "peer_bench.h"

#include <functional>
#include <malloc.h>
#include <sys/wait.h>
#include <unistd.h>

namespace work {

inline const std::string kLoadWarm = "load 1M lines, warm heap";
inline const std::string kLoadFirst = "load 1M lines, first in process";
inline const std::string kMemory = "memory of 1M lines over the file's bytes";
inline const std::string kMemoryColoured = "memory of 1M coloured lines over the file's bytes";
inline const std::string kColour = "colour a netlist line (50k file)";
inline const std::string kTypeMedian = "insert a character in the middle of 1M, recolour: median";
inline const std::string kTypeWorst = "insert a character in the middle of 1M, recolour: 99.9th";
inline const std::string kTopMedian = "insert a line at the top of 1M: median";
inline const std::string kTopWorst = "insert a line at the top of 1M: 99.9th";
inline const std::string kDeleteMedian = "delete a line in the middle of 1M: median";
inline const std::string kDeleteWorst = "delete a line in the middle of 1M: 99.9th";
inline const std::string kInsertMany = "insert 100,000 lines in the middle of 1M";
inline const std::string kGetText = "whole text of 1M lines out";
inline const std::string kArchive = "archive of 1M lines into a buffer with room";
inline const std::string kSpans = "colour changes a line (50k file; more is richer)";

inline constexpr std::size_t kEdits = 10000;
inline constexpr int kManyLines = 100000;
inline constexpr int kReps = 7;

using bench::Row;

/// A generated netlist, whole.
inline std::string Million() {
    return bench::Input("netlist_1m.cir");
}
inline std::string Small() {
    return bench::Input("netlist_50k.cir");
}

/// The process's resident memory in megabytes.
inline double Resident() {
    std::ifstream status("/proc/self/status");
    std::string line;
    while (std::getline(status, line))
        if (line.starts_with("VmRSS:"))
            return std::atof(line.c_str() + 6) * 1024 / 1e6;
    return 0;
}

/// From here on freed memory stays mapped, so that repeated runs see a warm heap.
inline void WarmHeap() {
    mallopt(M_MMAP_MAX, 0);
    mallopt(M_TRIM_THRESHOLD, -1);
    mallopt(M_TOP_PAD, 64 << 20);
}

/// The value that f gives in a process of its own, so that it sees a fresh heap.
inline double InChild(const std::function<double()>& f) {
    int ends[2];
    if (pipe(ends) != 0)
        std::exit(2);
    const pid_t child = fork();
    if (child == 0) {
        const double value = f();
        const bool sent = write(ends[1], &value, sizeof value) == sizeof value;
        _exit(sent ? 0 : 2);
    }
    close(ends[1]);
    double value = -1;
    const bool got = read(ends[0], &value, sizeof value) == sizeof value;
    close(ends[0]);
    int status = 0;
    waitpid(child, &status, 0);
    if (!got || status != 0)
        std::exit(2);
    return value;
}

/// Times each edit on its own and gives the median and the 99.9th percentile in microseconds.
/// undo runs untimed behind each.
template <class Edit, class Undo>
void Edits(const std::string& median, const std::string& worst, const std::string& who, Edit edit,
           Undo undo) {
    std::vector<double> times(kEdits);
    for (std::size_t i = 0; i < kEdits; ++i) {
        const double begin = bench::Now();
        edit(i);
        times[i] = bench::Now() - begin;
        undo(i);
    }
    std::sort(times.begin(), times.end());
    Row(median, who, "us", times[kEdits / 2] / 1e3);
    Row(worst, who, "us", times[kEdits - kEdits / 1000 - 1] / 1e3);
}

} // namespace work
