#include "assert_log.h"

#include <cstdio>
#include <utility>

AssertLog::AssertLog() {
    m_Before = SetAssertHandler([this](const std::string& text, unsigned) {
        ++m_Count;
        std::fprintf(stderr, "%s\n", text.c_str());
        return AssertAnswer::kRetry; // goes on
    });
}

AssertLog::~AssertLog() {
    SetAssertHandler(std::move(m_Before));
}
