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

bool Item_arena::NextSlab() {
    if (!kHasSlabs || mItemCount++ < kFirstItems)
        return false;
    /// Leaves room for what the allocator keeps between two slabs.
    constexpr std::size_t kSlabBytes = kSlabAlignment - 64;
    void* const room = ::operator new(kSlabBytes, std::align_val_t(kSlabAlignment));
    LeaveSlab();
    new (room) Slab{1};
    constexpr std::size_t kHeadBytes = 16;
    static_assert(sizeof(Slab) <= kHeadBytes);
    mNext = static_cast<char*>(room) + kSlabBytes;
    mLeft = kSlabBytes - kHeadBytes;
    return true;
}

void Item_arena::LeaveSlab() noexcept {
    if (mNext)
        Release(SlabOf(mNext - 1));
}

void Item_arena::Destroy(CBlock_item& item) noexcept {
    Slab& slab = SlabOf(&item);
    item.~CBlock_item();
    Release(slab);
}

} // namespace io
