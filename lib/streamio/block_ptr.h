/// Shared pointers to the nodes of a block tree.
#pragma once

#include <type_traits>
#include <utility>

#include "block_item.h"

namespace io {

/// What lists of items hold: a counted pointer of 8 bytes. Elsewhere use CBlock_ptr.
template <class T>
class Block_hold {
public:
    Block_hold() noexcept = default;
    explicit Block_hold(T* item) noexcept : mItem(item) {
        if (mItem)
            mItem->mRefCount = (mItem->mRefCount + 1) & kMaxCount;
    }
    Block_hold(const Block_hold& other) noexcept : Block_hold(other.mItem) {}
    Block_hold(Block_hold&& other) noexcept : mItem(std::exchange(other.mItem, nullptr)) {}
    Block_hold& operator=(Block_hold other) noexcept {
        std::swap(mItem, other.mItem);
        return *this;
    }
    ~Block_hold() {
        if (mItem && --mItem->mRefCount == 0)
            CBlock_item::Destroy(*mItem);
    }
    T* get() const noexcept { return mItem; }

private:
    static constexpr std::uint32_t kMaxCount = 0x7FFFFFFF;

    T* mItem = nullptr;
};

/// Shares an item of class T with other pointers and with the blocks that it stands in; the last to
/// leave destroys it. May be null. For one thread at a time.
template <class T>
class CBlock_ptr : public CStreamio_object {
public:
    CBlock_ptr() noexcept = default;
    CBlock_ptr(std::nullptr_t) noexcept {}
    CBlock_ptr(T* item) noexcept : mHold(item) {}
    /// From another class of items by a checked cast; null on a mismatch.
    template <class U>
    CBlock_ptr(const CBlock_ptr<U>& other) : mHold(Cast(other.get())) {}
    CBlock_ptr(const CBlock_ptr&) noexcept = default;
    CBlock_ptr(CBlock_ptr&& other) noexcept : mHold(std::move(other.mHold)) {}
    CBlock_ptr& operator=(const CBlock_ptr&) noexcept = default;
    CBlock_ptr& operator=(CBlock_ptr&& other) noexcept {
        mHold = std::move(other.mHold);
        return *this;
    }

    T* get() const noexcept { return mHold.get(); }
    T* operator->() const noexcept { return get(); }
    T& operator*() const noexcept { return *get(); }
    explicit operator bool() const noexcept { return get() != nullptr; }
    friend bool operator==(const CBlock_ptr& a, const CBlock_ptr& b) noexcept {
        return a.get() == b.get();
    }

    /// Forwards to the item; a null pointer does nothing.
    void Read(CAbstract_istream& stream) override {
        if (get())
            get()->Read(stream);
    }
    void Write(CAbstract_ostream& stream) const override {
        if (get())
            get()->Write(stream);
    }

private:
    template <class U>
    static T* Cast(U* item) {
        if constexpr (std::is_base_of_v<T, U>)
            return item;
        else
            return dynamic_cast<T*>(item);
    }

    Block_hold<T> mHold;
};

/// Any item of a block. Its Read makes an item of the class that the stream tells.
class QUOREL_API CBlockItemPtr : public CBlock_ptr<CBlock_item> {
public:
    using CBlock_ptr::CBlock_ptr;
    CBlockItemPtr() = default;
    /// Reads a block, named value, function or vector and holds it. Throws XStreamioError, and then
    /// holds what it held.
    void Read(CAbstract_istream& stream) override;
};

/// Any argument of a function. Its Read makes an item of the class that the stream tells.
class QUOREL_API CBlockFuncArgPtr : public CBlock_ptr<CBlock_func_arg> {
public:
    using CBlock_ptr::CBlock_ptr;
    CBlockFuncArgPtr() = default;
    /// Reads a named value, function, vector or bare value, which is Null where nothing stands.
    /// Throws XStreamioError, and then holds what it held.
    void Read(CAbstract_istream& stream) override;
};

} // namespace io
