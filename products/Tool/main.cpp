/// quorel: the editor module and its libraries on the command line.
#include <cstdio>
#include <exception>
#include <new>
#include <string>

#include "assert_log.h"
#include "command.h"
#include "output.h"

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
    std::fprintf(stderr, "quorel: %s\n", reason.c_str());
    return code;
}

ExitCode FailUsage(const CLI::App& app, const std::string& reason) {
    std::string names;
    const CLI::App* const command = InnermostCommand(app, names);
    const auto formatter = std::dynamic_pointer_cast<CLI::Formatter>(app.get_formatter());
    std::string usage = formatter->make_usage(command, names);
    usage.erase(0, usage.find_first_not_of('\n'));
    usage.erase(usage.find_last_not_of('\n') + 1);
    std::fprintf(stderr, "quorel: %s\n%s\nMore: %s --help\n", reason.c_str(), usage.c_str(),
                 names.c_str());
    return ExitCode::usage;
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

ExitCode Run(CLI::App& app, const Choice& choice) {
    try {
        const ExitCode code = choice.m_Run();
        Output::Get().Flush();
        return code;
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

ExitCode Main(int argc, char** argv) {
    CLI::App app("The editor module of a circuit design desktop, on the command line.", "quorel");
    Choice choice;
    Build(app, choice);
    try {
        app.parse(argc, argv);
    } catch (const CLI::Success& request) { // --help, --version
        app.exit(request);
        return ExitCode::done;
    } catch (const CLI::Error& error) {
        return FailUsage(app, error.what());
    }
    return Run(app, choice);
}

} // namespace

int main(int argc, char** argv) {
    const AssertLog asserts;
    return static_cast<int>(Main(argc, argv));
}
