#include "streamio_block_object.h"

#include "abstract_istream.h"

namespace io {

void CStreamio_block_object::Read(CAbstract_istream& stream) {
    mReadError = 0;
    AString name;
    GetBlockName(name);
    if (!name.empty()) {
        if (!stream.IsBegin(name)) {
            stream.SetFail();
            return;
        }
        CBlock block(name);
        block.Read(stream);
        FromBlock(block);
        return;
    }
    if (!stream.IsBegin())
        return;
    CBlockItemPtr item;
    item.Read(stream);
    if (!FromItem(item))
        throw XStreamioError(ReadError::kRead, stream.GetLine());
}

void CStreamio_block_object::Write(CAbstract_ostream& stream) const {
    AString name;
    GetBlockName(name);
    CBlock block(name);
    const_cast<CStreamio_block_object*>(this)->ToBlock(block); // Exchange only writes then
    block.Write(stream);
}

bool CStreamio_block_object::ToItem(CBlockItemPtr& item) {
    AString name;
    GetBlockName(name);
    const CBlockPtr block(name);
    if (!ToBlock(*block))
        return false;
    item = CBlockItemPtr(block);
    return true;
}

bool CStreamio_block_object::FromItem(const CBlockItemPtr& item) {
    const CBlock_ptr<CBlock> block(item);
    return block && FromBlock(*block) == 0;
}

int CStreamio_block_object::FromBlock(const CBlock& block) {
    mReadError = Exchange(const_cast<CBlock&>(block), true); // which only looks items up
    return mReadError;
}

bool CStreamio_block_object::ToBlock(CBlock& block) {
    try {
        return Exchange(block, false) == 0;
    } catch (ReadError) {
        return false;
    } catch (const XStreamioError&) {
        return false;
    }
}

/// Sets an object's flag for a while, whatever ends it.
class Flag_scope {
public:
    explicit Flag_scope(CStreamio_block_object& object)
        : mObject(object), mOld(object.SetFlag(true)) {}
    Flag_scope(const Flag_scope&) = delete;
    Flag_scope& operator=(const Flag_scope&) = delete;
    ~Flag_scope() { mObject.SetFlag(mOld); }

private:
    CStreamio_block_object& mObject;
    bool mOld;
};

bool CStreamio_block_object::FromBlockFlagged(const CBlock& block) {
    const Flag_scope flagged(*this);
    return FromBlock(block) >= 0;
}

bool CStreamio_block_object::ToBlockFlagged(CBlock& block) {
    AString name;
    GetBlockName(name);
    block.SetName(name);
    const Flag_scope flagged(*this);
    return ToBlock(block);
}

bool CStreamio_block_object::SetFlag(bool flag) {
    return std::exchange(mFlag, flag);
}

} // namespace io
