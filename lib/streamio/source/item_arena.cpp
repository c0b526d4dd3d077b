#include "item_arena.h"

#include <cstdint>
#include <new>

namespace io {

namespace {

/// Slabs begin at multiples of this, so that an item finds its own.
constexpr std::size_t kSlabAlignment = 0x4000;
/// Leaves room for what the allocator keeps between two slabs.
constexpr std::size_t kSlabBytes = kSlabAlignment - 64;

#if defined(__SANITIZE_ADDRESS__)
constexpr bool kHasSlabs = false; // each item on its own, so that a wrong use is seen
#elif defined(__has_feature)
constexpr bool kHasSlabs = !__has_feature(address_sanitizer);
#else
constexpr bool kHasSlabs = true;
#endif

} // namespace

struct Item_arena::Slab {
    std::uint32_t count; ///< items in it, and the arena that fills it
};

Item_arena::Slab& Item_arena::SlabOf(void* room) noexcept {
    const auto address = reinterpret_cast<std::uintptr_t>(room);
    return *reinterpret_cast<Slab*>(address & ~(kSlabAlignment - 1));
}

void Item_arena::Release(Slab& slab) noexcept {
    if (--slab.count == 0)
        ::operator delete(static_cast<void*>(&slab), std::align_val_t(kSlabAlignment));
}

bool Item_arena::NextSlab() {
    if (!kHasSlabs || mItemCount++ < kFirstItems)
        return false;
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

void Item_arena::Note(CBlock_item& item) noexcept {
    item.mIsInArena = 1;
    ++SlabOf(&item).count;
}

void Item_arena::Destroy(CBlock_item& item) noexcept {
    Slab& slab = SlabOf(&item);
    item.~CBlock_item();
    Release(slab);
}

} // namespace io
