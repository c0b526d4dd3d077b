/// quorel blocks get: one block by its path of names.
#include <cerrno>

#include "block_index.h"
#include "blocks_command.h"
#include "blocks_file.h"
#include "file_status.h"
#include "input_file.h"
#include "output.h"
#include "token_ifile.h"

namespace {

using Names = std::vector<AString>;

struct GetOptions {
    BlocksInputOptions m_Input;
    std::string m_Name;
    std::vector<std::string> m_Nested;
};

bool IsNamed(const io::CBlock& block, const AString& name) {
    AString own;
    block.GetName(own);
    return own.CompareNoCase(name) == 0;
}

/// The first block below `top` at a path, of which `top` itself is name `depth - 1`.
BlocksPtr FindBelow(const BlocksPtr& top, const Names& names, std::size_t depth) {
    std::vector<BlocksPtr> found = {top};
    for (; depth < names.size(); ++depth) {
        std::vector<BlocksPtr> below;
        for (const BlocksPtr& block : found)
            for (const io::CBlockItemPtr& item : *block)
                if (item->IsBlock() && IsNamed(static_cast<io::CBlock&>(*item), names[depth]))
                    below.emplace_back(item);
        found = std::move(below);
    }
    return found.empty() ? BlocksPtr() : found.front();
}

/// Looks the longest path up that the index has. An entry that leads astray counts as none.
BlocksPtr GetThroughIndex(io::CToken_istream& stream, const Names& names) {
    AString path;
    std::vector<AString> paths; // one for each number of names
    for (const AString& name : names)
        paths.push_back(path += (path.empty() ? u"" : u"\t") + name);
    for (std::size_t depth = names.size(); depth > 0; --depth) {
        if (!stream.SeekBlock(paths[depth - 1]) || !stream.IsBegin(names[depth - 1])) {
            stream.Clear();
            continue;
        }
        const BlocksPtr block(new io::CBlock);
        block->Read(stream);
        if (BlocksPtr found = FindBelow(block, names, depth))
            return found;
    }
    return {};
}

BlocksPtr GetByReading(io::CToken_istream& stream, const Names& names) {
    std::vector<AString> errors; // of other blocks
    BlocksPtr found;
    ReadBlocks(stream, errors, [&](const BlocksPtr& block) {
        if (IsNamed(*block, names.front()))
            found = FindBelow(block, names, 1);
        return !found;
    });
    return found;
}

BlocksPtr GetBlock(io::CToken_istream& stream, const Names& names) {
    if (stream.GetIndex()) {
        const io::CAbstract_stream_pos start = stream.Tell();
        if (BlocksPtr found = GetThroughIndex(stream, names))
            return found;
        stream.Clear();
        stream.Seek(start);
    }
    return GetByReading(stream, names);
}

/// From a file no more than what is needed is read.
BlocksPtr GetFromFile(const std::string& path, const Names& names) {
    sys::FileStatus status;
    Require(sys::GetFileStatus(path, status));
    if (status.IsDirectory())
        Require(sys::Failure("read", path, EISDIR));
    if (!status.isRegular)
        Require(sys::Failure("read", path, EINVAL, "not a regular file"));
    errno = 0;
    io::CToken_ifile stream(path, io::kReadIndex);
    if (!stream.IsOpen())
        Require(sys::Failure("read", path, errno));
    BlocksPtr block = GetBlock(stream, names);
    if (stream.Bad())
        Require(sys::Failure("read", path, EIO));
    return block;
}

BlocksPtr GetFromStandardInput(const Names& names) {
    BlocksSource source(ReadInput(kStandardInput), io::kReadIndex);
    return GetBlock(source.GetStream(), names);
}

std::string JoinNames(const std::vector<std::string>& names) {
    std::string joined;
    for (const std::string& name : names)
        joined += (joined.empty() ? "'" : " '") + name + "'";
    return joined;
}

ExitCode Get(const GetOptions& options) {
    options.m_Input.IsBatch();
    std::vector<std::string> path = {options.m_Name};
    path.insert(path.end(), options.m_Nested.begin(), options.m_Nested.end());
    Names names;
    for (const std::string& name : path)
        names.push_back(AString::FromMultiByte(AString::kUtf8, name));
    const std::string& file = options.m_Input.m_File;
    const BlocksPtr block =
        file == kStandardInput ? GetFromStandardInput(names) : GetFromFile(file, names);
    if (!block)
        throw ToolError(ExitCode::no, "no block " + JoinNames(path) + " in '" + file + "'");
    std::vector<AString> errors;
    block->GetErrors(errors, true);
    WriteBlocksErrors(errors);
    WriteOutput(kStandardInput, WriteBlocks({block}, BlocksForm::kText));
    return errors.empty() ? ExitCode::done : ExitCode::no;
}

} // namespace

void AddBlocksGet(CLI::App& parent, Choice& choice) {
    auto options = std::make_shared<GetOptions>();
    CLI::App& command = AddCommand(
        parent, "get", "Prints one block as text",
        "quorel blocks get samples/parts.blk Library Resistor\n\n"
        "Goes through the index where the file has one. Names are compared without regard to\n"
        "case. Of several blocks of one name it is the first, through an index the last.");
    options->m_Input.AddTo(command, false);
    // Not one list: in a list a name in brackets would be taken for a list itself.
    AddArgument(command, "NAME", options->m_Name, "The block's name").required();
    AddArgument(command, "NESTED", options->m_Nested, "The name of a block within it, and so on");
    OnRun(command, choice, options, &Get);
}
