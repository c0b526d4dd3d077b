#include "command.h"

namespace {

constexpr AddCommandFunction kCommands[] = {
    &AddShow, &AddEdit, &AddPrint, &AddSyntax, &AddBlocks, &AddProject, &AddTour,
};

} // namespace

std::span<const AddCommandFunction> GetCommands() {
    return kCommands;
}

CLI::App& AddCommand(CLI::App& parent, const char* name, const char* purpose, const char* example) {
    CLI::App& command = *parent.add_subcommand(name, purpose);
    command.footer(std::string("Example:\n  ") + example);
    return command;
}

CLI::App& AddGroup(CLI::App& parent, const char* name, const char* purpose, const char* example) {
    CLI::App& group = AddCommand(parent, name, purpose, example);
    group.require_subcommand(1);
    return group;
}

void AddSyntax(CLI::App& parent, Choice& choice) {
    CLI::App& group = AddGroup(parent, "syntax", "Syntax descriptions and their expressions",
                               "quorel syntax check config/NetlistEditor.cfg");
    AddSyntaxCheck(group, choice);
    AddSyntaxMatch(group, choice);
}
