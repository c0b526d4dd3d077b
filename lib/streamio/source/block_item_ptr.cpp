#include "block_ptr.h"
#include "block_reader.h"

namespace io {

namespace {

/// Reads by one of the reader's functions that choose the class, and throws for an error.
CBlock_item* ReadAny(CAbstract_istream& stream, Block_hold<CBlock_item>& item,
                     ReadError (Block_reader::*read)(Block_hold<CBlock_item>&)) {
    Block_reader(stream).Require(read, item);
    return item.get();
}

} // namespace

void CBlockItemPtr::Read(CAbstract_istream& stream) {
    Block_hold<CBlock_item> item;
    *this = ReadAny(stream, item, &Block_reader::ReadItem);
}

void CBlockFuncArgPtr::Read(CAbstract_istream& stream) {
    Block_hold<CBlock_item> arg;
    *this = static_cast<CBlock_func_arg*>(ReadAny(stream, arg, &Block_reader::ReadArg));
}

} // namespace io
