/// Assertions: checks of the program's own assumptions, off unless the environment asks for them.
#pragma once

#include <functional>
#include <string>

#include "quorel_export.h"

/// True while no site may report. At the start true unless the environment variable "USE_ASSERT"
/// equals "TRUE" in any case of letters; the variable is read once. May become true once more by
/// an answer of the user; nothing sets it back.
extern QUOREL_API bool gIgnoreAllAsserts;

/// An answer to one of the three questions. A value that a question doesn't offer counts as kAbort.
enum class AssertAnswer { kAbort, kRetry, kIgnore, kYes, kNo };

/// Style values of the three questions: which buttons they offer, and their icon.
inline constexpr unsigned kAssertFailedStyle = 0x2012;      ///< Abort, Retry, Ignore; stop
inline constexpr unsigned kAssertSilenceSiteStyle = 0x2024; ///< Yes, No; question
inline constexpr unsigned kAssertSilenceAllStyle = 0x2034;  ///< Yes, No; warning

/// Puts one question, a text and a style, to whoever can answer it.
using AssertHandler = std::function<AssertAnswer(const std::string& text, unsigned style)>;

/// Replaces the handler of all questions in the process and returns the one before. An empty
/// handler stands for the default one, which prints the text to standard error and answers kRetry.
QUOREL_API AssertHandler SetAssertHandler(AssertHandler handler);

/// Reports the failed assertion of a site and acts on the answer: goes on, silences the site (sets
/// `*siteSilenced`), silences all (sets gIgnoreAllAsserts), or ends the process with exit code 1.
QUOREL_API void AssertFailed(const char* file, int line, const char* condition, bool* siteSilenced);

/// Checks `condition`, and reports it as `text` when it doesn't hold. The code behind it goes on in
/// either case. The condition isn't evaluated while the site is silent, so that it must not have
/// effects.
#define USE_ASSERT_TEXT(condition, text)                                                           \
    do {                                                                                           \
        static bool sSiteSilenced = false;                                                         \
        if (!sSiteSilenced && !gIgnoreAllAsserts && !(condition))                                  \
            AssertFailed(__FILE__, __LINE__, text, &sSiteSilenced);                                \
    } while (false)

/// Checks `condition`, and reports it as it is written.
#define USE_ASSERT(condition) USE_ASSERT_TEXT(condition, #condition)
