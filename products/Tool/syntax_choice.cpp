#include "syntax_choice.h"

#include <algorithm>
#include <charconv>

#include "data_files.h"
#include "file_path.h"
#include "profile_file.h"

namespace {

constexpr const char* kNoConfig = "none";
constexpr const char* kConfigFile = "config/NetlistEditor.cfg";

/// The descriptions that the editors take, by their fixed index.
struct NamedSyntax {
    const char* m_Name;
    int m_Index;
};
constexpr NamedSyntax kNamedSyntaxes[] = {{"netlist", 2}, {"javascript", 3}, {"vbscript", 4}};

int IndexOfName(const std::string& syntax) {
    for (const NamedSyntax& named : kNamedSyntaxes)
        if (syntax == named.m_Name)
            return named.m_Index;
    int index = -1;
    const char* const end = syntax.data() + syntax.size();
    const auto [stop, error] = std::from_chars(syntax.data(), end, index);
    if (error != std::errc() || stop != end || index < 0)
        throw UsageError("--syntax: '" + syntax +
                         "' is none of netlist, javascript, vbscript and no index");
    return index;
}

int IndexOfExtension(const SyntaxConfig& config, const std::string& file) {
    const AString extension = FilePath(AString::FromMultiByte(AString::kUtf8, file)).GetExtension();
    const auto has = [&](const auto& dscr) {
        return std::ranges::any_of(dscr->FileExts, [&](const AString& known) {
            return !known.empty() && known.CompareNoCase(extension) == 0;
        });
    };
    const auto found = std::ranges::find_if(config.m_Dscrs, has);
    if (found != config.m_Dscrs.end())
        return static_cast<int>(found - config.m_Dscrs.begin());
    return kNamedSyntaxes[0].m_Index;
}

} // namespace

void AddConfigOption(CLI::App& command, SyntaxOptions& options) {
    command
        .add_option("--config", options.m_Config,
                    "The syntax configuration; none: no colours. Default: the one installed")
        ->type_name("FILE");
}

void AddSyntaxOption(CLI::App& command, SyntaxOptions& options) {
    command
        .add_option("--syntax", options.m_Syntax,
                    "The description: netlist, javascript, vbscript or its index. Default: by the "
                    "file's extension, else netlist")
        ->type_name("NAME");
}

std::string GetDefaultConfig() {
    const std::string folder = FindDataDirectory();
    if (folder.empty())
        throw ToolError(ExitCode::file, std::string("cannot find ") + kConfigFile +
                                            " near the program; QUOREL_DATA_DIR may name the "
                                            "folder that holds it");
    return folder + kConfigFile;
}

SyntaxConfig LoadSyntaxConfig(const std::string& given) {
    SyntaxConfig config;
    if (given == kNoConfig)
        return config;
    config.m_Path = given.empty() ? GetDefaultConfig() : given;
    sys::ProfileFile probe; // the reader takes what it can't open as empty
    Require(probe.Open(config.m_Path));
    config.m_Dscrs = ReadSyntaxDscrs(config.m_Path, config.m_Path, &config.m_Reports);
    return config;
}

int ChooseSyntax(const SyntaxConfig& config, const std::string& syntax, const std::string& file) {
    const int index = syntax.empty() ? IndexOfExtension(config, file) : IndexOfName(syntax);
    const int count = static_cast<int>(config.m_Dscrs.size());
    if (index < count)
        return index;
    if (!syntax.empty() && !config.m_Path.empty())
        throw ToolError(ExitCode::no, config.m_Path + " has " + std::to_string(count) +
                                          " descriptions, none of index " + std::to_string(index));
    return -1;
}
