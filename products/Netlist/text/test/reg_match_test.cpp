// Matching: cases by name, and the twin over all small expressions and subjects.
#include "reg_exp.h"
#include "reg_twin.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <random>

namespace {

using namespace std::string_literals;

/// The last match as `start+length`, with each group that took part as ` n:start+length`.
std::string Shown(const CRegExp& expression) {
    std::string text;
    for (int i = 0; i <= CRegExp::kMaxGroup; ++i) {
        if (expression.SubStart(i) >= 0)
            text += (i == 0 ? "" : " " + std::to_string(i) + ":") +
                    std::to_string(expression.SubStart(i)) + "+" +
                    std::to_string(expression.SubLength(i));
    }
    return text;
}

/// What the twin's letters don't say, and what shows the rules to a reader.
TEST(RegMatch, Cases) {
    const struct {
        const char* expression;
        std::string subject;
        const char* shown;
        bool ignoreCase = false;
    } rows[] = {
        {"(a|ab)(c|bcd)(d*)", "abcd", "0+4 1:0+1 2:1+3 3:4+0"},
        {"((a)|(b))*", "ab", "0+2 1:1+1 2:0+1 3:1+1"},
        {"(((((((((a)))))))))", "xa", "1+1 1:1+1 2:1+1 3:1+1 4:1+1 5:1+1 6:1+1 7:1+1 8:1+1 9:1+1"},
        {R"(\<a)", "_a", ""},
        {R"(\<)", "\xE4z", "1+0"},
        {R"(a\tb)", "atb", "0+3"},
        {"a{2}", "aa{2}", "1+4"},
        {".+", "a\nb", "0+3"},
        {"[^a]", "a\xFF", "1+1"},
        {"\xE4+", "a\xE4\xE4", "1+2"},
        {"abc", "xABC", "1+3", true},
        {"[a-c]+", "ABCabc", "3+3", true},
        {R"(\a)", "[Aa]", "0+4", true},
        {"b", "a\0b"s, ""},
        {"a$", "a\0b"s, "0+1"},
        {R"("(\\.|[^"\\])*")", R"(x "a\"b" c")", "2+6 1:6+1"},
        {R"([0-9]+(\.[0-9]+)?(meg|k|m)?)", "r 4.7meg", "2+6 1:3+2 2:5+3"}};
    for (const auto& row : rows) {
        CRegExp expression(row.expression, row.ignoreCase);
        const bool matched = expression.Match(row.subject);
        EXPECT_EQ(Shown(expression), row.shown) << row.expression << " on " << row.subject;
        EXPECT_EQ(matched, *row.shown != 0);
    }
}

TEST(RegMatch, TheLastMatchIsKept) {
    CRegExp expression("(a)(b)?");
    EXPECT_EQ(expression.GroupCount(), -1);
    EXPECT_TRUE(expression.Match("xab"));
    EXPECT_EQ(expression.GroupCount(), 2);
    EXPECT_EQ(expression.SubStart(-1), 1);
    EXPECT_EQ(expression.SubStart(10), -1);
    EXPECT_EQ(expression.SubLength(10), 0);
    EXPECT_TRUE(expression.MatchFrom(RegSubject("a")).Found());
    EXPECT_EQ(Shown(expression), "1+2 1:1+1 2:2+1") << "a search without groups leaves it alone";
    CRegExp moved = std::move(expression);
    EXPECT_EQ(Shown(moved), "1+2 1:1+1 2:2+1");
    EXPECT_TRUE(moved.Match("a"));
    EXPECT_EQ(moved.GroupCount(), 1);
    EXPECT_FALSE(moved.Match("x"));
    EXPECT_EQ(moved.GroupCount(), -1);
    EXPECT_FALSE(moved.Match(nullptr));
    EXPECT_EQ(moved.LastErrorCode(), 1);
    EXPECT_TRUE(CRegExp("").Match(std::string_view()));
}

/// Where a text of its own begins is part of the question.
TEST(RegMatch, AMatchCanBeAskedForBehindABegin) {
    const RegSubject subject("ab ab");
    const std::tuple<const char*, std::size_t, std::size_t, int> rows[] = {
        {R"(\<b)", 1, 1, 1}, {R"(\<b)", 1, 0, -1}, {"^ab", 3, 3, 2}, {"^ab", 3, 0, -1},
        {"", 5, 5, 0},       {"", 6, 5, -1},       {"", 1, 2, -1}};
    for (const auto& [expression, at, begin, length] : rows)
        EXPECT_EQ(CRegExp(expression).MatchAt(subject, at, begin), length)
            << expression << at << begin;
    EXPECT_FALSE(CRegExp("").MatchFrom(subject, 6).Found());
}

/// An expression with the matcher's ways to find its matches, beside the twin.
class Compared {
public:
    explicit Compared(const std::string& text, bool ignoreCase = false)
        : m_text(text), m_twin(ignoreCase ? RegTwin::Folded(text) : text) {
        for (const RegLimits& limits :
             {RegLimits{},
              // The thorough way at once, with stretches of two blocks and of one.
              RegLimits{.waste = 0, .block = 2, .cache = 0, .notes = 16},
              RegLimits{.waste = 3, .depth = 2, .block = 1, .cache = 300, .notes = 0}}) {
            m_ours.emplace_back(text.c_str(), ignoreCase);
            m_ours.back().SetLimits(limits);
        }
        EXPECT_EQ(m_ours[0].LastErrorCode(), m_twin.Error()) << text;
        m_matchesAnyEnd = m_ours[0].Facts().matchesAnyEnd;
    }

    bool IsValid() const { return m_ours[0].IsValid() && m_twin.Error() == 0; }

    void Check(const std::string& subject) {
        const RegTwin::Result expected = m_twin.Match(subject);
        ASSERT_TRUE(expected.start >= 0 || !m_matchesAnyEnd) << m_text << " on " << subject;
        std::string shown;
        for (std::size_t i = 0; expected.start >= 0 && i < 10; ++i) {
            const int start = i == 0 ? expected.start : expected.starts[i];
            const int end = i == 0 ? start + expected.length : expected.ends[i];
            if (start >= 0)
                shown += (i == 0 ? "" : " " + std::to_string(i) + ":") + std::to_string(start) +
                         "+" + std::to_string(end - start);
        }
        for (CRegExp& ours : m_ours) {
            ours.Match(subject);
            ASSERT_EQ(Shown(ours), shown) << m_text << " on '" << subject << "'";
            CheckTails(ours, subject, expected);
        }
    }

private:
    void CheckTails(const CRegExp& ours, const std::string& subject,
                    const RegTwin::Result& expected) {
        const RegSubject whole(subject);
        const std::size_t last =
            expected.start < 0 ? subject.size() : static_cast<std::size_t>(expected.start);
        for (std::size_t at = 0; at <= last; ++at) {
            const int length = static_cast<int>(at) == expected.start ? expected.length : -1;
            ASSERT_EQ(ours.MatchAt(whole, at, 0), length)
                << m_text << " at " << at << " of '" << subject << "'";
            ASSERT_EQ(ours.MatchesAt(whole, at, 0), length >= 0) << m_text << " at " << at;
        }
        const std::size_t from = subject.size() / 2;
        const RegTwin::Result tail = m_twin.Match(std::string_view(subject).substr(from));
        const RegSpan span = ours.MatchFrom(whole, from);
        const int start = tail.start < 0 ? -1 : tail.start + static_cast<int>(from);
        ASSERT_EQ(span.start, start) << m_text << " from " << from << " of '" << subject << "'";
        ASSERT_EQ(span.length, tail.length) << m_text << " in '" << subject << "'";
        ASSERT_EQ(ours.StartFrom(whole, from), start) << m_text << " in '" << subject << "'";
    }

    std::string m_text;
    RegTwin m_twin;
    std::vector<CRegExp> m_ours;
    bool m_matchesAnyEnd = false;
};

/// All texts of at most `length` of these pieces, but for those that begin with another one behind
/// which nothing matters.
std::vector<std::string> AllTexts(const std::vector<std::string>& pieces, int length,
                                  bool (*isFinal)(const std::string&)) {
    std::vector<std::string> texts{""};
    for (std::size_t begin = 0; length > 0; --length) {
        const std::size_t end = texts.size();
        for (; begin < end; ++begin) {
            for (const std::string& piece : pieces)
                if (!isFinal(texts[begin]))
                    texts.push_back(texts[begin] + piece);
        }
    }
    return texts;
}

/// Whether an expression has an error that no text behind it can mend, or says of "b" what another
/// one says of "a".
bool IsLost(const std::string& text) {
    const int error = RegTwin(text).Error();
    const std::size_t letter = text.find_first_of("ab");
    return (error != 0 && error != 13) || (letter != std::string::npos && text[letter] == 'b');
}

const std::vector<std::string> kPieces = {"a", "b", "(", ")", "|",    "*",   "+",
                                          "?", ".", "^", "$", "[ab]", "\\<", "\\>"};

#ifdef NDEBUG
constexpr int kTwinLength = 5;
#else
constexpr int kTwinLength = 4;
#endif

/// QUOREL_TWIN_LENGTH sets the number of pieces: each more takes ten times as long.
TEST(RegMatch, AgreesWithTheTwinOnAllSmallExpressions) {
    const char* const asked = std::getenv("QUOREL_TWIN_LENGTH");
    const auto any = [](const std::string&) { return false; };
    const std::vector<std::string> subjects = AllTexts({"a", "b", " "}, 3, any);
    const std::vector<std::string> few = AllTexts({"a", "b", " "}, 2, any);
    const std::vector<std::string> texts =
        AllTexts(kPieces, asked != nullptr ? std::atoi(asked) : kTwinLength, &IsLost);
    for (std::size_t i = 0; i < texts.size(); ++i) {
        Compared compared(texts[i]);
        for (const std::string& subject : i < texts.size() / 8 ? subjects : few) {
            if (compared.IsValid())
                compared.Check(subject);
            if (HasFatalFailure() || HasNonfatalFailure())
                return;
        }
    }
}

/// A text of pieces with its parentheses in pairs.
std::string RandomText(std::mt19937& random, std::vector<std::string> pieces) {
    for (const char* const more : {"(", "(", ")", "|", "a", "b", "a", "[^a]", "ab", "[]Ab]", "\\["})
        pieces.emplace_back(more);
    std::string text;
    int open = 0;
    for (auto length = 4 + random() % 12; length > 0; --length) {
        const std::string& piece = pieces[random() % pieces.size()];
        if (piece == ")" && open == 0)
            continue;
        open += piece == "(" ? 1 : piece == ")" ? -1 : 0;
        text += piece;
    }
    return text + std::string(static_cast<std::size_t>(open), ')');
}

TEST(RegMatch, AgreesWithTheTwinOnRandomExpressions) {
    std::mt19937 random(20240607);
    int valid = 0;
    for (int i = 0; i < 6000; ++i) {
        Compared compared(RandomText(random, kPieces), i % 4 == 0);
        valid += compared.IsValid() ? 1 : 0;
        for (int k = 0; compared.IsValid() && k < 12; ++k) {
            std::string subject;
            while (random() % 8 != 0)
                subject += i % 4 == 0 ? "aABb [A"[random() % 7] : "aabb _"[random() % 6];
            compared.Check(subject);
            if (HasFatalFailure() || HasNonfatalFailure())
                return;
        }
    }
    EXPECT_GT(valid, 2000);
}

} // namespace
