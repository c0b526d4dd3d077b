/// quorel: the editor module and its libraries on the command line.
#include <csignal>
#include <cstdio>
#include <exception>
#include <new>
#include <sstream>
#include <string>
#include <vector>

#include "assert_log.h"
#include "command.h"
#include "output.h"
#include "progress.h"

namespace {

/// The command that was being parsed, the innermost one, with the names that lead to it.
const CLI::App* InnermostCommand(const CLI::App& app, std::string& names) {
    const CLI::App* innermost = &app;
    names = app.get_name();
    while (!innermost->get_subcommands().empty()) {
        innermost = innermost->get_subcommands().front();
        names += " " + innermost->get_name();
    }
    return innermost;
}

ExitCode Fail(ExitCode code, const std::string& reason) {
    if (!Output::Get().IsReaderGone()) // what that means is main's to say
        Complain("quorel: " + reason);
    return code;
}

ExitCode FailUsage(const CLI::App& app, const std::string& reason) {
    std::string names;
    const CLI::App* const command = InnermostCommand(app, names);
    const auto formatter = std::dynamic_pointer_cast<CLI::Formatter>(app.get_formatter());
    std::string usage = formatter->make_usage(command, names);
    usage.erase(0, usage.find_first_not_of('\n'));
    usage.erase(usage.find_last_not_of('\n') + 1);
    Complain("quorel: " + reason);
    std::fprintf(stderr, "%s\nMore: %s --help\n", usage.c_str(), names.c_str());
    return ExitCode::usage;
}

/// What is wrong with the command line. A word that isn't known goes before what it hides.
std::string ReasonOf(const CLI::App& app, const CLI::Error& error) {
    const std::vector<std::string> unknown = app.remaining(true);
    const bool isMissing = dynamic_cast<const CLI::RequiredError*>(&error) != nullptr;
    return isMissing && !unknown.empty() ? "'" + unknown.front() + "' is no command or option"
                                         : error.what();
}

void Build(CLI::App& app, Choice& choice) {
    app.set_version_flag("--version", "quorel " QUOREL_VERSION);
    app.require_subcommand(1);
    app.get_formatter()->label("SUBCOMMAND", "COMMAND");
    app.get_formatter()->label("Subcommands", "Commands");
    app.footer("Exit codes: 0 done, 1 faulty input or the answer no, 2 wrong command line,\n"
               "3 a file or the module can't be read or written.\n\n"
               "Example:\n  quorel show samples/amplifier.cir");
    for (const AddCommandFunction add : GetCommands())
        add(app, choice);
}

/// Runs a part of the program; its failures become a message and an exit code.
template <class Part>
ExitCode Guard(const CLI::App& app, Part part) {
    try {
        return part();
    } catch (const UsageError& error) {
        return FailUsage(app, error.what());
    } catch (const ToolError& error) {
        return Fail(error.GetCode(), error.what());
    } catch (const std::bad_alloc&) {
        return Fail(ExitCode::file, "out of memory");
    } catch (const std::exception& error) {
        return Fail(ExitCode::no, error.what());
    }
}

ExitCode Flush(const CLI::App& app, ExitCode code) {
    const ExitCode flushed = Guard(app, [] {
        Output::Get().Flush();
        return ExitCode::done;
    });
    return flushed == ExitCode::done ? code : flushed;
}

/// What a failed command has written before goes out all the same.
ExitCode Run(CLI::App& app, const Choice& choice) {
    std::string names;
    InnermostCommand(app, names);
    const Progress progress(names);
    return Flush(app, Guard(app, choice.m_Run));
}

/// --help and --version.
ExitCode Inform(CLI::App& app, const CLI::Success& request) {
    std::ostringstream text;
    app.exit(request, text, text);
    return Guard(app, [&] {
        Output::Get().Write(text.str());
        Output::Get().Flush();
        return ExitCode::done;
    });
}

ExitCode Main(int argc, char** argv) {
    CLI::App app("The editor module of a circuit design desktop, on the command line.", "quorel");
    Choice choice;
    Build(app, choice);
    try {
        app.parse(argc, argv);
    } catch (const CLI::Success& request) {
        return Inform(app, request);
    } catch (const CLI::Error& error) {
        return FailUsage(app, ReasonOf(app, error));
    }
    return Run(app, choice);
}

} // namespace

int main(int argc, char** argv) {
    const AssertLog asserts;
    // Output that nobody reads ends the command as any failure does, so that it leaves no temporary
    // file behind, and only then the process, as its caller expects.
    const auto atBrokenPipe = std::signal(SIGPIPE, SIG_IGN);
    const ExitCode code = Main(argc, argv);
    if (Output::Get().IsReaderGone()) {
        std::signal(SIGPIPE, atBrokenPipe);
        std::raise(SIGPIPE);
        Complain("quorel: nobody reads the output");
    }
    return static_cast<int>(code);
}
