#include "syntax_config.h"

#include "description_reader.h"
#include "file_io.h"
#include "profile_file.h"
#include "temporary_file.h"

#include <algorithm>
#include <map>
#include <utility>

namespace {

constexpr std::string_view kTooManyDescriptions = "too many descriptions";
constexpr std::string_view kTemporaryPrefix = "cfg";

/// Descriptions of one configuration at the most.
constexpr std::size_t kMostDescriptions = 1000;

/// The values of a counted list of keys, for the numbers that are there.
std::vector<AString> ReadList(const sys::ProfileFile& file, const std::string& section,
                              std::string_view countKey, std::string_view stem,
                              EntryAllowance& allowance, std::vector<DroppedExpression>& dropped) {
    std::vector<AString> values;
    const std::int32_t count = file.GetInt(section, countKey);
    for (const std::int32_t d : file.GetNumberedKeys(section, stem, count)) {
        const std::string key = std::string(stem) + std::to_string(d);
        const std::string value(file.GetString(section, key));
        if (!allowance.Take()) {
            dropped.push_back({section, key, value, std::string(kTooManyEntries)});
            break;
        }
        values.emplace_back(value);
    }
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

} // namespace

SyntaxDscrs ReadSyntaxDscrs(const std::string& configPath, const std::string& sourcePath,
                            std::vector<DescriptionReport>* reports) {
    SyntaxDscrs result;
    sys::ProfileFile config;
    if (!config.Open(configPath))
        return result;
    EntryAllowance allowance;
    allowance.Allow(config);
    std::map<std::string, sys::ProfileFile> files; // one that several name is opened once
    const std::string list = "SyntaxColoring";
    const std::int32_t count = config.GetInt(list, "NumberOfDscr");
    for (const std::int32_t d : config.GetNumberedKeys(list, "Dscr", count)) {
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
        syntax->FileExts =
            ReadList(config, section, "NumberOfFileExt", "FileExt", allowance, report.dropped);
        syntax->Languages =
            ReadList(config, section, "NumberOfLanguages", "Language", allowance, report.dropped);
        if (const auto value = config.GetString(section, "DscrFile"); !value.empty()) {
            report.file = DescriptionPath(value, sourcePath);
            const auto [file, isNew] = files.try_emplace(report.file);
            if (isNew) {
                static_cast<void>(OpenByCopy(file->second, report.file));
                allowance.Allow(file->second);
            }
            report.unreadable = !file->second.HasFile();
            ReadDescription(file->second, *syntax, allowance, reports ? &report.dropped : nullptr);
        }
        result.push_back(std::move(syntax));
        if (reports)
            reports->push_back(std::move(report));
    }
    return result;
}
