/// Timing of peers that take turns in one process.
#pragma once

#include <algorithm>
#include <ctime>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "peer_bench.h"

namespace work {

/// Times pieces of work by the processor time that the process takes, each once a round: whatever
/// else the machine does, for a moment or all the time, meets all of them alike. Wall clocks and
/// one contestant behind the other gave ratios of 1.4 to 7 for the same programs on a busy machine.
class Turns {
public:
    using Step = std::function<void()>;
    /// What of a piece of work is timed, and what runs in front of it and behind it.
    struct Steps {
        Step prepare, run, finish;
    };

    /// A piece of work, in so many rounds.
    void Add(std::string work, std::string who, int rounds, Steps steps) {
        mPieces.push_back({std::move(work), std::move(who), rounds, std::move(steps), {}});
    }

    /// Runs all, one round untimed, and prints nanoseconds by `items`, of the quarter of the rounds
    /// that was disturbed least.
    void Run(double items) {
        int rounds = 0;
        for (const Piece& piece : mPieces)
            rounds = std::max(rounds, piece.rounds);
        for (int round = -1; round < rounds; ++round)
            for (Piece& piece : mPieces)
                if (round < piece.rounds)
                    Take(piece, round >= 0);
        for (const Piece& piece : mPieces)
            bench::Row(piece.work, piece.who, "ns/item",
                       bench::Quantile(piece.times, 0.25) / items);
    }

private:
    struct Piece {
        std::string work, who;
        int rounds;
        Steps steps;
        std::vector<double> times;
    };

    static double ProcessorTime() {
        std::timespec time{};
        clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
        return static_cast<double>(time.tv_sec) * 1e9 + static_cast<double>(time.tv_nsec);
    }

    static void Take(Piece& piece, bool counts) {
        if (piece.steps.prepare)
            piece.steps.prepare();
        const double start = ProcessorTime();
        piece.steps.run();
        const double time = ProcessorTime() - start;
        if (counts)
            piece.times.push_back(time);
        if (piece.steps.finish)
            piece.steps.finish();
    }

    std::vector<Piece> mPieces;
};

} // namespace work
