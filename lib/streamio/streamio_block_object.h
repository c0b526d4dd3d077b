/// Objects that persist as one block.
#pragma once

#include "block.h"

namespace io {

/// Moves its fields out of a block and into one in a single routine, Exchange.
class QUOREL_API CStreamio_block_object : public CStreamio_item_object {
public:
    /// Reads a block of this object's name, or, if that is empty, whatever block comes next, and
    /// takes its fields from it. What is no such block fails the stream; a block that FromItem
    /// refuses throws XStreamioError (kRead). See GetReadError.
    void Read(CAbstract_istream& stream) override;
    void Write(CAbstract_ostream& stream) const override;

    /// The name of the block; empty when it comes from the stream.
    virtual void GetBlockName(AString& name) const = 0;
    /// Makes a block of that name and fills it. False, and no block, if that fails.
    virtual bool ToItem(CBlockItemPtr& item);
    /// False for what is no block and for a block that gives an error.
    virtual bool FromItem(const CBlockItemPtr& item);
    /// Moves the fields out of the block when `reading`, else into it. Returns 0 for success, any
    /// other number for a failure; those of ReadError tell which. Called on a const object only to
    /// write.
    virtual int Exchange(CBlock& block, bool reading) = 0;
    /// The result of Exchange, kept for GetReadError.
    virtual int FromBlock(const CBlock& block);
    /// True for success.
    virtual bool ToBlock(CBlock& block);
    /// The same with the flag set meanwhile. True unless the result is negative.
    virtual bool FromBlockFlagged(const CBlock& block);
    /// The same with the flag set meanwhile, and gives the block this object's name.
    virtual bool ToBlockFlagged(CBlock& block);
    /// Sets a flag that means nothing here and that Exchange may look at; returns the old value.
    virtual bool SetFlag(bool flag);

    bool GetFlag() const noexcept { return mFlag; }
    /// The result of the last FromBlock; 0 before.
    int GetReadError() const noexcept { return mReadError; }

private:
    int mReadError = 0;
    bool mFlag = false;
};

} // namespace io
