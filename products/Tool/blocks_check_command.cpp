/// quorel blocks check and tree: what is in a file, and what is wrong in it.
#include "batch.h"
#include "block_index.h"
#include "blocks_command.h"
#include "blocks_file.h"
#include "blocks_json.h"
#include "input_file.h"
#include "output.h"

namespace {

// --- check ---

struct CheckOptions {
    BlocksInputOptions m_Input;
    bool m_Json = false;
};

/// False when the file has an index that can't be read or doesn't lead to its blocks.
bool IsIndexSound(io::CToken_istream& stream) {
    const bool isSound = stream.Good();
    stream.Clear();
    return isSound;
}

ExitCode Check(const CheckOptions& options) {
    options.m_Input.IsBatch();
    BlocksSource source(ReadInput(options.m_Input.m_File), io::kReadIndex | io::kCheckIndex);
    const bool isIndexSound = IsIndexSound(source.GetStream());
    if (!isIndexSound)
        Complain("quorel: the index of '" + options.m_Input.m_File + "' doesn't fit its blocks");
    std::vector<AString> errors;
    ReadBlocks(source.GetStream(), errors, [](const BlocksPtr&) { return true; });
    if (options.m_Json) {
        BlocksJson json(BlocksJson::Target::kStandardOutput);
        json << "{\"errors\":";
        json.AppendStrings(errors);
        json << "}";
        json.End();
    } else {
        WriteBlocksErrors(errors);
    }
    return errors.empty() && isIndexSound ? ExitCode::done : ExitCode::no;
}

// --- tree ---

struct TreeOptions {
    BlocksInputOptions m_Input;
    bool m_Json = false; ///< it is JSON in any case
};

/// Block by block: a file may be larger than its tree should be.
/// @return whether there was no error
bool AppendTree(std::string bytes, BlocksJson& json) {
    BlocksSource source(std::move(bytes));
    std::vector<AString> errors;
    bool isFirst = true;
    json << "{\"blocks\":[";
    ReadBlocks(source.GetStream(), errors, [&](const BlocksPtr& block) {
        json.NextElement(std::exchange(isFirst, false));
        json.AppendBlock(*block);
        return true;
    });
    json.EndList();
    json << ",\"errors\":";
    json.AppendStrings(errors);
    json << "}";
    return errors.empty();
}

std::string ServeTree(const Json& request) {
    BlocksJson json(BlocksJson::Target::kKept);
    AppendTree(RequireInput(request), json);
    return json.GetText();
}

ExitCode Tree(const TreeOptions& options) {
    if (options.m_Input.IsBatch())
        return RunTextBatch(&ServeTree);
    BlocksJson json(BlocksJson::Target::kStandardOutput);
    const bool isSound = AppendTree(ReadInput(options.m_Input.m_File), json);
    json.End();
    return isSound ? ExitCode::done : ExitCode::no;
}

} // namespace

void AddBlocksCheck(CLI::App& parent, Choice& choice) {
    auto options = std::make_shared<CheckOptions>();
    CLI::App& command =
        AddCommand(parent, "check", "Reads a file and names each error with its block and line",
                   "quorel blocks check samples/parts.blk");
    options->m_Input.AddTo(command, false);
    command.add_flag("--json", options->m_Json, "The errors as JSON");
    OnRun(command, choice, options, &Check);
}

void AddBlocksTree(CLI::App& parent, Choice& choice) {
    auto options = std::make_shared<TreeOptions>();
    CLI::App& command =
        AddCommand(parent, "tree", "Prints the blocks with their items and errors as JSON",
                   "quorel blocks tree samples/parts.blk\n\n"
                   "A line of a batch is {\"text\": \"...\"} or {\"bytes\": [0, 12, ...]}.");
    options->m_Input.AddTo(command, true);
    command.add_flag("--json", options->m_Json, "Changes nothing: the tree is JSON");
    OnRun(command, choice, options, &Tree);
}
