#include "assert_box.h"

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <utility>

#include "backend.h"
#include "messages.h"

namespace {

/// What a message box gives for each answer; anything else is an abort.
constexpr struct {
    int m_Result;
    AssertAnswer m_Answer;
} kAnswers[] = {{kIdRetry, AssertAnswer::kRetry},
                {kIdIgnore, AssertAnswer::kIgnore},
                {kIdYes, AssertAnswer::kYes},
                {kIdNo, AssertAnswer::kNo}};

AssertAnswer AnswerOf(int result) {
    const auto* const row =
        std::ranges::find(kAnswers, result, [](const auto& r) { return r.m_Result; });
    return row == std::end(kAnswers) ? AssertAnswer::kAbort : row->m_Answer;
}

} // namespace

AssertBox::AssertBox(IBackendDesk& desk) {
    m_Before = SetAssertHandler([this, &desk](const std::string& text, unsigned style) {
        if (std::exchange(m_Asking, true)) {
            std::fprintf(stderr, "%s\n", text.c_str());
            return AssertAnswer::kRetry; // goes on
        }
        const int result =
            desk.ShowMessage(AString::FromMultiByte(AString::kUtf8, text), static_cast<int>(style));
        m_Asking = false;
        return AnswerOf(result);
    });
}

AssertBox::~AssertBox() {
    SetAssertHandler(std::move(m_Before));
}
