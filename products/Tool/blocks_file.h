/// Files of blocks: reading them whole, and writing them.
#pragma once

#include <functional>
#include <sstream>
#include <string>
#include <vector>

#include "block.h"
#include "json_text.h"
#include "raw_streambufs.h"
#include "token_istream.h"

/// The two forms of a file.
enum class BlocksForm { kText, kBinary };

/// The form of these bytes: binary ones begin with a zero.
inline BlocksForm GetBlocksForm(std::string_view bytes) {
    return bytes.starts_with('\0') ? BlocksForm::kBinary : BlocksForm::kText;
}

/// Bytes in memory as raw units, with the progress of reading them.
class BlocksBytes {
public:
    explicit BlocksBytes(std::string bytes);

    BlocksForm GetForm() const { return m_Form; }
    io::CByte_streambuf& GetUnits() { return m_Units; }

private:
    class Watched : public std::stringbuf {
    public:
        explicit Watched(std::string&& bytes);
        ~Watched() override;

    private:
        std::streamsize xsgetn(char* to, std::streamsize count) override;

        std::uint64_t m_Read = 0;
    };

    BlocksForm m_Form;
    Watched m_Bytes;
    io::CByte_streambuf m_Units;
};

/// A stream of blocks over bytes in memory.
class BlocksSource {
public:
    /// @param flags io::StreamFlags
    explicit BlocksSource(std::string bytes, unsigned flags = 0);

    BlocksForm GetForm() const { return m_Bytes.GetForm(); }
    io::CToken_istream& GetStream() { return m_Stream; }

private:
    BlocksBytes m_Bytes;
    io::CRawIstream m_Raw;
    io::CToken_istream m_Stream;
};

using BlocksPtr = io::CBlock_ptr<io::CBlock>;

/// Reads block after block up to the end and shows each, sound or not, until `visit` returns false.
/// What is no block ends the reading. Errors go to `errors` in the form of CBlock::GetErrors.
void ReadBlocks(io::CToken_istream& stream, std::vector<AString>& errors,
                const std::function<bool(const BlocksPtr& block)>& visit);

/// All blocks of a file, and what could not be read.
struct BlocksFile {
    BlocksForm form = BlocksForm::kText;
    std::vector<BlocksPtr> blocks;
    std::vector<AString> errors;

    /// Takes the blocks of an index out, which the blocks as they are written anew don't fit.
    /// @return their names
    std::vector<std::string> DropIndex();
};

BlocksFile ReadBlocksFile(std::string bytes);

/// One error a line on standard error.
void WriteBlocksErrors(const std::vector<AString>& errors);

/// The blocks in a form, real numbers without source text with 17 digits.
std::string WriteBlocks(const std::vector<BlocksPtr>& blocks, BlocksForm form);
/// The same with an index, of the nested blocks too if `isAllLevels`.
std::string WriteIndexedBlocks(const std::vector<BlocksPtr>& blocks, BlocksForm form,
                               bool isAllLevels);

/// The input of a request in a batch: "text", or "bytes", an array of the numbers 0 to 255.
std::string RequireInput(const Json& request);
