/// quorel blocks: files of named blocks.
#include "blocks_command.h"

namespace {

constexpr const char* kFile = "FILE";

} // namespace

void BlocksInputOptions::AddTo(CLI::App& command, bool hasBatch) {
    m_Command = &command;
    CLI::Option& file = AddArgument(command, kFile, m_File,
                                    "The file of blocks, text or binary; - for standard input");
    if (hasBatch)
        command.add_flag("--batch", m_Batch, "Serves a JSON object a line from standard input");
    else
        file.required();
}

bool BlocksInputOptions::IsBatch() const {
    const bool hasFile = m_Command->count(kFile) > 0;
    if (m_Batch && hasFile)
        throw UsageError("--batch takes no FILE");
    if (!m_Batch && !hasFile)
        throw UsageError("FILE is required");
    return m_Batch;
}

CLI::Option& AddOutputOption(CLI::App& command, std::string& output) {
    return *command.add_option("--output", output, "Where to write to; - for standard output")
                ->type_name("FILE");
}

void AddBlocks(CLI::App& parent, Choice& choice) {
    CLI::App& group =
        AddGroup(parent, "blocks", "Files of named blocks, as text and in binary form",
                 "quorel blocks check samples/parts.blk");
    AddBlocksCheck(group, choice);
    AddBlocksFormat(group, choice);
    AddBlocksTree(group, choice);
    AddBlocksTokens(group, choice);
    AddBlocksConvert(group, choice);
    AddBlocksIndex(group, choice);
    AddBlocksGet(group, choice);
}
