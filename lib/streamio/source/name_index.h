/// The index over the names of a large block.
#pragma once

#include <cstdint>
#include <set>
#include <string_view>
#include <vector>

#include "astring.h"
#include "block_ptr.h"
#include "compact_array.h"

namespace io {

/// An ordered multimap from the text of an item's name, without regard to case, to the slot of the
/// item in its block's list; items of one name are in the order of their slots. Holds the items
/// whose IsNamed is true, and takes their names as they are while it lasts.
class Name_index {
public:
    /// Indexes all items of a list; null ones are passed over.
    explicit Name_index(const Item_list& items);

    /// Enters a slot behind all others of the list.
    void Add(const Item_list& items, std::uint32_t slot);
    /// Takes a slot out, while its item is still there.
    void Remove(const CBlock_item& item, std::uint32_t slot);
    /// The first slot with an item of that name, or kNone.
    std::uint32_t Find(std::u16string_view name) const;
    /// True when the slot is the first with its name.
    bool IsFirst(std::uint32_t slot) const { return mIsFirst[slot]; }
    /// Items taken out so far.
    std::uint32_t GetRemovedCount() const noexcept { return mRemovedCount; }
    std::size_t GetHeldBytes() const noexcept;

    static constexpr std::uint32_t kNone = UINT32_MAX;

private:
    struct Key {
        std::u16string_view name;
        std::uint32_t slot;
    };
    struct Entry {
        AString name;
        std::uint32_t slot;
        operator Key() const noexcept { return {name, slot}; }
    };
    struct Less {
        using is_transparent = void;
        bool operator()(const Key& a, const Key& b) const noexcept;
    };
    using Slots = std::set<Entry, Less>;

    bool IsFirstOfName(Slots::const_iterator entry) const;

    Slots mSlots;
    std::vector<bool> mIsFirst; ///< by slot
    std::uint32_t mRemovedCount = 0;
};

} // namespace io
