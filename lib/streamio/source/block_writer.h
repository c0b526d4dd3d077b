/// The writer of the block syntax.
#pragma once

#include "block_item.h"
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
    /// The name of an item that is no block.
    void WriteName(const CToken& name);
    /// Integers in plain decimal form whatever their source text was, other numbers with theirs.
    void WriteValue(const CToken& value);
    /// From the `[` on.
    void WriteElements(const CBlock_vec& vec);

private:
    void WriteOpen(const CBlock_item& item);
    void WriteClose(const CBlock_item& item);
    void WriteInteger(const CToken& value);
    void WriteText(const CToken& text);
    void WriteComma();
    bool IsPlainName(std::u16string_view text) const;
    bool IsPlainWord(std::u16string_view text) const;
    bool IsPlainNumber(std::u16string_view text) const;

    CToken_ostream* mStream;
    bool mIsBinary;
};

} // namespace io
