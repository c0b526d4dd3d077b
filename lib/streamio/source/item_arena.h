/// Where a reader makes the items of a tree.
#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>

#include "block_ptr.h"

namespace io {

/// Makes many small items at little cost, in slabs that they share; a slab goes with its last item.
/// The first items are made one by one, so that a small tree takes no slab. Items may outlive the
/// arena. All items of one arena belong to one thread at a time, as the tree does that they are of.
class Item_arena {
public:
    Item_arena() = default;
    Item_arena(const Item_arena&) = delete;
    Item_arena& operator=(const Item_arena&) = delete;
    ~Item_arena() { LeaveSlab(); }

    /// Makes a T, held by `item`.
    template <class T, class Base, class... Args>
    T& Make(Block_hold<Base>& item, Args&&... args) {
        void* const room = Take(sizeof(T));
        T* const made =
            room ? new (room) T(std::forward<Args>(args)...) : new T(std::forward<Args>(args)...);
        if (room)
            Note(*made);
        item = Block_hold<Base>(made);
        return *made;
    }

    /// Destroys an item of any arena.
    static void Destroy(CBlock_item& item) noexcept;

private:
    struct Slab {
        std::uint32_t count; ///< items in it, and the arena that fills it
    };
    /// Slabs begin at multiples of this, so that an item finds its own.
    static constexpr std::size_t kSlabAlignment = 0x4000;
    static constexpr unsigned kFirstItems = 128;

    /// Room in the present slab; null while items are made one by one.
    void* Take(std::size_t bytes) {
        if (bytes > mLeft && !NextSlab())
            return nullptr;
        mLeft -= bytes;
        return mNext - mLeft - bytes;
    }
    static void Note(CBlock_item& item) noexcept {
        item.mIsInArena = 1;
        ++SlabOf(&item).count;
    }
    bool NextSlab();
    void LeaveSlab() noexcept;
    static Slab& SlabOf(void* room) noexcept {
        const auto address = reinterpret_cast<std::uintptr_t>(room);
        return *reinterpret_cast<Slab*>(address & ~(kSlabAlignment - 1));
    }
    static void Release(Slab& slab) noexcept;

    char* mNext = nullptr; ///< the end of the present slab
    std::size_t mLeft = 0; ///< bytes in front of it that are free
    unsigned mItemCount = 0;
};

} // namespace io
