/// The writer of the block syntax.
#pragma once

#include <array>

#include "block_named_value.h"
#include "block_vec.h"
#include "token_ostream.h"

namespace io {

/// Writes items to a token stream so that they read back: a name or value that would read as
/// something else as it stands goes out in single quotes. Depth takes no stack of calls; a class
/// derived from CBlock or CBlock_func is written as these are wherever it nests.
class Block_writer {
public:
    /// A stream of another class than CToken_ostream is asserted; nothing is written to it.
    explicit Block_writer(CAbstract_ostream& stream);

    /// An item with all that is below it.
    void Write(const CBlock_item& item);
    /// A value: integers in plain decimal form whatever their source text was, other numbers with
    /// theirs.
    void WriteValue(const CToken& value);
    void WriteNamedValue(const CBlock_named_value& value);
    void WriteVec(const CBlock_vec& vec);

private:
    void WriteLeaf(const CBlock_item& item);
    void WriteName(const CToken& name);
    void WriteNameOfValue(const CToken& name);
    void WriteOpen(const CBlock_item& item);
    void WriteClose(const CBlock_item& item);
    void WriteInteger(const CToken& value);
    void WriteText(const CToken& text);
    void WriteComma();
    bool IsPlainName(std::u16string_view text) const;
    bool IsPlainNumber(std::u16string_view text) const;

    /// A short text.
    struct Short_name {
        std::array<char16_t, CToken::kInlineUnits> units;
        std::uint8_t length;
    };
    bool IsKnownName(std::u16string_view text);

    CToken_ostream* mStream;
    CToken_streambuf* mBuffer = nullptr; ///< the stream's, for what a stream passes on as it is
    std::ios_base::fmtflags mFlags{};
    bool mIsBinary = false;
    static constexpr unsigned kNameBits = 6;
    /// Names found to go out as they stand, by a hash of so many bits.
    std::array<Short_name, 1u << kNameBits> mPlainNames{};
};

} // namespace io
