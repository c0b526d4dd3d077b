#include "description_reader.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <set>

namespace {

constexpr std::string_view kEmptyExpression = "empty expression";

constexpr std::string_view kCount = "NumberOfDscr"; ///< the key of a group's count

/// Missing entries of a group that are reported one by one at the most.
constexpr std::int64_t kMostMissing = 100;

std::string Numbered(std::string_view stem, std::int32_t number) {
    return std::string(stem) + std::to_string(number);
}

/// A section's name as all its spellings have it.
std::string WithoutCase(std::string_view name) {
    std::string lower(name);
    for (char& c : lower)
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    return lower;
}

class DescriptionReader {
public:
    DescriptionReader(const sys::ProfileFile& file, KeyNumbers& numbers, CSyntaxDscr& syntax,
                      EntryAllowance& allowance, std::vector<DroppedExpression>* dropped)
        : m_file(file), m_numbers(numbers), m_syntax(syntax), m_allowance(allowance),
          m_dropped(dropped) {}

    void Read() {
        m_caseSensitivity = m_file.GetInt("General", "CaseSensitivity", 1);
        ReadGroups("Ranges", "NumberOfRangeGroups", "RangeGroup", {"Open", "Close"},
                   &DescriptionReader::ReadRange);
        ReadGroups("Tokens", "NumberOfTokenGroups", "TokenGroup",
                   {"TokenDscr", "StartSep", "StopSep"}, &DescriptionReader::ReadToken);
        if (m_unlisted != 0)
            m_dropped->push_back({{}, {}, {}, std::to_string(m_unlisted) + " more faults"});
    }

private:
    using EntryReader = void (DescriptionReader::*)(std::int32_t);
    using Stems = std::initializer_list<std::string_view>;

    /// Where an expression comes from.
    struct Source {
        std::string key;
        std::string_view text;
    };
    /// An expression, or why there is none.
    struct Compiled {
        std::optional<CRegExp> expression;
        std::string_view fault;
    };
    struct Shared {
        std::shared_ptr<const CRegExp> expression;
        std::string_view fault;
    };

    void ReadGroups(std::string_view section, std::string_view countKey, std::string_view stem,
                    Stems stems, EntryReader read) {
        const std::int32_t count = m_file.GetInt(section, countKey);
        for (const std::int32_t d : m_numbers.Below(count, section, stem)) {
            const Source source{Numbered(stem, d), m_file.GetString(section, Numbered(stem, d))};
            m_group = section; // that is where a group too many stands
            if (!Take(source))
                return;
            m_group = source.text;
            m_color = static_cast<std::uint32_t>(m_file.GetInt(m_group, "Color"));
            m_ignoreCase = m_file.GetInt(m_group, "CaseSensitivity", m_caseSensitivity) == 0;
            m_shared.clear();
            if (!ReadGroup(stems, read))
                return;
        }
    }

    /// Reads the entries of the group at hand for which one of the keys is there, and a bounded
    /// number of the others, which are faults and the rest of which is counted. @return false when
    /// the allowance is used up
    bool ReadGroup(Stems stems, EntryReader read) {
        const std::int32_t count = m_file.GetInt(m_group, kCount);
        const std::string_view stem = *stems.begin();
        const std::vector<std::int32_t> numbers = Numbers(stems, count);
        const std::int64_t missing = std::int64_t{std::max(count, 0)} - std::ssize(numbers);
        std::int64_t listed = std::min(missing, kMostMissing);
        const std::int64_t unlisted = missing - listed;
        std::int32_t d = 0;
        for (auto next = numbers.begin(); next != numbers.end() || listed > 0; ++d) {
            if (next == numbers.end() || (*next != d && listed > 0))
                --listed;
            else
                d = *next++;
            if (!Take(Entry(stem, d)))
                return false;
            (this->*read)(d);
        }
        if (unlisted > 0)
            Drop({std::string(kCount), m_file.GetString(m_group, kCount)},
                 std::to_string(unlisted) + " more entries are empty");
        return true;
    }

    /// The numbers below the group's count for which one of the keys is there.
    std::vector<std::int32_t> Numbers(Stems stems, std::int32_t count) {
        std::vector<std::int32_t> numbers;
        for (const std::string_view stem : stems) {
            const auto more = m_numbers.Below(count, m_group, stem);
            numbers.insert(numbers.end(), more.begin(), more.end());
        }
        std::sort(numbers.begin(), numbers.end());
        numbers.erase(std::unique(numbers.begin(), numbers.end()), numbers.end());
        return numbers;
    }

    void ReadRange(std::int32_t d) {
        auto open = CompileOwn(Entry("Open", d));
        auto close = CompileOwn(Entry("Close", d));
        if (open && close)
            m_syntax.AddRange(std::make_unique<CColorRange>(
                CColorRange{std::move(*open), std::move(*close), m_color}));
    }

    void ReadToken(std::int32_t d) {
        auto token = CompileOwn(Entry("TokenDscr", d));
        auto start = CompileShared(EntryOr("StartSep", d, "StdStartSep"));
        auto stop = CompileShared(EntryOr("StopSep", d, "StdStopSep"));
        if (token && start && stop)
            m_syntax.AddToken(std::make_unique<CColorToken>(
                CColorToken{std::move(*token), std::move(start), std::move(stop), m_color}));
    }

    Source Entry(std::string_view stem, std::int32_t number) const {
        std::string key = Numbered(stem, number);
        const std::string_view text = m_file.GetString(m_group, key);
        return {std::move(key), text};
    }

    Source EntryOr(std::string_view stem, std::int32_t number, std::string_view standard) const {
        if (m_file.HasKey(m_group, Numbered(stem, number)))
            return Entry(stem, number);
        return {std::string(standard), m_file.GetString(m_group, standard)};
    }

    Compiled Compile(std::string_view text) {
        if (text.empty() || text.front() == '\0') // an expression ends at its first NUL
            return {std::nullopt, kEmptyExpression};
        m_allowance.TakeText(text.size());
        CRegExp expression(text, m_ignoreCase);
        if (!expression.IsValid())
            return {std::nullopt, expression.LastError()};
        return {std::move(expression), {}};
    }

    std::optional<CRegExp> CompileOwn(const Source& source) {
        Compiled compiled = Compile(source.text);
        if (!compiled.expression)
            Drop(source, compiled.fault);
        return std::move(compiled.expression);
    }

    /// The same, compiled once for each text in a group.
    std::shared_ptr<const CRegExp> CompileShared(const Source& source) {
        const auto [known, isNew] = m_shared.try_emplace(source.text);
        Shared& shared = known->second;
        if (isNew) {
            Compiled compiled = Compile(source.text);
            shared.fault = compiled.fault;
            if (compiled.expression)
                shared.expression =
                    std::make_shared<const CRegExp>(std::move(*compiled.expression));
        }
        if (!shared.expression)
            Drop(source, shared.fault);
        return shared.expression;
    }

    bool Take(const Source& source) {
        const bool taken = m_allowance.Take();
        if (!taken)
            Drop(source, kTooManyEntries);
        return taken;
    }

    /// Reports a key of the group at hand, once.
    void Drop(const Source& source, std::string_view reason) {
        if (m_dropped == nullptr)
            return;
        if (m_allowance.faults == 0) {
            ++m_unlisted;
            return;
        }
        if (!m_known.emplace(WithoutCase(m_group), source.key).second)
            return;
        --m_allowance.faults;
        m_dropped->push_back(
            {std::string(m_group), source.key, std::string(source.text), std::string(reason)});
    }

    const sys::ProfileFile& m_file;
    KeyNumbers& m_numbers;
    CSyntaxDscr& m_syntax;
    EntryAllowance& m_allowance;
    std::vector<DroppedExpression>* m_dropped;
    std::set<std::pair<std::string, std::string>> m_known; ///< sections and keys in m_dropped
    std::size_t m_unlisted = 0; ///< faults that came when no reports were left
    std::int32_t m_caseSensitivity = 1;
    // The group at hand.
    std::string_view m_group;
    std::uint32_t m_color = 0;
    bool m_ignoreCase = false;
    std::map<std::string_view, Shared> m_shared;
};

} // namespace

EntrySize::EntrySize(const sys::ProfileFile& file) {
    for (std::size_t section = 0; section < file.GetSectionCount(); ++section) {
        entries += file.GetKeyCount(section);
        for (std::size_t key = 0; key < file.GetKeyCount(section); ++key)
            text += static_cast<std::ptrdiff_t>(file.GetValue(section, key).size());
    }
}

void EntryAllowance::Allow(const EntrySize& size) {
    const std::size_t entries = std::min(size.entries, m_entriesToAllow);
    m_entriesToAllow -= entries;
    m_entries += entries;
    const std::ptrdiff_t text = std::min(size.text, m_textToAllow);
    m_textToAllow -= text;
    m_text += text;
}

bool EntryAllowance::Take() {
    if (m_entries == 0 || m_text <= 0)
        return false;
    --m_entries;
    return true;
}

std::span<const std::int32_t> KeyNumbers::Below(std::int32_t count, std::string_view section,
                                                std::string_view stem) {
    const auto [known, isNew] = m_known.try_emplace({WithoutCase(section), std::string(stem)});
    std::vector<std::int32_t>& numbers = known->second;
    if (isNew)
        numbers = m_file.GetNumberedKeys(section, stem, std::numeric_limits<std::int32_t>::max());
    return {numbers.begin(), std::lower_bound(numbers.begin(), numbers.end(), count)};
}

void ReadDescription(const sys::ProfileFile& file, KeyNumbers& numbers, CSyntaxDscr& syntax,
                     EntryAllowance& allowance, std::vector<DroppedExpression>* dropped) {
    DescriptionReader(file, numbers, syntax, allowance, dropped).Read();
}
