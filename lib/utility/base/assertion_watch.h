/// AssertionWatch: failed assertions as a program or a test of it notes them.
#pragma once

#include <string>
#include <utility>

#include "assertion.h"

/// While it lives, assertions are on, whatever the environment says, and each that fails is noted
/// and passed over. At its end the handler and the switch are again what they were. One at a time.
class AssertionWatch {
public:
    AssertionWatch()
        : mBefore(SetAssertHandler([this](const std::string& text, unsigned) {
              ++mCount;
              mText += text;
              return AssertAnswer::kRetry;
          })),
          mWereIgnored(std::exchange(gIgnoreAllAsserts, false)) {}
    AssertionWatch(const AssertionWatch&) = delete;
    AssertionWatch& operator=(const AssertionWatch&) = delete;
    ~AssertionWatch() {
        SetAssertHandler(std::move(mBefore));
        gIgnoreAllAsserts = mWereIgnored;
    }

    /// How many have failed since the last call.
    int Take() { return std::exchange(mCount, 0); }
    /// The reports of all, one behind the other.
    const std::string& GetText() const { return mText; }

private:
    int mCount = 0;
    std::string mText;
    AssertHandler mBefore;
    bool mWereIgnored;
};
