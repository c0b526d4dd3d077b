/// quorel blocks format, convert and index: a file of blocks written anew.
#include <optional>
#include <string_view>

#include "batch.h"
#include "blocks_command.h"
#include "blocks_file.h"
#include "blocks_json.h"
#include "input_file.h"
#include "output.h"

namespace {

/// The form of that name; nothing for no form.
std::optional<BlocksForm> FindForm(std::string_view name) {
    if (name == "text")
        return BlocksForm::kText;
    return name == "binary" ? std::optional(BlocksForm::kBinary) : std::nullopt;
}

/// Adds --to, which is the form of FILE by default.
void AddFormOption(CLI::App& command, std::optional<BlocksForm>& form) {
    command
        .add_option_function<std::string>(
            "--to", [&form](const std::string& name) { form = FindForm(name); },
            "The form to write: text or binary; default: that of FILE")
        ->type_name("FORM")
        ->check(CLI::IsMember({"text", "binary"}).description(""));
}

/// Says that a file's index was dropped.
void TellDropped(const std::string& file, const std::vector<std::string>& names) {
    for (const std::string& name : names)
        Complain("quorel: '" + file + "': block '" + name + "' dropped, as it no longer fits");
}

/// The same in the answer of a batch, as its last member.
void EndWithDropped(const std::vector<std::string>& names, BlocksJson& json) {
    for (const std::string& name : names) {
        json << (&name == names.data() ? ",\"dropped\":[" : ",");
        json.AppendString(std::string_view(name));
    }
    json << (names.empty() ? "}" : "]}");
}

// --- format ---

struct FormatOptions {
    BlocksInputOptions m_Input;
    std::string m_Output = kStandardInput;
    bool m_Force = false;
};

std::string ServeFormat(const Json& request) {
    BlocksFile file = ReadBlocksFile(RequireInput(request));
    const std::vector<std::string> dropped = file.DropIndex();
    BlocksJson json(BlocksJson::Target::kKept);
    json << "{\"text\":";
    json.AppendString(std::string_view(WriteBlocks(file.blocks, BlocksForm::kText)));
    json << ",\"errors\":";
    json.AppendStrings(file.errors);
    EndWithDropped(dropped, json);
    return json.GetText();
}

ExitCode Format(const FormatOptions& options) {
    if (options.m_Input.IsBatch())
        return RunTextBatch(&ServeFormat);
    BlocksFile file = ReadBlocksFile(ReadInput(options.m_Input.m_File));
    WriteBlocksErrors(file.errors);
    if (!file.errors.empty() && !options.m_Force)
        return ExitCode::no;
    TellDropped(options.m_Input.m_File, file.DropIndex());
    WriteOutput(options.m_Output, WriteBlocks(file.blocks, BlocksForm::kText));
    return file.errors.empty() ? ExitCode::done : ExitCode::no;
}

// --- convert ---

struct ConvertOptions {
    BlocksInputOptions m_Input;
    std::string m_Output;
    std::optional<BlocksForm> m_Form;
};

BlocksForm TakeForm(const Json& request, BlocksForm defaultForm) {
    const auto found = request.find("to");
    if (found == request.end())
        return defaultForm;
    const auto form =
        found->is_string() ? FindForm(found->get_ref<const std::string&>()) : std::nullopt;
    if (!form)
        throw BadRequest("\"to\" is neither \"text\" nor \"binary\"");
    return *form;
}

void AppendBytes(std::string_view bytes, BlocksJson& json) {
    const char* separator = "";
    json << "[";
    for (const char byte : bytes) {
        json << separator << std::to_string(static_cast<unsigned char>(byte));
        separator = ",";
    }
    json << "]";
}

std::string ServeConvert(const Json& request, std::optional<BlocksForm> defaultForm) {
    BlocksFile file = ReadBlocksFile(RequireInput(request));
    const BlocksForm form = TakeForm(request, defaultForm.value_or(file.form));
    if (!file.errors.empty())
        throw BadRequest(JsonFromText(file.errors.front()));
    const std::vector<std::string> dropped = file.DropIndex();
    const std::string bytes = WriteBlocks(file.blocks, form);
    BlocksJson json(BlocksJson::Target::kKept);
    if (form == BlocksForm::kText) {
        json << "{\"text\":";
        json.AppendString(std::string_view(bytes));
    } else {
        json << "{\"bytes\":";
        AppendBytes(bytes, json);
    }
    EndWithDropped(dropped, json);
    return json.GetText();
}

ExitCode Convert(const ConvertOptions& options) {
    if (options.m_Input.IsBatch())
        return RunTextBatch(
            [&](const Json& request) { return ServeConvert(request, options.m_Form); });
    if (options.m_Output.empty())
        throw UsageError("--output is required");
    BlocksFile file = ReadBlocksFile(ReadInput(options.m_Input.m_File));
    WriteBlocksErrors(file.errors);
    if (!file.errors.empty())
        return ExitCode::no;
    TellDropped(options.m_Input.m_File, file.DropIndex());
    WriteOutput(options.m_Output, WriteBlocks(file.blocks, options.m_Form.value_or(file.form)));
    return ExitCode::done;
}

// --- index ---

struct IndexOptions {
    BlocksInputOptions m_Input;
    std::string m_Output;
    std::optional<BlocksForm> m_Form;
    bool m_AllLevels = false;
};

ExitCode Index(const IndexOptions& options) {
    options.m_Input.IsBatch();
    BlocksFile file = ReadBlocksFile(ReadInput(options.m_Input.m_File));
    WriteBlocksErrors(file.errors);
    if (!file.errors.empty())
        return ExitCode::no;
    file.DropIndex();
    WriteOutput(
        options.m_Output,
        WriteIndexedBlocks(file.blocks, options.m_Form.value_or(file.form), options.m_AllLevels));
    return ExitCode::done;
}

} // namespace

void AddBlocksFormat(CLI::App& parent, Choice& choice) {
    auto options = std::make_shared<FormatOptions>();
    CLI::App& command =
        AddCommand(parent, "format", "Writes a file again as text, each item on a line of its own",
                   "quorel blocks format --output parts.txt samples/parts.blk\n\n"
                   "Comments are no part of the blocks and are lost; an index is dropped.\n"
                   "A line of a batch is {\"text\": \"...\"} or {\"bytes\": [0, 12, ...]}.");
    options->m_Input.AddTo(command, true);
    AddOutputOption(command, options->m_Output);
    command.add_flag("--force", options->m_Force,
                     "Writes what could be read of a file with errors; exit code 1 all the same");
    OnRun(command, choice, options, &Format);
}

void AddBlocksConvert(CLI::App& parent, Choice& choice) {
    auto options = std::make_shared<ConvertOptions>();
    CLI::App& command =
        AddCommand(parent, "convert", "Writes the blocks of a file in the other form",
                   "quorel blocks convert samples/parts.blk --to binary --output parts.bin\n\n"
                   "An index is dropped. A line of a batch is {\"text\": \"...\"} or\n"
                   "{\"bytes\": [0, 12, ...]}, with \"to\": \"text\" or \"binary\".");
    options->m_Input.AddTo(command, true);
    AddFormOption(command, options->m_Form);
    AddOutputOption(command, options->m_Output);
    OnRun(command, choice, options, &Convert);
}

void AddBlocksIndex(CLI::App& parent, Choice& choice) {
    auto options = std::make_shared<IndexOptions>();
    CLI::App& command =
        AddCommand(parent, "index", "Writes the blocks of a file with an index for random access",
                   "quorel blocks index samples/parts.blk --all-levels --output indexed.blk");
    options->m_Input.AddTo(command, false);
    AddOutputOption(command, options->m_Output).required();
    command.add_flag("--all-levels", options->m_AllLevels, "Blocks within blocks too");
    AddFormOption(command, options->m_Form);
    OnRun(command, choice, options, &Index);
}
