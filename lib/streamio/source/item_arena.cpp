#include "item_arena.h"

#include <new>

namespace io {

namespace {

#if defined(__SANITIZE_ADDRESS__)
constexpr bool kHasSlabs = false; // each item on its own, so that a wrong use is seen
#elif defined(__has_feature)
constexpr bool kHasSlabs = !__has_feature(address_sanitizer);
#else
constexpr bool kHasSlabs = true;
#endif

} // namespace

void Item_arena::Release(Slab& slab) noexcept {
    if (--slab.count == 0)
        ::operator delete(static_cast<void*>(&slab), std::align_val_t(kSlabAlignment));
}

Item_arena::~Item_arena() {
    mItems.Leave();
    mLists.Leave();
}

bool Item_arena::HasManyItems() noexcept {
    mHasSlabs = kHasSlabs && ++mItemCount > kFirstItems;
    return mHasSlabs;
}

void Item_arena::Filling::Next() {
    /// Leaves room for what the allocator keeps between two slabs.
    constexpr std::size_t kSlabBytes = kSlabAlignment - 64;
    void* const room = ::operator new(kSlabBytes, std::align_val_t(kSlabAlignment));
    Leave();
    new (room) Slab{1};
    constexpr std::size_t kHeadBytes = 16;
    static_assert(sizeof(Slab) <= kHeadBytes);
    end = static_cast<char*>(room) + kSlabBytes;
    left = kSlabBytes - kHeadBytes;
}

void Item_arena::Filling::Leave() noexcept {
    if (end)
        Release(SlabOf(end - 1));
}

void Item_arena::Destroy(CBlock_item& item) noexcept {
    Slab& slab = SlabOf(&item);
    item.~CBlock_item();
    Release(slab);
}

void ReleaseArenaRoom(void* room) noexcept {
    Item_arena::Release(Item_arena::SlabOf(room));
}

} // namespace io
