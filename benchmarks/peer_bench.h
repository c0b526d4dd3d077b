/// What the benchmark programs share: timing, rows of figures, and the inputs.
#pragma once

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

namespace bench {

/// Nanoseconds since some fixed moment.
inline double Now() {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration<double, std::nano>(now).count();
}

/// Keeps the compiler from leaving out the work whose result this is.
template <class T>
inline void Keep(const T& value) {
    asm volatile("" : : "g"(&value) : "memory");
}

inline double Quantile(std::vector<double> values, double q) {
    std::sort(values.begin(), values.end());
    const auto at = static_cast<std::size_t>(q * static_cast<double>(values.size()));
    return values[std::min(at, values.size() - 1)];
}
inline double Median(std::vector<double> values) {
    return Quantile(std::move(values), 0.5);
}

/// Nanoseconds of one call of `work`, the median of `rounds`; `setup` runs untimed before each.
template <class Setup, class Work>
double TimeOf(int rounds, Setup setup, Work work) {
    std::vector<double> times;
    for (int i = 0; i < rounds; ++i) {
        setup();
        const double start = Now();
        work();
        times.push_back(Now() - start);
    }
    return Median(std::move(times));
}
template <class Work>
double TimeOf(int rounds, Work work) {
    return TimeOf(
        rounds, [] {}, work);
}

/// Nanoseconds of one call of a short `work`, in batches of at least `batchNs`.
template <class Work>
double TimeOfShort(int rounds, Work work, double batchNs = 5e6) {
    std::size_t count = 1;
    const auto batch = [&] {
        for (std::size_t i = 0; i < count; ++i)
            work();
    };
    while (TimeOf(1, batch) < batchNs)
        count *= 2;
    return TimeOf(rounds, batch) / static_cast<double>(count);
}

/// One figure, as `benchmarks/run` reads it: a smaller value is better.
inline void Row(const std::string& work, const std::string& who, const char* unit, double value) {
    std::printf("%s\t%s\t%s\t%.6g\n", work.c_str(), who.c_str(), unit, value);
    std::fflush(stdout);
}

/// Where a file of the folder of inputs is.
inline std::string InputPath(const std::string& name) {
    const char* folder = std::getenv("QUOREL_BENCH_DATA");
    return std::string(folder ? folder : ".") + "/" + name;
}

/// A whole file of the folder of inputs; ends the program when it isn't there.
inline std::string Input(const std::string& name) {
    const std::string path = InputPath(name);
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        std::perror(path.c_str());
        std::exit(2);
    }
    return {std::istreambuf_iterator<char>(file), {}};
}

/// Views of the lines, without their LF or CR LF.
inline std::vector<std::string_view> LinesOf(std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        std::string_view line = text.substr(0, end);
        if (line.ends_with('\r'))
            line.remove_suffix(1);
        lines.push_back(line);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

} // namespace bench
