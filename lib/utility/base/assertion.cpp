#include "assertion.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>
#include <utility>

namespace {

/// Longest file name and condition that a report shows.
constexpr std::size_t kMaxShown = 400;

bool IgnoredByEnvironment() {
    const char* value = std::getenv("USE_ASSERT");
    if (!value)
        return true;
    const std::string_view given = value, on = "TRUE"; // in either case, whatever the locale
    const auto equal = [](char letter, char other) { return letter == (other & ~0x20); };
    return !std::equal(on.begin(), on.end(), given.begin(), given.end(), equal);
}

/// Not a plain static: a library may assert before or after this one's statics live.
AssertHandler& CurrentHandler() {
    static auto& handler = *new AssertHandler;
    return handler;
}

AssertAnswer Ask(const std::string& text, unsigned style) {
    // A copy, since the handler may replace itself while it runs.
    if (const AssertHandler handler = CurrentHandler())
        return handler(text, style);
    std::fprintf(stderr, "%s\n", text.c_str());
    return AssertAnswer::kRetry;
}

const char* Shown(const char* text, const char* replacement) {
    return std::strlen(text) > kMaxShown ? replacement : text;
}

std::string FailureText(const char* file, int line, const char* condition) {
    std::string text = "*** ASSERTION FAILURE ***\nAssertion '";
    text += Shown(condition, "(expression too long)");
    text += "' failed\n File '";
    text += Shown(file, "(file name too long)");
    text += "', Line# ";
    text += std::to_string(line);
    text += "\n\nAbort - abort, Retry - debug, Ignore - continue";
    return text;
}

[[noreturn]] void Abort() {
    gIgnoreAllAsserts = true;
    std::exit(1);
}

/// Asks a question that offers Yes and No.
bool AskYesNo(const char* text, unsigned style) {
    switch (Ask(text, style)) {
    case AssertAnswer::kYes:
        return true;
    case AssertAnswer::kNo:
        return false;
    default:
        Abort();
    }
}

} // namespace

// Constant until this library's start-up has run: sites in earlier code stay silent.
bool gIgnoreAllAsserts = true;

namespace {
[[maybe_unused]] const bool sEnvironmentRead = (gIgnoreAllAsserts = IgnoredByEnvironment(), true);
}

AssertHandler SetAssertHandler(AssertHandler handler) {
    return std::exchange(CurrentHandler(), std::move(handler));
}

void AssertFailed(const char* file, int line, const char* condition, bool* siteSilenced) {
    const AssertAnswer answer = Ask(FailureText(file, line, condition), kAssertFailedStyle);
    if (answer == AssertAnswer::kRetry)
        return; // the place for a breakpoint
    if (answer != AssertAnswer::kIgnore)
        Abort();
    if (!AskYesNo("Ignore THIS Assert in the future?", kAssertSilenceSiteStyle))
        return;
    if (AskYesNo("*** Ignore ALL Asserts in the future? ***", kAssertSilenceAllStyle))
        gIgnoreAllAsserts = true;
    else
        *siteSilenced = true;
}
