// What searches cost, in steps.
#include "reg_exp.h"

#include <gtest/gtest.h>

namespace {

std::uint64_t StepsOf(const CRegExp& expression, std::string_view subject) {
    const std::uint64_t before = expression.Steps();
    expression.MatchFrom(RegSubject(subject));
    return expression.Steps() - before;
}

/// Searches that take plain backtracking a power of the length, or 2 to its power.
constexpr const char* kHard[] = {
    "(a|aa)*[bc]",       "(a+a+)+[bc]",       "(a|aa)*$b",        "(a|b|ab)*(aa)*[cd]",
    "[a-z]*[0-9]",       "[a-z]+[0-9]",       "x*[a-z]*[0-9]",    ".*.*.*[=x]",
    "(([a-z])+.)+[A-Z]", "(.a|a.)+$",         "((a?a?)a)*[b-z]",  R"(\<(a|aa)*\<)",
    "(a*b|a*c|a*d)",     "a*a*a*a*a*a*[b-d]", "(((a+)a)+a)+[xy]", "((a|b)*c|a)*d$"};

const std::string kAs(5000, 'a');

TEST(RegCost, IsLinearInTheSubject) {
    for (const char* const text : kHard) {
        for (const char* const tail : {"", "b"}) {
            // The first search builds what later ones use.
            const CRegExp expression(text);
            StepsOf(expression, std::string(1000, 'a') + tail);
            const std::uint64_t steps = StepsOf(expression, std::string(10000, 'a') + tail);
            const std::uint64_t more = StepsOf(expression, std::string(80000, 'a') + tail);
            EXPECT_LE(more, 9 * steps + 10000) << text << " before '" << tail << "'";
            EXPECT_LE(more, 80000U * 16) << text << " before '" << tail << "'";
        }
    }
}

TEST(RegCost, AllCallsOnOneSubjectTogetherAreLinear) {
    const std::string line(50000, 'a');
    for (const char* const text : {"[a-z]+[(]", "((a|b)*[cd]|a)", "(a|aa)*[bc]"}) {
        const RegSubject subject(line);
        const CRegExp expression(text);
        for (std::size_t at = 0; at < line.size(); ++at)
            expression.MatchAt(subject, at, 0);
        EXPECT_LE(expression.Steps(), line.size() * 40) << text;

        const CRegExp searching(text);
        std::size_t found = 0;
        for (std::size_t at = 0; at <= line.size(); ++found) {
            const RegSpan span = searching.MatchFrom(subject, at);
            if (!span.Found())
                break;
            at = static_cast<std::size_t>(span.start + span.length) + 1;
        }
        EXPECT_LE(searching.Steps(), line.size() * 40) << text << ", found " << found;
    }
}

/// Matches that reach far are found again and again, and not passed over.
TEST(RegCost, AskingForStartsAloneIsLinear) {
    constexpr std::size_t kLength = 50000;
    const std::string line = std::string(kLength, 'a') + ';';
    const RegSubject subject(line);
    for (const char* const text : {"[a-z]*;", "a+;", "(a|aa)*;", "(a|b)*", "^(a|b)*;"}) {
        const CRegExp expression(text);
        for (std::size_t at = 0; at < kLength; ++at)
            ASSERT_TRUE(expression.MatchesAt(subject, at, at) &&
                        expression.StartFrom(subject, at) == static_cast<std::ptrdiff_t>(at));
        EXPECT_LE(expression.Steps(), kLength * 40) << text;
    }
}

TEST(RegCost, WhatHardSearchesHoldIsGivenBack) {
    const std::size_t before = CRegExp::HolderCount();
    const CRegExp expression("(a|aa)*[bc]");
    const RegSubject subject(kAs);
    EXPECT_FALSE(expression.MatchFrom(subject).Found());
    EXPECT_EQ(CRegExp::HolderCount(), before + 1);
    const std::uint64_t steps = expression.Steps();
    expression.Release();
    EXPECT_EQ(CRegExp::HolderCount(), before);
    EXPECT_EQ(expression.Steps(), steps);
    EXPECT_EQ(expression.MatchAt(RegSubject("aab"), 0, 0), 3);
    EXPECT_EQ(expression.MatchAt(subject, 1, 0), -1);
}

TEST(RegCost, ManyStatesAndDeepNestingStayBounded) {
    // Backward, each of the last 20 characters decides: a million states, made as they are met.
    std::string text;
    for (int i = 0; i < 20; ++i)
        text += "[ab]";
    text += "a[ab]*[cd]";
    std::string subject;
    for (unsigned i = 0, x = 1; i < 20000; ++i, x = x * 1103515245 + 12345)
        subject += (x >> 20) % 2 == 0 ? 'a' : 'b';
    CRegExp expression(text.c_str());
    expression.SetLimits({.waste = 0, .cache = 10000});
    EXPECT_FALSE(expression.MatchFrom(RegSubject(subject)).Found());
    EXPECT_TRUE(expression.Match(subject + "c"));
    EXPECT_EQ(expression.SubStart(0) + expression.SubLength(0), 20001);

    std::string optional;
    for (int i = 0; i < 1500; ++i)
        optional += "a?";
    CRegExp many((optional + std::string(1500, 'a')).c_str());
    EXPECT_TRUE(many.Match(std::string(1500, 'a')));
    EXPECT_EQ(many.SubLength(0), 1500);
    EXPECT_LE(many.Steps(), 1500U * 40000);

    CRegExp nested("((((((((((a)+)+)+)+)+)+)+)+)+");
    EXPECT_FALSE(nested.IsValid());
    CRegExp deep("(((((((((a)+)+)+)+)+)+)+)+)+$");
    EXPECT_TRUE(deep.Match(std::string(20000, 'a')));
    EXPECT_EQ(deep.SubStart(9), 19999);
}

} // namespace
