/// A growing array that takes 16 bytes where it stands.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <utility>

#include "quorel_export.h"

namespace io {

/// Gives up room that an Item_arena has handed out for an array.
QUOREL_API void ReleaseArenaRoom(void* room) noexcept;

/// As std::vector, for members of many small objects: sizes are 31 bits, capacity starts at 1 and
/// doubles. T moves without throwing. Growing invalidates pointers; a size beyond 31 bits throws
/// std::bad_alloc.
template <class T>
class Compact_array {
public:
    Compact_array() noexcept = default;
    Compact_array(Compact_array&& other) noexcept { swap(other); }
    Compact_array(const Compact_array&) = delete;
    Compact_array& operator=(const Compact_array&) = delete;
    Compact_array& operator=(Compact_array&& other) noexcept {
        swap(other);
        return *this;
    }
    ~Compact_array() { Drop(); }

    void swap(Compact_array& other) noexcept {
        std::swap(mData, other.mData);
        std::swap(mSize, other.mSize);
        std::swap(mRoom, other.mRoom);
    }

    std::uint32_t size() const noexcept { return mSize; }
    std::uint32_t capacity() const noexcept { return mRoom & kMostCapacity; }
    bool empty() const noexcept { return mSize == 0; }
    T* begin() noexcept { return mData; }
    T* end() noexcept { return mData + mSize; }
    const T* begin() const noexcept { return mData; }
    const T* end() const noexcept { return mData + mSize; }
    T& operator[](std::size_t index) noexcept { return mData[index]; }
    const T& operator[](std::size_t index) const noexcept { return mData[index]; }
    T& back() noexcept { return mData[mSize - 1]; }

    void push_back(T value) {
        if (mSize == capacity())
            Grow(mSize == 0 ? 1 : std::size_t{mSize} * 2);
        new (mData + mSize) T(std::move(value));
        ++mSize;
    }
    void reserve(std::size_t wanted) {
        if (wanted > capacity())
            Grow(wanted);
    }
    /// Moves `count` elements behind those that are here, with no more room than they need.
    void append_moved(T* first, std::size_t count) {
        reserve(mSize + count);
        std::uninitialized_move_n(first, count, mData + mSize);
        mSize += static_cast<std::uint32_t>(count);
    }
    /// Moves `count` elements into an array that has no room of its own, into room for as many that
    /// an Item_arena has handed out.
    void take_moved(T* first, std::size_t count, void* arenaRoom) noexcept {
        mData = static_cast<T*>(arenaRoom);
        std::uninitialized_move_n(first, count, mData);
        mSize = static_cast<std::uint32_t>(count);
        mRoom = mSize | kIsInArena;
    }
    void erase(std::size_t index) noexcept {
        std::move(mData + index + 1, mData + mSize, mData + index);
        mData[--mSize].~T();
    }
    /// Drops the elements and their room.
    void clear() noexcept {
        Compact_array old;
        swap(old);
    }

private:
    static constexpr std::uint32_t kMostCapacity = 0x7FFFFFFF;
    static constexpr std::uint32_t kIsInArena = 0x80000000;

    void Grow(std::size_t wanted) {
        if (wanted > kMostCapacity)
            throw std::bad_alloc();
        T* data = std::allocator<T>().allocate(wanted);
        std::uninitialized_move_n(mData, mSize, data);
        const std::uint32_t size = mSize;
        Drop();
        mData = data;
        mSize = size;
        mRoom = static_cast<std::uint32_t>(wanted);
    }
    void Drop() noexcept {
        std::destroy_n(mData, mSize);
        if ((mRoom & kIsInArena) != 0)
            ReleaseArenaRoom(mData);
        else if (mData)
            std::allocator<T>().deallocate(mData, mRoom);
    }

    T* mData = nullptr;
    std::uint32_t mSize = 0;
    std::uint32_t mRoom = 0; ///< the capacity, and whether that room is an arena's
};

} // namespace io
