#include "blocks_file.h"

#include <algorithm>
#include <cerrno>

#include "batch.h"
#include "block_index.h"
#include "input_file.h"
#include "output.h"
#include "progress.h"
#include "token_ostream.h"

namespace {

/// Digits that tell any two doubles apart.
constexpr int kExactDigits = 17;

bool IsIndexBlock(const io::CBlock& block) {
    AString name;
    block.GetName(name);
    return name.CompareNoCase(io::CBlock_index::kIndexName) == 0 ||
           name.CompareNoCase(io::CBlock_index::kBaseIndexName) == 0;
}

/// @param prepare is called with the stream in front of the first block
template <class Prepare>
std::string Write(const std::vector<BlocksPtr>& blocks, BlocksForm form, Prepare prepare) {
    std::stringbuf bytes(std::ios_base::in | std::ios_base::out);
    io::CByte_streambuf units(bytes);
    io::CRawOstream raw(&units);
    const bool isBinary = form == BlocksForm::kBinary;
    io::CToken_ostream stream(raw, &io::CToken_grammar_default::Get(), isBinary ? io::kBinary : 0u);
    stream.SetPrecision(kExactDigits);
    prepare(stream);
    for (const BlocksPtr& block : blocks)
        block->Write(stream);
    stream.Close();
    if (!stream.Good())
        throw ToolError(ExitCode::file, "the blocks can't be written");
    return std::move(bytes).str();
}

} // namespace

// --- Input ---

BlocksBytes::Watched::Watched(std::string&& bytes)
    : std::stringbuf(std::move(bytes), std::ios_base::in | std::ios_base::out) {}

BlocksBytes::Watched::~Watched() {
    Progress::Set(0, 0);
}

std::streamsize BlocksBytes::Watched::xsgetn(char* to, std::streamsize count) {
    const std::streamsize got = std::stringbuf::xsgetn(to, count);
    m_Read += static_cast<std::uint64_t>(got);
    Progress::Set(m_Read, view().size());
    return got;
}

BlocksBytes::BlocksBytes(std::string bytes)
    : m_Form(GetBlocksForm(bytes)), m_Bytes(std::move(bytes)), m_Units(m_Bytes) {}

BlocksSource::BlocksSource(std::string bytes, unsigned flags)
    : m_Bytes(std::move(bytes)), m_Raw(&m_Bytes.GetUnits()),
      m_Stream(m_Raw, &io::CToken_grammar_default::Get(), flags,
               io::CToken_istream::Form::kAutodetect) {}

void ReadBlocks(io::CToken_istream& stream, std::vector<AString>& errors,
                const std::function<bool(const BlocksPtr& block)>& visit) {
    while (!stream.IsAtEof()) {
        const bool isBlock = stream.IsBegin();
        const BlocksPtr block(new io::CBlock);
        block->Read(stream);
        block->GetErrors(errors, true);
        if ((isBlock && !visit(block)) || stream.Fail())
            return;
    }
}

std::vector<std::string> BlocksFile::DropIndex() {
    std::vector<std::string> dropped;
    std::erase_if(blocks, [&](const BlocksPtr& block) {
        const bool isIndex = IsIndexBlock(*block);
        if (isIndex) {
            AString name;
            block->GetName(name);
            dropped.push_back(JsonFromText(name));
        }
        return isIndex;
    });
    return dropped;
}

BlocksFile ReadBlocksFile(std::string bytes) {
    BlocksSource source(std::move(bytes));
    BlocksFile file;
    file.form = source.GetForm();
    ReadBlocks(source.GetStream(), file.errors, [&](const BlocksPtr& block) {
        file.blocks.push_back(block);
        return true;
    });
    return file;
}

std::string RequireInput(const Json& request) {
    const auto text = request.find("text");
    const auto list = request.find("bytes");
    if ((text != request.end()) == (list != request.end()))
        throw BadRequest("either \"text\" or \"bytes\" is needed");
    if (text != request.end()) {
        if (!text->is_string())
            throw BadRequest("\"text\" is not a string");
        return text->get<std::string>();
    }
    if (!list->is_array())
        throw BadRequest("\"bytes\" is not an array");
    std::string bytes;
    for (const Json& byte : *list) {
        const auto isByte = [](auto number) { return number >= 0 && number <= 255; };
        if (!byte.is_number_integer() || !isByte(byte.get<std::int64_t>()))
            throw BadRequest("\"bytes\" holds something else than numbers from 0 to 255");
        bytes += static_cast<char>(byte.get<std::int64_t>());
    }
    return bytes;
}

// --- Output ---

void WriteBlocksErrors(const std::vector<AString>& errors) {
    for (const AString& error : errors)
        Complain(JsonFromText(error));
}

std::string WriteBlocks(const std::vector<BlocksPtr>& blocks, BlocksForm form) {
    return Write(blocks, form, [](io::CToken_ostream&) {});
}

std::string WriteIndexedBlocks(const std::vector<BlocksPtr>& blocks, BlocksForm form,
                               bool isAllLevels) {
    return Write(blocks, form, [=](io::CToken_ostream& stream) {
        stream.BuildIndex(isAllLevels ? io::kAllLevels : 0u);
    });
}
