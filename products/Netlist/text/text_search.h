/// TextSearch: finds a text inside lines, with or without regard to case.
#pragma once

#include "quorel_export.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// A text to look for, prepared once for any number of lines of the 8-bit code page. Cost: linear
/// in the line, whatever both hold; nothing is copied or allocated while searching.
class QUOREL_API TextSearch {
public:
    static constexpr std::size_t kNone = std::string_view::npos;

    /// An empty text is nowhere.
    TextSearch(std::string_view wanted, bool keepCase);

    std::size_t Size() const { return m_Wanted.size(); }
    /// Where the text stands first in a line, kNone when it doesn't.
    std::size_t Find(std::string_view line) const;
    /// Where it stands last.
    std::size_t FindLast(std::string_view line) const;

private:
    char Fold(char character) const { return m_Folding[static_cast<unsigned char>(character)]; }
    bool IsCandidate(const char* place) const;
    unsigned CandidatesAt(const char* place) const;
    std::size_t NextCandidate(std::string_view line, std::size_t at, std::size_t count) const;
    std::size_t CountAlike(const char* place) const;
    std::size_t Steadily(std::string_view line, std::size_t from, bool last) const;

    const char* m_Folding; ///< of 256 bytes
    std::string m_Wanted;  ///< folded
    /// The bytes with which the text may begin and end: at most two fold to the same.
    char m_Begins[2] = {};
    char m_Ends[2] = {};
    std::vector<std::size_t> m_Borders; ///< of each beginning of a long text
};
