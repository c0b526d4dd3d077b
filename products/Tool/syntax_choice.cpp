#include "syntax_choice.h"

#include <algorithm>
#include <charconv>
#include <optional>

#include "atomic_file.h"
#include "data_files.h"
#include "editor_syntax.h"
#include "file_io.h"
#include "file_path.h"
#include "input_file.h"
#include "output.h"
#include "profile_file.h"
#include "temporary_file.h"

namespace {

constexpr const char* kNoConfig = "none";
constexpr EditorSyntax kNamedSyntaxes[] = {kNetlistSyntax, kJavaScriptSyntax, kVBScriptSyntax};

const EditorSyntax* FindNamed(std::string_view name) {
    const auto* const found = std::ranges::find(kNamedSyntaxes, name, &EditorSyntax::m_Name);
    return found == std::end(kNamedSyntaxes) ? nullptr : found;
}

/// The index that a text stands for; -1 when it is none.
int ParseIndex(const std::string& text) {
    int index = -1;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, index);
    return error == std::errc() && stop == end && index >= 0 ? index : -1;
}

/// What is wrong with an argument of --syntax; empty for nothing.
std::string CheckSyntax(const std::string& text) {
    if (FindNamed(text) || ParseIndex(text) >= 0)
        return {};
    return "'" + text + "' is none of netlist, javascript, vbscript and no index";
}

/// The first description that has the file's extension; -1 for none.
int IndexOfExtension(const SyntaxDscrs& dscrs, const std::string& file) {
    const AString extension = FilePath(AString::FromMultiByte(AString::kUtf8, file)).GetExtension();
    const auto has = [&](const auto& dscr) {
        return std::ranges::any_of(dscr->FileExts, [&](const AString& known) {
            return !known.empty() && known.CompareNoCase(extension) == 0;
        });
    };
    const auto found = std::ranges::find_if(dscrs, has);
    return found == dscrs.end() ? -1 : static_cast<int>(found - dscrs.begin());
}

/// Standard input as a file, as long as this lives.
class InputCopy {
public:
    explicit InputCopy(const std::string& bytes) {
        Require(sys::CreateTemporaryFile(sys::TemporaryDirectory(), "quorel", m_Path));
        if (const auto written = sys::WriteFileAtomically(m_Path, bytes); !written) {
            static_cast<void>(sys::DeleteFile(m_Path));
            Require(written);
        }
    }
    InputCopy(const InputCopy&) = delete;
    InputCopy& operator=(const InputCopy&) = delete;
    ~InputCopy() { static_cast<void>(sys::DeleteFile(m_Path)); }

    const std::string& GetPath() const { return m_Path; }

private:
    std::string m_Path;
};

} // namespace

void AddConfigOption(CLI::App& command, SyntaxOptions& options) {
    command
        .add_option("--config", options.m_Config,
                    "The syntax configuration; none: no colours. Default: the one installed")
        ->check(&RefuseEmptyPath)
        ->type_name("FILE");
}

void AddSyntaxOption(CLI::App& command, SyntaxOptions& options) {
    command
        .add_option("--syntax", options.m_Syntax,
                    "The description: netlist, javascript, vbscript or its index. Default: by the "
                    "file's extension, else netlist")
        ->type_name("NAME")
        ->check(&CheckSyntax);
}

std::string GetDefaultConfig() {
    const std::string file = FindConfigFile();
    if (file.empty())
        throw ToolError(ExitCode::file, "cannot find NetlistEditor.cfg near the program; "
                                        "QUOREL_DATA_DIR may name the folder whose config/ "
                                        "holds it");
    return file;
}

SyntaxConfig LoadSyntaxConfig(const std::string& given) {
    return given == kNoConfig ? SyntaxConfig() : ReadSyntaxConfig(given);
}

SyntaxConfig ReadSyntaxConfig(const std::string& given) {
    SyntaxConfig config;
    std::optional<InputCopy> copy;
    if (given == kStandardInput)
        copy.emplace(ReadInput(given));
    config.m_Path = given.empty() ? GetDefaultConfig() : given;
    const std::string& opened = copy ? copy->GetPath() : config.m_Path;
    sys::ProfileFile probe; // the reader takes what it can't open as empty
    Require(probe.Open(opened));
    config.m_Dscrs = ReadSyntaxDscrs(opened, config.m_Path, &config.m_Reports);
    return config;
}

int ChooseSyntax(const SyntaxConfig& config, const std::string& syntax, const std::string& file) {
    const std::size_t count = config.m_Dscrs.size();
    if (syntax.empty())
        if (const int index = IndexOfExtension(config.m_Dscrs, file); index >= 0)
            return index;
    if (const EditorSyntax* named = syntax.empty() ? &kNetlistSyntax : FindNamed(syntax))
        return named->IndexAmong(count);
    const int index = ParseIndex(syntax);
    if (static_cast<std::size_t>(index) < count)
        return index;
    if (config.m_Path.empty())
        return -1;
    throw ToolError(ExitCode::no, config.m_Path + " has " + Count(count, "description") +
                                      ", none of index " + std::to_string(index));
}
