/// Marks on numbered things that all go at once.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

/// Clear takes all marks away in constant time but for each 4,294,967,295th time, when it goes
/// through the things. Round, an unsigned integer, counts the times.
template <class Round = std::uint32_t>
class VisitMarks {
public:
    explicit VisitMarks(std::size_t things = 0) : m_rounds(things) {}

    void Clear() {
        if (++m_round != 0)
            return;
        std::fill(m_rounds.begin(), m_rounds.end(), Round{0});
        m_round = 1;
    }

    /// Marks a thing, whose number must be below their count. @return whether it had no mark
    bool Mark(std::size_t thing) {
        const bool isNew = m_rounds[thing] != m_round;
        m_rounds[thing] = m_round;
        return isNew;
    }

private:
    std::vector<Round> m_rounds; ///< by thing, the round in which it was marked
    Round m_round = 1;
};
