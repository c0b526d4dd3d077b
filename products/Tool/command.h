/// What the commands of quorel are made with, and their table.
///
/// A new command is one source file and one row:
///
/// 1. `<name>_command.cpp` defines `void AddName(CLI::App& parent, Choice& choice)`. It makes the
///    command by AddCommand, gives it its options and says by OnRun what runs; options live in a
///    plain struct. See `show_command.cpp`. The function is declared below.
/// 2. `command_table.cpp` lists it in kCommands.
///
/// A command with subcommands (`syntax`) makes itself by AddGroup and its subcommands under it.
/// What runs returns an ExitCode, throws ToolError, or throws UsageError when options that parsed
/// don't go together. Output goes through Output, JSON through json_text.h, lines of JSON through
/// batch.h.
#pragma once

#include <functional>
#include <memory>
#include <span>
#include <string>

#include <CLI/CLI.hpp>

#include "tool_error.h"

/// What the command line asks for.
struct Choice {
    std::function<ExitCode()> m_Run;
};

/// The command line is wrong, though each option by itself is right.
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Adds a command under its parent.
/// @param example a command line that shows it at work, below its help
CLI::App& AddCommand(CLI::App& parent, const char* name, const char* purpose, const char* example);

/// Adds a positional argument, shown by its name alone.
template <class Value>
CLI::Option& AddArgument(CLI::App& command, const char* name, Value& value, const char* meaning) {
    return *command.add_option(name, value, meaning)->type_name("");
}

/// Of a path that may be left out: an empty one is none. @return the fault, for CLI::Option::check
inline std::string RefuseEmptyPath(const std::string& path) {
    return path.empty() ? "an empty path" : std::string();
}

/// Adds a command of which exactly one subcommand is to be named.
CLI::App& AddGroup(CLI::App& parent, const char* name, const char* purpose, const char* example);

/// Makes `run` the choice when the command is named; the options live as long as the choice.
template <class Options>
void OnRun(CLI::App& command, Choice& choice, std::shared_ptr<Options> options,
           ExitCode (*run)(const Options&)) {
    command.callback([&choice, options = std::move(options), run] {
        choice.m_Run = [options, run] { return run(*options); };
    });
}

using AddCommandFunction = void (*)(CLI::App& parent, Choice& choice);

/// All commands, in the order of the help.
std::span<const AddCommandFunction> GetCommands();

void AddBlocks(CLI::App& parent, Choice& choice);
void AddEdit(CLI::App& parent, Choice& choice);
void AddPrint(CLI::App& parent, Choice& choice);
void AddProject(CLI::App& parent, Choice& choice);
void AddShow(CLI::App& parent, Choice& choice);
void AddSyntax(CLI::App& parent, Choice& choice);
void AddSyntaxCheck(CLI::App& parent, Choice& choice);
void AddSyntaxMatch(CLI::App& parent, Choice& choice);
void AddTour(CLI::App& parent, Choice& choice);
