/// Any text as a file of options and as a font's text form: what is read of it comes back the same
/// once it was saved. Input: the file's bytes; its lines are fonts too.
#include "editor_options.h"
#include "host_desktop.h"

#include <algorithm>
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

/// A file for this process.
struct File {
    File() {
        std::string name = (std::filesystem::temp_directory_path() / "options_XXXXXX").string();
        folder = mkdtemp(name.data());
        path = folder + "/options.ini";
    }
    ~File() { std::filesystem::remove_all(folder); }
    std::string folder, path;
};

void CheckFont(const LogFont& font) {
    Require(font.m_FaceName.find(u',') == AString::npos);
    const LogFont again = ParseTextFont(FormatTextFont(font));
    Require(font.m_FaceName.empty() || again == font);
}

/// What was loaded from one store is loaded again from another in which it was saved.
void CheckOptions(OptionStore& store) {
    HostDesktop desktop({}, store);
    LoadOptions(desktop);
    const EditorOptions options = CurrentOptions();
    CheckFont(options.TextFont);
    OptionStore other;
    HostDesktop saved({}, other);
    SaveTextFont(saved, options.TextFont);
    SaveBookmarkColor(saved, options.BMColor);
    LoadOptions(saved);
    Require(options.TextFont.m_FaceName.empty() || CurrentOptions().TextFont == options.TextFont);
    Require(CurrentOptions().BMColor == options.BMColor);
    Require(CurrentOptions().NumberOfUndos == 1000);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const File file;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    std::ofstream(file.path, std::ios::binary) << text;
    OptionStore store;
    Require(static_cast<bool>(store.Open(file.path)));
    CheckOptions(store);
    for (std::size_t at = 0; at < size;) {
        const std::size_t end = std::min(text.find('\n', at), size);
        CheckFont(ParseTextFont(AString(std::string(text.substr(at, end - at)))));
        at = end + 1;
    }
    return 0;
}
