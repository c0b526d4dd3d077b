#include "name_index.h"

#include <algorithm>
#include <cstring>

#include "char_class.h"

namespace io {

namespace {

/// The order of two names without regard to case: below 0, 0 or above 0. Long common parts, such as
/// those of the paths of an index, cost little.
int Compare(std::u16string_view a, std::u16string_view b) noexcept {
    constexpr std::size_t kPiece = 32;
    const std::size_t common = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < common;) {
        const std::size_t end = std::min(i + kPiece, common);
        if (std::memcmp(a.data() + i, b.data() + i, (end - i) * sizeof(char16_t)) == 0)
            i = end;
        for (; i < end; ++i)
            if (const int order = chars::ToLower(a[i]) - chars::ToLower(b[i]))
                return order;
    }
    return a.size() == b.size() ? 0 : a.size() < b.size() ? -1 : 1;
}

} // namespace

bool Name_index::Less::operator()(const Key& a, const Key& b) const noexcept {
    const int order = Compare(a.name, b.name);
    return order != 0 ? order < 0 : a.slot < b.slot;
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
    return entry == mSlots.begin() || Compare(std::prev(entry)->name, entry->name) != 0;
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
    if (entry == mSlots.end() || Compare(name, entry->name) != 0)
        return kNone;
    return entry->slot;
}

std::size_t Name_index::GetHeldBytes() const noexcept {
    constexpr std::size_t kNodeBytes = sizeof(Entry) + 4 * sizeof(void*);
    return sizeof *this + mSlots.size() * kNodeBytes + mIsFirst.size() / 8;
}

} // namespace io
