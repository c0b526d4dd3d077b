/// Where a reader makes the items of a tree.
#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>

#include "block_ptr.h"
#include "compact_array.h"

namespace io {

/// Makes many small items and their lists at little cost, in slabs that they share; a slab goes
/// with the last of them. Lists have slabs of their own: who walks over a tree meets a list ahead
/// of the items, and memory that is read in its order is read ahead by the processor. The first
/// items are made one by one, so that a small tree takes no slab. Items may outlive the arena. All
/// items of one arena belong to one thread at a time, as the tree does that they are of.
class Item_arena {
public:
    Item_arena() = default;
    Item_arena(const Item_arena&) = delete;
    Item_arena& operator=(const Item_arena&) = delete;
    ~Item_arena();

    /// Makes a T, held by `item`.
    template <class T, class Base, class... Args>
    T& Make(Block_hold<Base>& item, Args&&... args) {
        static_assert(alignof(T) <= kAlignment && sizeof(T) % kAlignment == 0);
        void* const room = TakeForItem(sizeof(T));
        T* const made =
            room ? new (room) T(std::forward<Args>(args)...) : new T(std::forward<Args>(args)...);
        if (room)
            Note(*made);
        item = Block_hold<Base>(made);
        return *made;
    }
    /// Moves elements to the end of a list.
    template <class T>
    void Fill(Compact_array<T>& list, T* first, std::size_t count) {
        static_assert(alignof(T) <= kAlignment && sizeof(T) % kAlignment == 0);
        if (void* const room = list.capacity() == 0 ? TakeForList(count * sizeof(T)) : nullptr)
            list.take_moved(first, count, room);
        else
            list.append_moved(first, count);
    }

    /// Destroys an item of any arena.
    static void Destroy(CBlock_item& item) noexcept;

private:
    friend void ReleaseArenaRoom(void* room) noexcept;

    struct Slab {
        std::uint32_t count; ///< items or lists in it, and the arena that fills it
    };
    /// Slabs begin at multiples of this, so that an item finds its own.
    static constexpr std::size_t kSlabAlignment = 0x4000;
    static constexpr std::size_t kAlignment = 8;
    static constexpr unsigned kFirstItems = 128;
    /// Longer lists stand alone, so that little of a slab is left over.
    static constexpr std::size_t kMostListBytes = 1024;

    /// A slab that is being filled.
    struct Filling {
        char* end = nullptr;
        std::size_t left = 0; ///< bytes in front of it that are free

        void* Take(std::size_t bytes) {
            if (bytes > left)
                Next();
            left -= bytes;
            return end - left - bytes;
        }
        void Next();
        void Leave() noexcept;
    };

    /// Room for an item; null while items are made one by one.
    void* TakeForItem(std::size_t bytes) {
        return mHasSlabs || HasManyItems() ? mItems.Take(bytes) : nullptr;
    }
    /// Room for a list; null when it is to stand alone.
    void* TakeForList(std::size_t bytes) {
        if (!mHasSlabs || bytes == 0 || bytes > kMostListBytes)
            return nullptr;
        void* const room = mLists.Take(bytes);
        ++SlabOf(room).count;
        return room;
    }
    bool HasManyItems() noexcept;
    static void Note(CBlock_item& item) noexcept {
        item.mIsInArena = 1;
        ++SlabOf(&item).count;
    }
    static Slab& SlabOf(void* room) noexcept {
        const auto address = reinterpret_cast<std::uintptr_t>(room);
        return *reinterpret_cast<Slab*>(address & ~(kSlabAlignment - 1));
    }
    static void Release(Slab& slab) noexcept;

    Filling mItems;
    Filling mLists;
    unsigned mItemCount = 0;
    bool mHasSlabs = false;
};

} // namespace io
