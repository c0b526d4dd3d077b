/// The command line of the desktop: [FILE[:LINE[:COLUMN]]...]
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "ieditor_inspector.h"

/// A file to open, and where its caret goes.
struct FileTarget {
    std::string m_Path;           ///< absolute
    TextPosition m_Place{-1, -1}; ///< a row of -1: where it is anyway
    bool operator==(const FileTarget&) const = default;
};

struct CommandLine {
    std::vector<FileTarget> m_Files;
    bool m_Help = false;
    bool m_Version = false;
    bool m_NewWindow = false; ///< even if another window would take the files
    std::string m_Error;      ///< a sentence; empty when all is well
};

/// Reads one argument. LINE and COLUMN count from 1; a file that exists under the whole name is
/// meant as it stands, numbers and all.
/// @param directory the one that a relative path starts from
FileTarget ParseFileTarget(std::string_view argument, const std::string& directory,
                           const std::function<bool(const std::string&)>& exists);

/// Reads all arguments behind the program's name. What stands behind "--" is a file.
CommandLine ParseCommandLine(const std::vector<std::string>& arguments,
                             const std::string& directory,
                             const std::function<bool(const std::string&)>& exists);

/// What "--help" prints.
extern const std::string_view kUsage;
