#include "syntax_config.h"

#include "file_io.h"
#include "profile_file.h"
#include "temporary_file.h"

#include <algorithm>
#include <map>
#include <optional>
#include <utility>

namespace {

constexpr std::string_view kEmptyExpression = "empty expression";
constexpr std::string_view kTooMany = "too many entries";
constexpr std::string_view kTooManyDescriptions = "too many descriptions";
constexpr std::string_view kTemporaryPrefix = "cfg";

/// Descriptions of one configuration at the most.
constexpr std::size_t kMostDescriptions = 1000;
/// Missing entries of a group that are reported at the most.
constexpr std::size_t kMostMissing = 100;
/// Entries that all groups of a file may have together beyond the file's own keys. Groups that name
/// each other's sections, or one section many times, end here.
constexpr std::size_t kRepeatedEntries = 10'000;

std::string Numbered(std::string_view stem, std::int32_t number) {
    return std::string(stem) + std::to_string(number);
}

/// The values of a counted list of keys, for the numbers that are there.
std::vector<AString> ReadList(const sys::ProfileFile& file, std::string_view section,
                              std::string_view countKey, std::string_view stem) {
    std::vector<AString> values;
    for (const std::int32_t d : file.GetNumberedKeys(section, stem, file.GetInt(section, countKey)))
        values.emplace_back(std::string(file.GetString(section, Numbered(stem, d))));
    return values;
}

/// The path of a description file: unchanged if it is absolute or holds a colon, else behind the
/// directory of the configuration. Both slashes separate.
std::string DescriptionPath(std::string_view value, const std::string& sourcePath) {
    const auto toSlash = [](std::string path) {
        std::replace(path.begin(), path.end(), '\\', '/');
        return path;
    };
    const bool isRooted = value.front() == '/' || value.front() == '\\';
    if (value.size() >= 2 && (isRooted || value.find(':') != std::string_view::npos))
        return toSlash(std::string(value));
    const std::string source = toSlash(sourcePath);
    return source.substr(0, source.rfind('/') + 1) + toSlash(std::string(value));
}

/// Opens a file through a temporary copy, which is gone again when this returns; the file itself
/// where no copy can be made.
sys::Status OpenByCopy(sys::ProfileFile& file, const std::string& path) {
    const std::string directory = sys::TemporaryDirectory();
    std::string copy;
    if (directory.empty() || !sys::CreateTemporaryFile(directory, kTemporaryPrefix, copy))
        return file.Open(path);
    sys::Status status = sys::CopyFile(path, copy);
    status = file.Open(status ? copy : path);
    static_cast<void>(sys::DeleteFile(copy));
    return status;
}

/// Reads one description file into a description.
class DescriptionReader {
public:
    DescriptionReader(const sys::ProfileFile& file, CSyntaxDscr& syntax,
                      std::vector<DroppedExpression>* dropped)
        : m_file(file), m_syntax(syntax), m_dropped(dropped),
          m_entriesLeft(KeyCount(file) + kRepeatedEntries) {}

    void Read() {
        m_caseSensitivity = m_file.GetInt("General", "CaseSensitivity", 1);
        ForEachGroup("Ranges", "NumberOfRangeGroups", "RangeGroup", &DescriptionReader::ReadRanges);
        ForEachGroup("Tokens", "NumberOfTokenGroups", "TokenGroup", &DescriptionReader::ReadTokens);
    }

private:
    using GroupReader = void (DescriptionReader::*)();

    /// Where an expression comes from.
    struct Source {
        std::string key;
        std::string_view text;
    };

    static std::size_t KeyCount(const sys::ProfileFile& file) {
        std::size_t count = 0;
        for (std::size_t section = 0; section < file.GetSectionCount(); ++section)
            count += file.GetKeyCount(section);
        return count;
    }

    void ForEachGroup(std::string_view section, std::string_view countKey, std::string_view stem,
                      GroupReader read) {
        const std::int32_t count = m_file.GetInt(section, countKey);
        for (const std::int32_t d : m_file.GetNumberedKeys(section, stem, count)) {
            if (m_entriesLeft == 0)
                return;
            --m_entriesLeft;
            m_group = m_file.GetString(section, Numbered(stem, d));
            m_color = static_cast<std::uint32_t>(m_file.GetInt(m_group, "Color"));
            m_ignoreCase = m_file.GetInt(m_group, "CaseSensitivity", m_caseSensitivity) == 0;
            m_shared.clear();
            (this->*read)();
        }
    }

    /// The numbers below the group's count for which one of the keys is there. The first number
    /// for which none is there is reported as an empty expression of the first key.
    std::vector<std::int32_t> Numbers(std::initializer_list<std::string_view> stems) {
        const std::int32_t count = m_file.GetInt(m_group, "NumberOfDscr");
        std::vector<std::int32_t> numbers;
        for (const std::string_view stem : stems) {
            const auto more = m_file.GetNumberedKeys(m_group, stem, count);
            numbers.insert(numbers.end(), more.begin(), more.end());
        }
        std::sort(numbers.begin(), numbers.end());
        numbers.erase(std::unique(numbers.begin(), numbers.end()), numbers.end());
        ReportMissing(*stems.begin(), numbers, count);
        if (numbers.size() > m_entriesLeft) {
            Drop({Numbered(*stems.begin(), numbers[m_entriesLeft]), {}}, kTooMany);
            numbers.resize(m_entriesLeft);
        }
        m_entriesLeft -= numbers.size();
        return numbers;
    }

    /// Entries of which no key is there, up to the first behind all that are, and a bounded number.
    void ReportMissing(std::string_view stem, const std::vector<std::int32_t>& numbers,
                       std::int32_t count) {
        std::int32_t next = 0;
        std::size_t left = kMostMissing;
        const auto report = [&](std::int32_t behind) {
            for (; next < behind && left > 0; ++next, --left)
                Drop({Numbered(stem, next), {}}, kEmptyExpression);
        };
        for (const std::int32_t number : numbers) {
            report(number);
            next = number + 1;
        }
        if (next < count)
            report(next + 1);
    }

    void ReadRanges() {
        for (const std::int32_t d : Numbers({"Open", "Close"})) {
            auto open = Compile(Entry("Open", d));
            auto close = Compile(Entry("Close", d));
            if (open && close)
                m_syntax.AddRange(std::make_unique<CColorRange>(
                    CColorRange{std::move(*open), std::move(*close), m_color}));
        }
    }

    void ReadTokens() {
        for (const std::int32_t d : Numbers({"TokenDscr", "StartSep", "StopSep"})) {
            auto token = Compile(Entry("TokenDscr", d));
            auto start = CompileShared(EntryOr("StartSep", d, "StdStartSep"));
            auto stop = CompileShared(EntryOr("StopSep", d, "StdStopSep"));
            if (token && start && stop)
                m_syntax.AddToken(std::make_unique<CColorToken>(
                    CColorToken{std::move(*token), std::move(start), std::move(stop), m_color}));
        }
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

    std::optional<CRegExp> Compile(const Source& source) {
        if (source.text.empty()) {
            Drop(source, kEmptyExpression);
            return std::nullopt;
        }
        CRegExp expression(source.text, m_ignoreCase);
        if (expression.IsValid())
            return expression;
        Drop(source, expression.LastError());
        return std::nullopt;
    }

    /// The same, once for each text in a group.
    std::shared_ptr<const CRegExp> CompileShared(const Source& source) {
        if (const auto known = m_shared.find(source.text); known != m_shared.end())
            return known->second;
        auto expression = Compile(source);
        const auto shared =
            expression ? std::make_shared<const CRegExp>(std::move(*expression)) : nullptr;
        if (expression || source.key.starts_with("Std")) // a default at fault is one fault
            m_shared.emplace(source.text, shared);
        return shared;
    }

    void Drop(const Source& source, std::string_view reason) {
        if (m_dropped != nullptr)
            m_dropped->push_back(
                {std::string(m_group), source.key, std::string(source.text), std::string(reason)});
    }

    const sys::ProfileFile& m_file;
    CSyntaxDscr& m_syntax;
    std::vector<DroppedExpression>* m_dropped;
    std::size_t m_entriesLeft;
    std::int32_t m_caseSensitivity = 1;
    // The group at hand.
    std::string_view m_group;
    std::uint32_t m_color = 0;
    bool m_ignoreCase = false;
    std::map<std::string_view, std::shared_ptr<const CRegExp>> m_shared;
};

} // namespace

SyntaxDscrs ReadSyntaxDscrs(const std::string& configPath, const std::string& sourcePath,
                            std::vector<DescriptionReport>* reports) {
    SyntaxDscrs result;
    sys::ProfileFile config;
    if (!config.Open(configPath))
        return result;
    std::map<std::string, sys::ProfileFile> files; // one that several name is opened once
    constexpr std::string_view kList = "SyntaxColoring";
    const std::int32_t count = config.GetInt(kList, "NumberOfDscr");
    for (const std::int32_t d : config.GetNumberedKeys(kList, "Dscr", count)) {
        const std::string_view section = config.GetString(kList, Numbered("Dscr", d));
        if (section.empty())
            continue;
        if (result.size() == kMostDescriptions) {
            if (reports)
                reports->back().dropped.push_back({std::string(kList), Numbered("Dscr", d),
                                                   std::string(section),
                                                   std::string(kTooManyDescriptions)});
            break;
        }
        auto syntax = std::make_unique<CSyntaxDscr>();
        DescriptionReport report;
        report.section = section;
        syntax->FileExts = ReadList(config, section, "NumberOfFileExt", "FileExt");
        syntax->Languages = ReadList(config, section, "NumberOfLanguages", "Language");
        if (const auto value = config.GetString(section, "DscrFile"); !value.empty()) {
            report.file = DescriptionPath(value, sourcePath);
            const auto [file, isNew] = files.try_emplace(report.file);
            if (isNew)
                static_cast<void>(OpenByCopy(file->second, report.file));
            report.unreadable = !file->second.HasFile();
            DescriptionReader(file->second, *syntax, reports ? &report.dropped : nullptr).Read();
        }
        result.push_back(std::move(syntax));
        if (reports)
            reports->push_back(std::move(report));
    }
    return result;
}
