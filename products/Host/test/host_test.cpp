#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "assert_box.h"
#include "assert_log.h"
#include "assertion.h"
#include "backend.h"
#include "headless_desk.h"
#include "host_desktop.h"
#include "messages.h"

namespace {

// --- global managers ---

struct Manager : IGlobalManager {
    Manager(std::string name, std::vector<std::string>& log) : mName(std::move(name)), mLog(log) {}
    ~Manager() override { mLog.push_back(mName); }
    std::string mName;
    std::vector<std::string>& mLog;
};

TEST(Desktop, OwnsGlobalManagersByName) {
    std::vector<std::string> log;
    OptionStore store;
    {
        HostDesktop desktop({}, store);
        auto* const units = new Manager("units", log);
        desktop.SetGlobalManager(u"units", units);
        desktop.SetGlobalManager(u"value", new Manager("old value", log));
        EXPECT_EQ(desktop.GetGlobalManager(u"units"), units);
        EXPECT_EQ(desktop.GetGlobalManager(u"UNITS"), nullptr);
        desktop.SetGlobalManager(u"units", units);
        EXPECT_TRUE(log.empty()) << "the same one again";
        desktop.SetGlobalManager(u"value", new Manager("value", log));
        EXPECT_EQ(log, std::vector<std::string>{"old value"});
        auto* const third = new Manager("third", log);
        desktop.SetGlobalManager(u"third", third);
        desktop.SetGlobalManager(u"other", third);
        desktop.SetGlobalManager(u"third", nullptr);
        EXPECT_EQ(desktop.GetGlobalManager(u"third"), nullptr);
        EXPECT_EQ(desktop.GetGlobalManager(u"other"), third) << "it had two names";
        desktop.SetGlobalManager(u"other", nullptr);
        desktop.SetGlobalManager(u"more units", units);
    }
    EXPECT_EQ(log, (std::vector<std::string>{"old value", "third", "value", "units"}));
}

// --- prompt and messages ---

TEST(Prompt, AnswersByTheBackendOrCancels) {
    // style, answer without a backend, answer of the script
    const std::tuple<int, int, int> rows[] = {
        {IPrompt::kWarning, IPrompt::kAnswerOk, IPrompt::kAnswerOk},
        {IPrompt::kYesNoCancel | IPrompt::kWarning, IPrompt::kAnswerCancel, IPrompt::kAnswerYes}};
    HostPrompt prompt;
    HeadlessDesk desk;
    std::vector<HostPrompt::Shown> told;
    prompt.m_OnShown = [&](const HostPrompt::Shown& shown) { told.push_back(shown); };
    for (const auto& [style, without, scripted] : rows) {
        EXPECT_EQ(prompt.ShowPrompt(u"Sure?", style, 0), without);
        SetBackend(&desk);
        desk.m_MessageAnswers = {scripted};
        EXPECT_EQ(prompt.ShowPrompt(u"Sure?", style, 0), scripted);
        SetBackend(nullptr);
    }
    EXPECT_EQ(prompt.GetShown().size(), 4u);
    EXPECT_EQ(prompt.GetShown()[2], (HostPrompt::Shown{u"Sure?", 51}));
    EXPECT_EQ(told, prompt.GetShown());
    EXPECT_EQ(desk.m_Messages.size(), 2u);
}

TEST(Prompt, ShowsCollectedMessagesOnce) {
    HostPrompt prompt;
    HostMessageSink sink(prompt);
    sink.m_ToText = [](const QuorelMessage&) { return HostPrompt::Shown{u"Loop", 16}; };
    const int stand_in = 0; // a message and a context pass through by address
    sink.PostMessage(reinterpret_cast<const QuorelMessage&>(stand_in));
    prompt.Collect(u"Second", 48);
    EXPECT_EQ(prompt.GetMessageCount(), 2);
    EXPECT_TRUE(prompt.GetShown().empty());
    for (int i = 0; i < 2; ++i)
        prompt.ShowMessages(reinterpret_cast<const QuorelCommandContext&>(stand_in));
    EXPECT_EQ(prompt.GetMessageCount(), 0);
    EXPECT_EQ(prompt.GetShown(), (std::vector<HostPrompt::Shown>{{u"Loop", 16}, {u"Second", 48}}));
}

// --- assertions ---

TEST(Asserts, ArePrintedCountedAndPassedOver) {
    const bool ignored = std::exchange(gIgnoreAllAsserts, false);
    int outer = 0, reached = 0;
    const AssertHandler before = SetAssertHandler([&](const std::string&, unsigned) {
        ++outer;
        return AssertAnswer::kRetry;
    });
    testing::internal::CaptureStderr();
    {
        const AssertLog log;
        for (int i = 0; i < 2; ++i) {
            USE_ASSERT_TEXT(i < 0, "is below zero");
            ++reached;
        }
        EXPECT_EQ(log.GetCount(), 2);
    }
    const std::string printed = testing::internal::GetCapturedStderr();
    EXPECT_NE(printed.find("is below zero"), std::string::npos);
    EXPECT_EQ(reached, 2);
    USE_ASSERT_TEXT(false, "the handler before is back");
    EXPECT_EQ(outer, 1);
    SetAssertHandler(before);
    gIgnoreAllAsserts = ignored;
}

TEST(Asserts, AreAskedInBoxesButNotWhileOneIsOpen) {
    struct Desk : HeadlessDesk {
        int ShowMessage(const AString& text, int style) override {
            USE_ASSERT_TEXT(false, "fails while the box is open");
            return HeadlessDesk::ShowMessage(text, style);
        }
    } desk;
    desk.m_MessageAnswers = {kIdIgnore, kIdYes, kIdNo, kIdRetry};
    const bool ignored = std::exchange(gIgnoreAllAsserts, false);
    testing::internal::CaptureStderr();
    {
        const AssertBox box(desk);
        for (int i = 0; i < 2; ++i)
            USE_ASSERT_TEXT(i < 0, "asked once");
        USE_ASSERT_TEXT(false, "asked too");
    }
    gIgnoreAllAsserts = ignored;
    const std::string printed = testing::internal::GetCapturedStderr();
    EXPECT_NE(printed.find("fails while the box is open"), std::string::npos);
    EXPECT_EQ(printed.find("asked"), std::string::npos);
    ASSERT_EQ(desk.m_Messages.size(), 4u);
    EXPECT_EQ(desk.m_Messages[0].m_Style, 0x2012);
    EXPECT_NE(desk.m_Messages[3].m_Text.find(u"asked too"), AString::npos);
}

} // namespace
