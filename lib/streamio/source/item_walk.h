/// A walk over a block tree that needs no stack of calls.
#pragma once

#include <vector>

#include "block_ptr.h"
#include "compact_array.h"

namespace io {

/// Meets each item of a tree: a parent before its children, the children in order, and a parent
/// again behind them. The tree must not change meanwhile.
class Item_walk {
public:
    enum class Meeting { kLeaf, kOpen, kClose };

    explicit Item_walk(const CBlock_item& root) : mItem(&root) {}

    /// Goes on to the next meeting; false at the end.
    bool Next() {
        if (!mItem)
            return false;
        if (mIsStarted && !Advance())
            return false;
        mIsStarted = true;
        if (mMeeting != Meeting::kClose)
            mMeeting = mItem->GetChildren() ? Meeting::kOpen : Meeting::kLeaf;
        return true;
    }
    /// On to the next meeting with an item that wasn't met yet; null at the end.
    const CBlock_item* NextItem() {
        while (Next())
            if (mMeeting != Meeting::kClose)
                return mItem;
        return nullptr;
    }

    Meeting GetMeeting() const noexcept { return mMeeting; }
    const CBlock_item& GetItem() const noexcept { return *mItem; }
    /// The item's parent; null for the root.
    const CBlock_item* GetParent() const noexcept {
        return mOpen.empty() ? nullptr : mOpen.back().item;
    }
    /// True for the first child of its parent.
    bool IsFirst() const noexcept { return mIsFirst; }

private:
    struct Open {
        const CBlock_item* item;
        const Block_hold<CBlock_item>* next;
        const Block_hold<CBlock_item>* end;
    };

    bool Advance() {
        if (mMeeting == Meeting::kOpen) {
            const Item_list& children = *mItem->GetChildren();
            mOpen.push_back({mItem, children.begin(), children.end()});
            mIsFirst = true;
        } else {
            mIsFirst = false;
        }
        if (mOpen.empty())
            return false;
        Open& open = mOpen.back();
        while (open.next != open.end && !open.next->get())
            ++open.next;
        if (open.next == open.end) {
            mItem = open.item;
            mMeeting = Meeting::kClose;
            mOpen.pop_back();
        } else {
            mItem = (open.next++)->get();
            mMeeting = Meeting::kLeaf;
        }
        return true;
    }

    const CBlock_item* mItem;
    Meeting mMeeting = Meeting::kLeaf;
    bool mIsStarted = false;
    bool mIsFirst = true;
    std::vector<Open> mOpen;
};

} // namespace io
