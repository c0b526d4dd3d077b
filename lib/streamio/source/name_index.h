/// The index over the names of a large block.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "block_ptr.h"
#include "compact_array.h"

namespace io {

/// An ordered multimap from the text of an item's name, without regard to case, to the slot of the
/// item in its block's list; items of one name are in the order of their slots. Holds the items
/// whose IsNamed is true, and takes their names as they are while it lasts.
///
/// Keys are ordered by a hash of the name first, and lie side by side in sorted pieces, so that a
/// look-up costs few misses of the processor's caches. Names of one hash are ordered by their text:
/// a file made to collide costs no more than the logarithm either.
class Name_index {
public:
    /// Indexes all items of a list; null ones are passed over.
    explicit Name_index(const Item_list& items);

    /// Enters a slot behind all others of the list.
    void Add(const Item_list& items, std::uint32_t slot);
    /// Takes the slot of an item out.
    void Remove(std::uint32_t slot);
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
        std::uint32_t hash;
        std::uint32_t slot;
    };
    /// What is looked for.
    struct Target {
        std::u16string_view name;
        Key key;
    };
    struct Piece {
        Key first;
        std::vector<Key> keys; ///< sorted; never empty
    };

    bool IsBefore(const Key& key, const Target& target) const;
    bool EnterName(const CBlock_item* item, std::uint32_t slot);
    Piece& FindPiece(const Target& target);
    void Insert(const Target& target);

    std::vector<CToken> mNames; ///< by slot
    std::vector<Piece> mPieces; ///< sorted
    std::vector<bool> mIsFirst; ///< by slot
    std::uint32_t mRemovedCount = 0;
};

} // namespace io
