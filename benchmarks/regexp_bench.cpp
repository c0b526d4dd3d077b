/// Searching and compiling with the colouring's expressions, beside RE2, PCRE2 and std::regex.
#define PCRE2_CODE_UNIT_WIDTH 8
#include "peer_bench.h"
#include "reg_exp.h"

#include <array>
#include <memory>
#include <pcre2.h>
#include <re2/re2.h>
#include <regex>

namespace {

constexpr int kRounds = 9;

/// What an engine found: where, and how long. `start` is -1 if nothing.
struct Found {
    std::ptrdiff_t start = -1;
    std::ptrdiff_t length = 0;
};

struct Ours {
    static constexpr const char* kName = "quorel";
    explicit Ours(const char* text) : expression(text) {}
    Found Find(std::string_view line) const {
        const RegSpan span = expression.MatchFrom(RegSubject(line));
        return {span.start, span.length};
    }
    CRegExp expression;
};

struct Re2 {
    static constexpr const char* kName = "RE2";
    static RE2::Options Options() {
        RE2::Options options;
        options.set_encoding(RE2::Options::EncodingLatin1);
        options.set_log_errors(false);
        return options;
    }
    explicit Re2(const char* text) : expression(text, Options()) {}
    Found Find(std::string_view line) const {
        const re2::StringPiece text(line.data(), line.size());
        re2::StringPiece match;
        if (!expression.Match(text, 0, text.size(), RE2::UNANCHORED, &match, 1))
            return {};
        return {match.data() - line.data(), static_cast<std::ptrdiff_t>(match.size())};
    }
    RE2 expression;
};

template <bool Jit>
struct Pcre2 {
    static constexpr const char* kName = Jit ? "PCRE2 JIT" : "PCRE2";
    explicit Pcre2(const char* text) {
        int error = 0;
        PCRE2_SIZE at = 0;
        code.reset(pcre2_compile(reinterpret_cast<PCRE2_SPTR>(text), PCRE2_ZERO_TERMINATED, 0,
                                 &error, &at, nullptr));
        if (Jit)
            pcre2_jit_compile(code.get(), PCRE2_JIT_COMPLETE);
        data.reset(pcre2_match_data_create_from_pattern(code.get(), nullptr));
    }
    Found Find(std::string_view line) const {
        const auto* const text = reinterpret_cast<PCRE2_SPTR>(line.data());
        const int count =
            Jit ? pcre2_jit_match(code.get(), text, line.size(), 0, 0, data.get(), nullptr)
                : pcre2_match(code.get(), text, line.size(), 0, 0, data.get(), nullptr);
        if (count < 0)
            return {};
        const PCRE2_SIZE* const bounds = pcre2_get_ovector_pointer(data.get());
        return {static_cast<std::ptrdiff_t>(bounds[0]),
                static_cast<std::ptrdiff_t>(bounds[1] - bounds[0])};
    }
    struct Free {
        void operator()(pcre2_code* code) const { pcre2_code_free(code); }
        void operator()(pcre2_match_data* data) const { pcre2_match_data_free(data); }
    };
    std::unique_ptr<pcre2_code, Free> code;
    std::unique_ptr<pcre2_match_data, Free> data;
};

struct Std {
    static constexpr const char* kName = "std::regex";
    explicit Std(const char* text)
        : expression(text, std::regex::ECMAScript | std::regex::optimize) {}
    Found Find(std::string_view line) const {
        std::cmatch match;
        if (!std::regex_search(line.data(), line.data() + line.size(), match, expression))
            return {};
        return {match.position(0), match.length(0)};
    }
    std::regex expression;
};

constexpr std::array kExpressions = {
    R"(\*.*)",
    R"([A-Za-z_][A-Za-z0-9_]*)",
    R"(\.(subckt|model|param|ends|include|lib))",
    R"([0-9]+(\.[0-9]+)?(meg|k|m|u|n|p|f)?)",
    R"("[^"]*")",
};

/// Expressions that plain backtracking takes long for, or for ever, on 100,000 times `a` and a
/// tail.
struct Hard {
    const char* expression;
    const char* tail;
};
constexpr std::array kHard = {
    Hard{"(a|aa)*b", ""},          Hard{"(a|aa)*b", "b"},   Hard{"(a|aa)*[bc]", ""},
    Hard{"(a|aa)*[bc]", "c"},      Hard{"(a+a+)+[bc]", ""}, Hard{"(a|ab|b)*[cd]", ""},
    Hard{"(a|b|ab)*(aa)*c", "c"},  Hard{"[a-z]*[0-9]", ""}, Hard{".*.*.*[=x]", ""},
    Hard{"(([a-z])+.)+[A-Z]", ""}, Hard{"(.a|a.)+$", ""},
};

/// Nanoseconds a line of one search in each line.
template <class Engine>
double SearchTime(const char* expression, const std::vector<std::string_view>& lines) {
    const Engine engine(expression);
    const double time = bench::TimeOf(kRounds, [&] {
        std::ptrdiff_t sum = 0;
        for (const std::string_view line : lines) {
            const Found found = engine.Find(line);
            sum += found.start * 7 + found.length;
        }
        bench::Keep(sum);
    });
    return time / static_cast<double>(lines.size());
}

template <class Engine>
double CompileTime(const char* expression) {
    return bench::TimeOfShort(kRounds, [expression] {
        const Engine engine(expression);
        bench::Keep(engine);
    });
}

template <class Engine>
void NetlistRows(const std::vector<std::string_view>& lines) {
    double search = 0;
    double compile = 0;
    for (const char* const expression : kExpressions) {
        const double time = SearchTime<Engine>(expression, lines);
        bench::Row(std::string("regexp: search a line, ") + expression, Engine::kName, "ns", time);
        search += time;
        const double compiled = CompileTime<Engine>(expression);
        bench::Row(std::string("regexp: compile ") + expression, Engine::kName, "ns", compiled);
        compile += compiled;
    }
    bench::Row("regexp: search a line for the five, summed", Engine::kName, "ns", search);
    bench::Row("regexp: compile the five, summed", Engine::kName, "ns", compile);
}

/// Ends the program if the engine finds anything else than ours.
template <class Engine>
void Compare(const char* expression, const std::vector<std::string_view>& lines) {
    const Ours ours(expression);
    const Engine engine(expression);
    for (const std::string_view line : lines) {
        const Found a = ours.Find(line);
        const Found b = engine.Find(line);
        if (a.start != b.start || a.length != b.length) {
            std::fprintf(stderr, "%s differs on %s: %td+%td, %td+%td\n", Engine::kName, expression,
                         a.start, a.length, b.start, b.length);
            std::exit(1);
        }
    }
}

template <class Engine>
double HardRow(const Hard& hard, const std::string& subject) {
    const Engine engine(hard.expression);
    const double time = bench::TimeOf(kRounds, [&] { bench::Keep(engine.Find(subject)); });
    const std::string tail = *hard.tail == 0 ? "" : std::string(" and ") + hard.tail;
    bench::Row(std::string("regexp: hard ") + hard.expression + " on 100,000 a" + tail,
               Engine::kName, "us", time / 1000);
    return time;
}

} // namespace

int main() {
    const std::string text = bench::Input("netlist_50k.cir");
    const std::vector<std::string_view> lines = bench::LinesOf(text);
    for (const char* const expression : kExpressions) {
        Compare<Re2>(expression, lines);
        Compare<Pcre2<true>>(expression, lines);
    }
    NetlistRows<Ours>(lines);
    NetlistRows<Re2>(lines);
    NetlistRows<Pcre2<false>>(lines);
    NetlistRows<Pcre2<true>>(lines);
    NetlistRows<Std>(lines);

    double ours = 0;
    double re2 = 0;
    for (const Hard& hard : kHard) {
        const std::string subject = std::string(100000, 'a') + hard.tail;
        Compare<Re2>(hard.expression, {subject});
        ours += HardRow<Ours>(hard, subject);
        re2 += HardRow<Re2>(hard, subject);
    }
    bench::Row("regexp: the hard ones, summed", Ours::kName, "us", ours / 1000);
    bench::Row("regexp: the hard ones, summed", Re2::kName, "us", re2 / 1000);
    return 0;
}
