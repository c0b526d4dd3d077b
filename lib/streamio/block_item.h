/// The nodes of a block tree.
#pragma once

#include <array>
#include <cstdint>

#include "assertion.h"
#include "streamio_object.h"
#include "token.h"

namespace io {

class CBlock_item;
template <class T>
class Block_hold;
template <class T>
class Compact_array;
/// The children of an item.
using Item_list = Compact_array<Block_hold<CBlock_item>>;

/// Memory that a subtree holds, for diagnostics.
struct Block_stats {
    enum Tally {
        kNameBytes,  ///< texts of names outside their tokens
        kValueBytes, ///< texts of values outside their tokens
        kBlocks,     ///< items by their class, from here to kVectors
        kFunctions,
        kNamedValues,
        kValues,
        kVectors,
        kItemBytes,  ///< the items themselves
        kListBytes,  ///< lists of items, arguments, elements and errors
        kIndexBytes, ///< indexes over names
        kTallyCount
    };
    std::array<std::uint32_t, kTallyCount> tally{};

    void Add(Tally which, std::size_t amount) noexcept {
        tally[which] += static_cast<std::uint32_t>(amount);
    }
};

/// A node of a block tree. It is shared by a plain count that CBlock_ptr keeps and belongs to one
/// thread at a time. An item must not be changed once it stands in a second block. An item on the
/// stack must not be given to a CBlock_ptr that outlives it.
class QUOREL_API CBlock_item : public CStreamio_object {
public:
    CBlock_item() = default;
    /// The count belongs to the object and not to its value.
    CBlock_item(const CBlock_item&) noexcept : CStreamio_object() {}
    CBlock_item& operator=(const CBlock_item&) noexcept { return *this; }
    ~CBlock_item() override { USE_ASSERT(mRefCount == 0); }

    /// Reads one item of this class from a text; false if there is none, or if it has errors. The
    /// item is emptied first. Nothing is thrown.
    bool FromString(const AString& text) override;

    /// The text of the name; empty for items that have none, and for names that carry no text.
    virtual void GetName(AString& name) const;
    /// Gives a single-quoted name. Does nothing for items that have none.
    virtual void SetName(const AString& name);
    /// The name, or a Null token.
    virtual const CToken& GetNameToken() const;
    virtual bool IsNamed() const { return false; }
    /// No value (kind Null), items, arguments or elements.
    virtual bool IsEmpty() const = 0;
    /// Items, arguments or elements; for a value 1, or 0 if it is Null.
    virtual unsigned GetSize() const = 0;
    /// Makes the item empty, all but its name.
    virtual void Clear() = 0;
    virtual bool IsNamedValue() const { return false; }
    virtual bool IsValue() const { return false; }
    virtual bool IsBlock() const { return false; }
    virtual bool IsFunc() const { return false; }
    virtual bool IsVec() const { return false; }
    /// What this subtree holds, with or without this very item.
    virtual Block_stats GetStats(bool includeSelf) const;

protected:
    friend class Item_walk;
    /// Items or arguments; null for items that can't have any.
    virtual const Item_list* GetChildren() const { return nullptr; }
    /// Adds what this item holds itself, without its children.
    virtual void AddStats(Block_stats& stats) const = 0;
    /// Reads an item of this class with its name. False if the stream holds another one; may throw.
    virtual bool ReadWhole(CAbstract_istream& stream) = 0;

private:
    template <class T>
    friend class Block_hold;
    friend class Item_arena;

    /// Ends an item that nobody holds any more.
    static void Destroy(CBlock_item& item) noexcept;

    std::uint32_t mRefCount : 31 = 0;
    std::uint32_t mIsInArena : 1 = 0; ///< made by a reader in an Item_arena
};

/// What may stand as an argument of a function-style item.
class QUOREL_API CBlock_func_arg : public CBlock_item {};

} // namespace io
