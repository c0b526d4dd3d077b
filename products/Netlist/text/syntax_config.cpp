#include "syntax_config.h"

#include "description_reader.h"
#include "file_io.h"
#include "profile_file.h"
#include "temporary_file.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <utility>

namespace {

constexpr std::string_view kTooManyDescriptions = "too many descriptions";
constexpr std::string_view kTemporaryPrefix = "cfg";

/// Descriptions of one configuration at the most.
constexpr std::size_t kMostDescriptions = 1000;

/// The values of a counted list of keys. A missing key gives an empty text, among the first so many
/// numbers as the section has keys: a larger count costs no more than the file.
std::vector<AString> ReadList(const sys::ProfileFile& file, KeyNumbers& numbers,
                              const std::string& section, std::string_view countKey,
                              std::string_view stem, EntryAllowance& allowance,
                              std::vector<DroppedExpression>& dropped) {
    std::vector<AString> values;
    const std::int32_t count = file.GetInt(section, countKey);
    const auto read = [&](std::int32_t d) {
        const std::string key = std::string(stem) + std::to_string(d);
        const std::string value(file.GetString(section, key));
        if (!allowance.Take()) {
            dropped.push_back({section, key, value, std::string(kTooManyEntries)});
            return false;
        }
        values.emplace_back(value);
        return true;
    };
    const auto keys = static_cast<std::int32_t>(file.CountKeys(section));
    const std::int32_t inRow = std::min(count, keys);
    for (std::int32_t d = 0; d < inRow; ++d)
        if (!read(d))
            return values;
    for (const std::int32_t d : numbers.Below(count, section, stem))
        if (d >= inRow && !read(d))
            return values;
    return values;
}

/// The path of a description file: unchanged if it is absolute or holds a colon, else behind the
/// directory of the configuration. Both slashes separate in the value.
std::string DescriptionPath(std::string_view value, const std::string& sourcePath) {
    std::string path(value);
    std::replace(path.begin(), path.end(), '\\', '/');
    const bool isRooted = path.front() == '/';
    if (path.size() >= 2 && (isRooted || path.find(':') != std::string::npos))
        return path;
    return sourcePath.substr(0, sourcePath.rfind('/') + 1) + path;
}

/// A description file with what is known of it.
struct DescriptionFile {
    sys::ProfileFile profile;
    KeyNumbers numbers{profile};
    EntrySize size;
};

/// One name for all paths of a file; a path that leads to none is its own.
std::string NameOfFile(const std::string& path) {
    if (path.find('\0') != path.npos)
        return path; // no file's; the system would end it there
    std::error_code error;
    const std::filesystem::path name = std::filesystem::canonical(path, error);
    return error ? path : name.string();
}

/// Opens a file through a temporary copy, which is gone again when this returns; the file itself
/// where no copy can be made.
sys::Status OpenByCopy(sys::ProfileFile& file, const std::string& path) {
    const std::string directory = sys::TemporaryDirectory();
    std::string copy;
    if (directory.empty() || !sys::CreateTemporaryFile(directory, kTemporaryPrefix, copy))
        return file.Open(path);
    sys::Status status = sys::CopyFile(path, copy, sys::ProfileFile::kMaxSize);
    status = file.Open(status ? copy : path);
    static_cast<void>(sys::DeleteFile(copy));
    return status;
}

} // namespace

SyntaxDscrs ReadSyntaxDscrs(const std::string& configPath, const std::string& sourcePath,
                            std::vector<DescriptionReport>* reports) {
    SyntaxDscrs result;
    sys::ProfileFile config;
    if (!config.Open(configPath))
        return result;
    EntryAllowance allowance;
    allowance.Allow(EntrySize(config));
    KeyNumbers numbers(config);
    std::map<std::string, DescriptionFile> files; // one that several name is opened once
    const std::string list = "SyntaxColoring";
    const std::int32_t count = config.GetInt(list, "NumberOfDscr");
    for (const std::int32_t d : numbers.Below(count, list, "Dscr")) {
        const std::string key = "Dscr" + std::to_string(d);
        const std::string section(config.GetString(list, key));
        if (section.empty())
            continue;
        if (result.size() == kMostDescriptions) {
            if (reports)
                reports->back().dropped.push_back(
                    {list, key, section, std::string(kTooManyDescriptions)});
            break;
        }
        auto syntax = std::make_unique<CSyntaxDscr>();
        DescriptionReport report;
        report.section = section;
        syntax->FileExts = ReadList(config, numbers, section, "NumberOfFileExt", "FileExt",
                                    allowance, report.dropped);
        syntax->Languages = ReadList(config, numbers, section, "NumberOfLanguages", "Language",
                                     allowance, report.dropped);
        if (const auto value = config.GetString(section, "DscrFile"); !value.empty()) {
            report.file = DescriptionPath(value, sourcePath);
            const auto [known, isNew] = files.try_emplace(NameOfFile(report.file));
            DescriptionFile& file = known->second;
            if (isNew) {
                static_cast<void>(OpenByCopy(file.profile, report.file));
                file.size = EntrySize(file.profile);
            }
            allowance.Allow(file.size);
            report.unreadable = !file.profile.HasFile();
            ReadDescription(file.profile, file.numbers, *syntax, allowance,
                            reports ? &report.dropped : nullptr);
        }
        result.push_back(std::move(syntax));
        if (reports)
            reports->push_back(std::move(report));
    }
    return result;
}
