/// The reader of the block syntax.
#pragma once

#include <vector>

#include "block.h"
#include "block_func.h"
#include "block_named_value.h"
#include "block_vec.h"
#include "item_arena.h"
#include "token_istream.h"

namespace io {

/// Reads items from a token stream, the same in text and binary form. Each function stands on the
/// first token of what it reads and returns the error that ended it, at GetErrorLine; nothing is
/// thrown for an error, so that a file full of them reads as fast as any other.
///
/// The stack of calls is bounded by kMaxBlockNesting blocks and as many functions. Children are
/// collected in a stack of their own, so that each list is allocated once.
class Block_reader {
public:
    /// A stream of another class than CToken_istream is asserted; nothing is read from it.
    explicit Block_reader(CAbstract_istream& stream);

    /// Notes errors in the block.
    void ReadBlock(CBlock& block);
    ReadError ReadItem(Block_hold<CBlock_item>& item);
    ReadError ReadArg(Block_hold<CBlock_item>& arg);
    ReadError ReadValue(CBlock_value& value);
    /// From the `=`, `(` or `[` on. What was read in front of an error stays in the item.
    ReadError ReadNamedValue(CBlock_named_value& value);
    ReadError ReadFunc(CBlock_func& func);
    ReadError ReadVec(CBlock_vec& vec);

    int GetErrorLine() const noexcept { return mErrorLine; }
    /// Calls one of the functions and throws XStreamioError for an error.
    template <class T>
    void Require(ReadError (Block_reader::*read)(T&), T& item) {
        if (const ReadError error = (this->*read)(item); error != ReadError::kOk)
            throw XStreamioError(error, mErrorLine);
    }

private:
    class Children;

    ReadError Fail(ReadError error);
    const CToken& Look();
    const CToken& LookPastNull();
    char16_t LookSymbol();
    ReadError ReadToken(CToken& value);
    ReadError ReadBehindName(Block_hold<CBlock_item>& item, CToken& name, char16_t symbol,
                             bool isArg);
    bool TakeNamedValue(Block_hold<CBlock_item>& item);
    template <class T>
    T& Make(Block_hold<CBlock_item>& item, CToken& name);
    ReadError ReadFuncBody(CBlock_func& func);
    ReadError ReadArgs(Children& args);
    ReadError ReadVecBody(CBlock_vec& vec);
    void TakeElements();
    ReadError ReadElements();
    ReadError ReadBehind(char16_t close);
    ReadError ReadNestedBlock(Block_hold<CBlock_item>& item);
    void ReadBlockBody(CBlock& block);
    void ReadItems(CBlock& block, Children& items);
    void ReadEnd(CBlock& block);
    void NoteAndSkip(CBlock& block, ReadError error);

    CToken_istream* mStream; ///< good while it is read from
    Item_arena mArena;
    bool mIsBinary = false;
    bool mIsReady = false; ///< the stream had not failed
    unsigned mBlockDepth = 0;
    unsigned mFuncDepth = 0;
    int mErrorLine = 0;
    std::vector<Block_hold<CBlock_item>> mChildren; ///< of all open blocks and functions
    std::vector<CToken> mElements;
};

/// Reads one item and copies it into `item` if it is of that class.
template <class T>
bool ReadItemAs(T& item, CAbstract_istream& stream) {
    CBlockItemPtr read;
    read.Read(stream);
    const CBlock_ptr<T> same(read);
    if (same)
        item = *same;
    return static_cast<bool>(same);
}

} // namespace io
