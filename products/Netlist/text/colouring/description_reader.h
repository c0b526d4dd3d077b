/// The reading of one description file.
#pragma once

#include "profile_file.h"
#include "syntax_config.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// What a file holds.
struct EntrySize {
    EntrySize() = default;
    /// Costs the file's keys.
    explicit EntrySize(const sys::ProfileFile& file);

    std::size_t entries = 0;
    std::ptrdiff_t text = 0; ///< bytes of the values
};

/// What the descriptions of one configuration may take together, however often they name each
/// other's sections: what the file of each holds, and somewhat more.
class EntryAllowance {
public:
    /// Reports of dropped expressions that are left.
    std::size_t faults = 10'000;

    /// Allows for the entries that a file holds, for a description that names it.
    void Allow(const EntrySize& size);

    /// Takes an entry. @return false when there is none left
    bool Take();
    /// Takes the text of an expression that is to be compiled. The one that goes too far is the
    /// last.
    void TakeText(std::size_t bytes) { m_text -= static_cast<std::ptrdiff_t>(bytes); }

private:
    static constexpr std::size_t kRepeatedEntries = 10'000;
    static constexpr std::size_t kMostEntries = 50'000;
    static constexpr std::ptrdiff_t kRepeatedText = 256 << 10;
    static constexpr std::ptrdiff_t kMostText = 1 << 20;

    std::size_t m_entries = kRepeatedEntries;
    std::size_t m_entriesToAllow = kMostEntries - kRepeatedEntries;
    std::ptrdiff_t m_text = kRepeatedText;
    std::ptrdiff_t m_textToAllow = kMostText - kRepeatedText;
};

/// The numbers of the numbered keys of one file, looked for once in each section.
class KeyNumbers {
public:
    /// Borrows the file, which must stay as it is.
    explicit KeyNumbers(const sys::ProfileFile& file) : m_file(file) {}

    /// As sys::ProfileFile::GetNumberedKeys. What it gives stays until the object goes.
    std::span<const std::int32_t> Below(std::int32_t count, std::string_view section,
                                        std::string_view stem);

private:
    const sys::ProfileFile& m_file;
    std::map<std::pair<std::string, std::string>, std::vector<std::int32_t>> m_known;
};

inline constexpr std::string_view kTooManyEntries = "too many entries";

/// Reads a description file's ranges and tokens into a description. What the allowance has no room
/// for is left out.
/// @param numbers those of the file
/// @param dropped null, or what gets each expression that keeps an entry out, once, in the order of
///        reading
void ReadDescription(const sys::ProfileFile& file, KeyNumbers& numbers, CSyntaxDscr& syntax,
                     EntryAllowance& allowance, std::vector<DroppedExpression>* dropped);
