#include "assertion.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <vector>

namespace {

using enum AssertAnswer;

/// Assertions on, and every question answered from a script.
class AssertionTest : public testing::Test {
protected:
    AssertionTest() {
        gIgnoreAllAsserts = false;
        SetAssertHandler([this](const std::string& text, unsigned style) {
            mTexts.push_back(text);
            mStyles.push_back(style);
            return mStyles.size() > mScript.size() ? kRetry : mScript[mStyles.size() - 1];
        });
    }
    ~AssertionTest() override {
        gIgnoreAllAsserts = true;
        SetAssertHandler({});
    }

    std::vector<AssertAnswer> mScript;
    std::vector<std::string> mTexts;
    std::vector<unsigned> mStyles;
};

TEST_F(AssertionTest, ReportsWhatAndWhere) {
    const std::string line = std::to_string(__LINE__ + 1);
    USE_ASSERT(mScript.size() > 1);
    EXPECT_EQ(mTexts.back(), "*** ASSERTION FAILURE ***\nAssertion 'mScript.size() > 1' failed\n "
                             "File '" __FILE__ "', Line# " +
                                 line + "\n\nAbort - abort, Retry - debug, Ignore - continue");
    const std::string fits(400, 'x'), tooLong(401, 'x');
    AssertFailed(fits.c_str(), 1, tooLong.c_str(), nullptr);
    EXPECT_NE(mTexts.back().find("'(expression too long)' failed\n File '" + fits), mTexts[0].npos);
    AssertFailed(tooLong.c_str(), 1, fits.c_str(), nullptr);
    EXPECT_NE(mTexts.back().find(fits + "' failed\n File '(file name too long)'"), mTexts[0].npos);
}

TEST_F(AssertionTest, ActsOnTheAnswers) {
    const std::tuple<std::vector<AssertAnswer>, std::vector<unsigned>, bool, bool> rows[] = {
        {{kRetry}, {0x2012}, true, true},
        {{kIgnore, kNo}, {0x2012, 0x2024}, true, true},
        {{kIgnore, kYes, kNo}, {0x2012, 0x2024, 0x2034}, false, true},
        {{kIgnore, kYes, kYes}, {0x2012, 0x2024, 0x2034}, false, false}};
    for (const auto& [answers, styles, siteAsksAgain, othersAsk] : rows) {
        mScript = answers;
        mStyles.clear();
        gIgnoreAllAsserts = false;
        bool evaluated = false, silenced = false;
        AssertFailed("file", 1, "condition", &silenced);
        EXPECT_EQ(mStyles, styles);
        EXPECT_EQ(!silenced && !gIgnoreAllAsserts, siteAsksAgain);
        USE_ASSERT((evaluated = true));
        EXPECT_EQ(evaluated, othersAsk);
    }
    mScript = {kIgnore, kYes, kNo};
    mStyles.clear();
    gIgnoreAllAsserts = false;
    for (int i = 0; i < 3; ++i)
        USE_ASSERT(mScript.empty());
    EXPECT_EQ(mStyles.size(), 3u) << "one site, silenced after the first time";
}

TEST_F(AssertionTest, AnyOtherAnswerEndsTheProcess) {
    const std::vector<AssertAnswer> scripts[] = {
        {kAbort}, {kYes}, {kIgnore, kAbort}, {kIgnore, kRetry}, {kIgnore, kYes, kIgnore}};
    for (const auto& script : scripts) {
        mScript = script;
        EXPECT_EXIT(AssertFailed("", 1, "", nullptr), testing::ExitedWithCode(1), "");
    }
}

TEST_F(AssertionTest, WithoutAHandlerPrintsAndGoesOn) {
    SetAssertHandler({});
    testing::internal::CaptureStderr();
    USE_ASSERT(mScript.size() > 1);
    EXPECT_TRUE(testing::internal::GetCapturedStderr().starts_with("*** ASSERTION FAILURE ***\n"));
}

TEST(AssertionEnvironmentTest, OnlyTrueSwitchesThemOn) {
    testing::FLAGS_gtest_death_test_style = "threadsafe"; // which starts the program anew
    const std::pair<const char*, int> rows[] = {{"", 0},    {"1", 0},    {"TRUE ", 0},
                                                {"TRU", 0}, {"TRUE", 1}, {"tRuE", 1}};
    for (const auto& [value, isOn] : rows) {
        setenv("USE_ASSERT", value, 1);
        EXPECT_EXIT(std::exit(gIgnoreAllAsserts ? 0 : 1), testing::ExitedWithCode(isOn), "");
    }
    unsetenv("USE_ASSERT");
    EXPECT_EXIT(std::exit(gIgnoreAllAsserts ? 0 : 1), testing::ExitedWithCode(0), "");
}

} // namespace
