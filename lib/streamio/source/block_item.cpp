#include "block_item.h"

#include "item_arena.h"
#include "item_walk.h"
#include "token_istring.h"

namespace io {

void CBlock_item::Destroy(CBlock_item& item) noexcept {
    if (item.mIsInArena)
        Item_arena::Destroy(item);
    else
        delete &item;
}

bool CBlock_item::FromString(const AString& text) {
    try {
        Clear();
        CToken_istring stream(text);
        return ReadWhole(stream);
    } catch (...) {
        return false;
    }
}

void CBlock_item::GetName(AString& name) const {
    name.clear();
}

void CBlock_item::SetName(const AString&) {}

const CToken& CBlock_item::GetNameToken() const {
    static const CToken kNone;
    return kNone;
}

Block_stats CBlock_item::GetStats(bool includeSelf) const {
    Block_stats stats;
    Item_walk walk(*this);
    if (!includeSelf)
        walk.NextItem();
    while (const CBlock_item* item = walk.NextItem())
        item->AddStats(stats);
    return stats;
}

} // namespace io
