#include "name_index.h"

#include <algorithm>

namespace io {

bool Name_index::Less::operator()(const Key& a, const Key& b) const noexcept {
    const AStringNoCaseLess less;
    return less(a.name, b.name) || (!less(b.name, a.name) && a.slot < b.slot);
}

Name_index::Name_index(const Item_list& items) : mIsFirst(items.size()) {
    std::vector<Entry> entries;
    entries.reserve(items.size());
    for (std::uint32_t slot = 0; slot < items.size(); ++slot) {
        const CBlock_item* item = items[slot].get();
        if (item && item->IsNamed()) {
            entries.push_back({AString(), slot});
            item->GetName(entries.back().name);
        }
    }
    std::sort(entries.begin(), entries.end(), Less());
    for (Entry& entry : entries)
        mSlots.emplace_hint(mSlots.end(), std::move(entry));
    for (auto entry = mSlots.begin(); entry != mSlots.end(); ++entry)
        mIsFirst[entry->slot] = IsFirstOfName(entry);
}

bool Name_index::IsFirstOfName(Slots::const_iterator entry) const {
    return entry == mSlots.begin() || AStringNoCaseLess()(std::prev(entry)->name, entry->name);
}

void Name_index::Add(const Item_list& items, std::uint32_t slot) {
    mIsFirst.resize(slot + std::size_t{1});
    const CBlock_item& item = *items[slot].get();
    if (!item.IsNamed())
        return;
    Entry entry{AString(), slot};
    item.GetName(entry.name);
    mIsFirst[slot] = IsFirstOfName(mSlots.insert(std::move(entry)).first);
}

void Name_index::Remove(const CBlock_item& item, std::uint32_t slot) {
    ++mRemovedCount;
    AString name;
    item.GetName(name);
    auto entry = mSlots.find(Key{name, slot});
    if (entry == mSlots.end()) // renamed since, or not named
        entry = std::find_if(mSlots.begin(), mSlots.end(),
                             [slot](const Entry& other) { return other.slot == slot; });
    if (entry == mSlots.end())
        return;
    entry = mSlots.erase(entry);
    if (entry != mSlots.end() && mIsFirst[slot])
        mIsFirst[entry->slot] = IsFirstOfName(entry);
    mIsFirst[slot] = false;
}

std::uint32_t Name_index::Find(std::u16string_view name) const {
    const auto entry = mSlots.lower_bound(Key{name, 0});
    if (entry == mSlots.end() || AStringNoCaseLess()(name, entry->name))
        return kNone;
    return entry->slot;
}

std::size_t Name_index::GetHeldBytes() const noexcept {
    constexpr std::size_t kNodeBytes = sizeof(Entry) + 4 * sizeof(void*);
    return sizeof *this + mSlots.size() * kNodeBytes + mIsFirst.size() / 8;
}

} // namespace io
