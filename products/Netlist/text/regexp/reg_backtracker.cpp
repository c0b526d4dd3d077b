// The matcher keeps the choices that it has left open in an array on the stack, of a fixed size,
// and counts its steps. Most expressions of a colouring never need more: a branch that the next
// byte rules out is no choice, and a loop whose characters can't begin what follows is not tried at
// lesser lengths.
// `"(\\.|[^"\\])*"` and the like so run through without a single choice. When a try needs more than
// its allowance, it gives up, and the caller turns to RegViability, which takes linear time for
// anything.

#include "reg_backtracker.h"

#include <algorithm>
#include <cstring>

bool RegHolds(RegOp op, const RegTail& tail, const char* at) {
    switch (op) {
    case RegOp::Bol:
        return at == tail.begin;
    case RegOp::Eol:
        return at == tail.end;
    case RegOp::WordA:
        return IsRegWordChar(tail.At(at)) &&
               (at == tail.begin || !IsRegWordChar(static_cast<unsigned char>(at[-1])));
    default:
        return !IsRegWordChar(tail.At(at));
    }
}

const char* RegRunEnd(const RegCode& code, const RegNode& loop, const RegTail& tail,
                      const char* at) {
    if (loop.run == RegRun::Members) {
        const ByteSet& set = code.Set(loop.operand);
        while (at < tail.end && set.Has(static_cast<unsigned char>(*at)))
            ++at;
        return at;
    }
    if (loop.run == RegRun::ToEnd)
        return tail.end;
    const auto rest = static_cast<std::size_t>(tail.end - at);
    const void* found = rest == 0 ? nullptr : std::memchr(at, loop.value, rest);
    return found == nullptr ? tail.end : static_cast<const char*>(found);
}

namespace {

/// Passing this many characters of a run counts as one step.
constexpr std::ptrdiff_t kRunStep = 4;

/// A way that was left open (another branch, a shorter run), or a group's former bound to put back.
struct Choice {
    const char* at;
    const char* least;   ///< a run's shortest end, null for a branch
    const char** bound;  ///< the group's bound to put back to `at`, null for a way
    std::uint16_t place; ///< where to go on
};

/// One try. All of it is meant to be inlined into its only user and to live in registers.
struct Attempt {
    const RegCode& code;
    const RegTail& tail;
    const RegGroups& groups;
    Choice* const bottom;
    Choice* const limit;
    Choice* top;
    const char* at;
    std::ptrdiff_t left;
    std::uint16_t place;

    bool LeadsOn(std::uint16_t to, const char* from) const {
        return code.First(to).Has(tail.At(from));
    }

    void Push(const Choice& choice) {
        if (top == limit)
            left = 0; // the next step gives up
        else
            *top++ = choice;
    }

    bool Go(const RegNode& node) {
        place = node.go;
        return true;
    }

    bool Character(const RegNode& node) {
        if (!code.Set(node.operand).Has(tail.At(at)))
            return false;
        ++at;
        return Go(node);
    }

    bool Text(const RegNode& node) {
        const std::size_t length = node.length;
        if (tail.At(at) != node.value || static_cast<std::size_t>(tail.end - at) < length ||
            (length > 1 && std::memcmp(at, code.Text(node), length) != 0))
            return false;
        at += length;
        return Go(node);
    }

    bool Branch(const RegNode& node) {
        if (node.other == kNoWay || !LeadsOn(node.other, at))
            return LeadsOn(node.go, at) && Go(node);
        if (!LeadsOn(node.go, at)) {
            place = node.other;
            return true;
        }
        Push({at, nullptr, nullptr, node.other});
        return Go(node);
    }

    bool Loop(const RegNode& node) {
        const char* const end = RegRunEnd(code, node, tail, at);
        const bool once = node.op == RegOp::Plus;
        if (once && end == at)
            return false;
        const char* const least = once ? at + 1 : at;
        left -= (end - at) / kRunStep;
        at = end;
        place = node.go;
        if (node.possessive || end == least)
            return true;
        Choice shorter{end, least, nullptr, place};
        if (!LeadsOn(place, at) && !Shorten(shorter))
            return false;
        at = shorter.at;
        if (at != least)
            Push(shorter);
        return true;
    }

    /// Takes from a run until what follows can begin.
    bool Shorten(Choice& run) {
        const char* const from = run.at;
        bool found = false;
        while (!found && run.at > run.least) {
            --run.at;
            found = LeadsOn(run.place, run.at);
        }
        left -= (from - run.at) / kRunStep;
        return found;
    }

    bool Bound(const RegNode& node, RegPointers* pointers) {
        if (pointers != nullptr) {
            const char*& bound = (*pointers)[node.value];
            Push({bound, nullptr, &bound, 0});
            bound = at;
        }
        return Go(node);
    }

    bool Step(const RegNode& node) {
        switch (node.op) {
        case RegOp::Any:
        case RegOp::AnyOf:
        case RegOp::AnyBut:
            return Character(node);
        case RegOp::Exactly:
            return Text(node);
        case RegOp::Branch:
            return Branch(node);
        case RegOp::Star:
        case RegOp::Plus:
            return Loop(node);
        case RegOp::Open:
            return Bound(node, groups.starts);
        case RegOp::Close:
            return Bound(node, groups.ends);
        default:
            return RegHolds(node.op, tail, at) && Go(node);
        }
    }

    /// Goes back to the last open choice.
    bool Resume() {
        for (; top != bottom; --top) {
            Choice& choice = top[-1];
            if (choice.bound != nullptr) {
                *choice.bound = choice.at;
            } else if (choice.least == nullptr || Shorten(choice)) {
                at = choice.at;
                place = choice.place;
                top -= at == choice.least || choice.least == nullptr ? 1 : 0;
                return true;
            }
        }
        return false;
    }
};

} // namespace

RegTry TryRegProgram(const RegCode& code, const RegTail& tail, const char* at,
                     const RegAllowance& allowance, const RegGroups& groups) {
    Choice choices[kMaxRegDepth];
    Choice* const limit = choices + std::min(allowance.depth, kMaxRegDepth);
    Attempt attempt{code, tail, groups, choices, limit, choices, at, allowance.steps, code.Entry()};
    for (;;) {
        if (--attempt.left < 0)
            return {RegTry::GaveUp, at, attempt.left};
        const RegNode& node = code.Node(attempt.place);
        if (node.op == RegOp::End)
            return {RegTry::Matched, attempt.at, attempt.left};
        if (!attempt.Step(node) && !attempt.Resume())
            return {RegTry::Failed, at, attempt.left};
    }
}
