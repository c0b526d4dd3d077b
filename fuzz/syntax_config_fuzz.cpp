/// Any text as a configuration and, behind the first "%%", as a description file: both read, and
/// lines taken from the same text get spans that lie in order inside them.
#include "sim_edit_line.h"
#include "syntax_config.h"

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

namespace {

void Require(bool law) {
    if (!law)
        std::abort();
}

/// A folder for this process, with the configuration's and the description's path.
struct Files {
    Files() {
        std::string name = (std::filesystem::temp_directory_path() / "syntax_XXXXXX").string();
        folder = mkdtemp(name.data());
        config = folder + "/c.cfg";
        description = folder + "/d.dsc";
    }
    ~Files() { std::filesystem::remove_all(folder); }
    std::string folder, config, description;
};

void CheckColours(const CSyntaxDscr& syntax, std::string_view text) {
    CSimEditLine line(text.substr(0, 200));
    for (std::int32_t carried = -1; carried < 2; ++carried) {
        line.ColourLine(carried, &syntax);
        std::int32_t behind = 0;
        for (const CColorDscr& span : line.Colors()) {
            Require(span.Start >= behind && span.End >= span.Start);
            behind = span.End + 1;
        }
        Require(behind <= std::max(line.Length(), 1));
        Require(line.RangeOut() < static_cast<std::int32_t>(syntax.Ranges().size()));
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Files files;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const std::size_t cut = std::min(text.find("%%"), size);
    const std::string_view description = cut < size ? text.substr(cut + 2) : std::string_view();
    std::ofstream(files.config, std::ios::binary)
        << "[SyntaxColoring]\nNumberOfDscr=2\nDscr0=D\nDscr1=E\n[D]\nDscrFile=d.dsc\n"
        << text.substr(0, cut);
    std::ofstream(files.description, std::ios::binary) << description;
    std::vector<DescriptionReport> reports;
    for (const auto& syntax : ReadSyntaxDscrs(files.config, files.config, &reports)) {
        CheckColours(*syntax, description);
        CheckColours(*syntax, text);
    }
    return 0;
}
