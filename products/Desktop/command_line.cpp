#include "command_line.h"

#include <charconv>

#include "directory.h"

const std::string_view kUsage = "Usage: quorel-desktop [OPTION] [FILE[:LINE[:COLUMN]]...]\n"
                                "Edits netlists, scripts and other texts in a window.\n"
                                "\n"
                                "Files go to a window that is open already, if there is one.\n"
                                "\n"
                                "  -n, --new-window  open another window all the same\n"
                                "  -h, --help        print this and end\n"
                                "  -v, --version     print the version and end\n"
                                "\n"
                                "Example: quorel-desktop amplifier.cir:12 sweep.vbs\n";

namespace {

constexpr struct {
    std::string_view m_Short;
    std::string_view m_Long;
    bool CommandLine::*m_Flag;
} kOptions[] = {
    {"-n", "--new-window", &CommandLine::m_NewWindow},
    {"-h", "--help", &CommandLine::m_Help},
    {"-v", "--version", &CommandLine::m_Version},
};

/// Takes ":NUMBER" off the end. @return 0, and nothing taken, when there is none
int TakeNumber(std::string_view& text) {
    const std::size_t colon = text.rfind(':');
    if (colon == text.npos || colon == 0)
        return 0;
    const char* const begin = text.data() + colon + 1;
    const char* const end = text.data() + text.size();
    int number = 0;
    const auto [behind, error] = std::from_chars(begin, end, number);
    if (error != std::errc() || behind != end || number < 1)
        return 0;
    text = text.substr(0, colon);
    return number;
}

bool SetOption(CommandLine& line, std::string_view argument) {
    for (const auto& option : kOptions)
        if (argument == option.m_Short || argument == option.m_Long)
            return line.*option.m_Flag = true;
    return false;
}

} // namespace

FileTarget ParseFileTarget(std::string_view argument, const std::string& directory,
                           const std::function<bool(const std::string&)>& exists) {
    const auto absolute = [&](std::string_view path) {
        return path.starts_with('/') ? std::string(path)
                                     : sys::WithClosingSlash(directory) + std::string(path);
    };
    FileTarget target{absolute(argument)};
    std::string_view path = argument;
    const int last = exists(target.m_Path) ? 0 : TakeNumber(path);
    if (last == 0)
        return target;
    target.m_Path = absolute(path);
    const int first = exists(target.m_Path) ? 0 : TakeNumber(path);
    target.m_Path = absolute(path);
    target.m_Place = first > 0 ? TextPosition{first - 1, last - 1} : TextPosition{last - 1, 0};
    return target;
}

CommandLine ParseCommandLine(const std::vector<std::string>& arguments,
                             const std::string& directory,
                             const std::function<bool(const std::string&)>& exists) {
    CommandLine line;
    bool isFile = false;
    for (const std::string& argument : arguments) {
        if (!isFile && argument == "--")
            isFile = true;
        else if (isFile || !argument.starts_with('-'))
            line.m_Files.push_back(ParseFileTarget(argument, directory, exists));
        else if (!SetOption(line, argument) && line.m_Error.empty())
            line.m_Error = "unknown option '" + argument + "'";
    }
    return line;
}
