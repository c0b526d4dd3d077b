/// A named, ordered list of items.
#pragma once

#include <cstddef>
#include <iterator>
#include <memory>
#include <vector>

#include "block_ptr.h"
#include "compact_array.h"
#include "read_error.h"

namespace io {

class CBlock_func;
class CBlock_named_value;
class Name_index;

/// A block of items, shared by pointers that are never null: `$begin 'Name'`, the items, `$end
/// 'Name'`. Items of one name may stand in it; look-ups give the first. Names are compared without
/// regard to case, and a quoted name and an identifier of the same letters are the same name.
///
/// A look-up costs the logarithm of the number of items, through an index over names that the
/// first look-up of a large block builds; in stored order it costs one comparison. Look-ups move a
/// cursor: two readers of one block must not take turns with its result.
class QUOREL_API CBlock : public CBlock_item {
public:
    /// A place among the items, good until an item is removed or all are.
    class Position {
    public:
        using iterator_category = std::input_iterator_tag;
        using value_type = CBlockItemPtr;
        using difference_type = std::ptrdiff_t;
        using pointer = void;
        using reference = CBlockItemPtr;

        Position() = default;
        CBlockItemPtr operator*() const { return CBlockItemPtr(mBlock->mItems[mSlot].get()); }
        CBlock_item* operator->() const { return mBlock->mItems[mSlot].get(); }
        Position& operator++() {
            mSlot = mBlock->NextSlot(mSlot + 1);
            return *this;
        }
        Position operator++(int) {
            Position old = *this;
            ++*this;
            return old;
        }
        friend bool operator==(const Position& a, const Position& b) { return a.mSlot == b.mSlot; }

    private:
        friend class CBlock;
        Position(const CBlock& block, std::uint32_t slot) : mBlock(&block), mSlot(slot) {}

        const CBlock* mBlock = nullptr;
        std::uint32_t mSlot = 0;
    };

    CBlock();
    /// A single-quoted name.
    explicit CBlock(const AString& name);
    explicit CBlock(CToken name);
    /// Shares the items; errors are not copied.
    CBlock(const CBlock& other);
    CBlock& operator=(const CBlock& other);
    ~CBlock() override;

    Position begin() const { return Position(*this, NextSlot(0)); }
    Position end() const { return Position(*this, mItems.size()); }

    /// Appends a shared item; a null pointer is ignored. Its name must not change any more.
    void AddItem(const CBlockItemPtr& item);
    /// Append a new item with the name and contents of the argument.
    void Add(const CBlock& block);
    void Add(const CBlock_func& func);
    void Add(const CBlock_named_value& value);
    /// Appends every item of another block, shared. The block itself is asserted and ignored.
    void Append(const CBlock& a_block);

    /// The first item of that name, or end().
    Position Find(const AString& name) const;
    /// Look up the argument's own name. If the first item of that name is of the argument's class,
    /// copy its value, items or arguments; otherwise false, and the argument is left alone.
    bool Get(CBlock_named_value& value) const;
    bool Get(CBlock& block) const;
    bool Get(CBlock_func& func) const;
    /// Whether the last Find or Get succeeded.
    bool WasFound() const noexcept { return mFound; }
    /// Takes an item out of the block; end() does nothing.
    void Remove(Position position);

    bool HasErrors(bool recursive) const;
    /// Appends one text for each line with an error, "name:line: message" with the name of the
    /// block that met it, in the order of lines. Of several errors on a line the first found is
    /// told, a block's own before those of its children. Returns whether there was any.
    bool GetErrors(std::vector<AString>& errors, bool recursive) const;
    /// The block's own errors in the order of reading.
    const Compact_array<XStreamioError>& GetErrorList() const noexcept { return mErrors; }

    /// Appends what the stream holds of a block, from its begin word on. What is no block gives
    /// kBeginEnd and leaves the stream failed. An error in an item is noted here, costs the rest of
    /// its line, and reading goes on; nothing is thrown for it. Nesting of more than
    /// kMaxBlockNesting blocks, or functions, is such an error (kItem).
    void Read(CAbstract_istream& stream) override;
    void Write(CAbstract_ostream& stream) const override;

    void GetName(AString& name) const override;
    void SetName(const AString& name) override;
    const CToken& GetNameToken() const override { return mName; }
    bool IsNamed() const override { return true; }
    bool IsEmpty() const override { return GetSize() == 0; }
    unsigned GetSize() const override;
    /// Drops items and errors.
    void Clear() override;
    bool IsBlock() const override { return true; }

protected:
    const Item_list* GetChildren() const override { return &mItems; }
    void AddStats(Block_stats& stats) const override;
    bool ReadWhole(CAbstract_istream& stream) override;

private:
    friend class Block_reader;

    /// The first slot from `slot` on that holds an item.
    std::uint32_t NextSlot(std::uint32_t slot) const noexcept;
    std::uint32_t FindSlot(std::u16string_view name) const;
    Position FindName(std::u16string_view name) const;
    /// The item of the target's name if it is of the class that `isOfClass` tells.
    const CBlock_item* FindOfClass(const CBlock_item& target,
                                   bool (CBlock_item::*isOfClass)() const) const;
    void DropEmptySlots();
    void ForgetNames();

    mutable std::uint32_t mCursor : 31 = 0; ///< the slot behind the last one found
    mutable std::uint32_t mFound : 1 = 0;
    CToken mName;
    Item_list mItems; ///< null where an item was removed
    Compact_array<XStreamioError> mErrors;
    mutable std::unique_ptr<Name_index> mNameIndex; ///< built by the first look-up that is worth it
};

/// Blocks around an item, and functions around an argument, that a reader follows.
inline constexpr unsigned kMaxBlockNesting = 1000;

/// A CBlock_ptr to a new block.
class QUOREL_API CBlockPtr : public CBlock_ptr<CBlock> {
public:
    using CBlock_ptr::CBlock_ptr;
    CBlockPtr() = default;
    /// Makes a new block of that name.
    explicit CBlockPtr(const AString& name) : CBlock_ptr(new CBlock(name)) {}
};

} // namespace io
