#include "name_index.h"

#include <algorithm>
#include <cstring>

#include "char_class.h"
#include "names.h"

namespace io {

namespace {

/// Keys of a piece; a piece with more is split in two.
constexpr std::size_t kMostKeys = 512;

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

/// FNV-1a over the units of a name in lower case (Fowler, Noll and Vo, 1991).
std::uint32_t HashOf(std::u16string_view name) noexcept {
    std::uint32_t hash = 2166136261U;
    for (const char16_t ch : name)
        hash = (hash ^ chars::ToLower(ch)) * 16777619U;
    return hash;
}

} // namespace

/// Whether a key stands in front of what is looked for.
bool Name_index::IsBefore(const Key& key, const Target& target) const {
    if (key.hash != target.key.hash)
        return key.hash < target.key.hash;
    const int order = Compare(Name_text(mNames[key.slot]), target.name);
    return order != 0 ? order < 0 : key.slot < target.key.slot;
}

/// Takes the name of an item at the end of the list; false if it has none to be indexed.
bool Name_index::EnterName(const CBlock_item* item, std::uint32_t slot) {
    mNames.resize(slot + std::size_t{1});
    mIsFirst.resize(mNames.size());
    if (!item || !item->IsNamed())
        return false;
    mNames[slot] = NameTextToken(*item);
    return true;
}

Name_index::Name_index(const Item_list& items) {
    mNames.reserve(items.size());
    mIsFirst.reserve(items.size());
    std::vector<Key> keys;
    keys.reserve(items.size());
    for (std::uint32_t slot = 0; slot < items.size(); ++slot)
        if (EnterName(items[slot].get(), slot))
            keys.push_back({HashOf(Name_text(mNames[slot])), slot});
    std::sort(keys.begin(), keys.end(), [&](const Key& a, const Key& b) {
        return a.hash != b.hash ? a.hash < b.hash : IsBefore(a, {Name_text(mNames[b.slot]), b});
    });
    for (auto key = keys.begin(); key != keys.end();) {
        const auto end = key + std::min<std::ptrdiff_t>(keys.end() - key, kMostKeys / 2);
        mPieces.push_back({*key, {key, end}});
        key = end;
    }
    for (std::size_t i = 0; i < keys.size(); ++i)
        mIsFirst[keys[i].slot] =
            i == 0 || keys[i - 1].hash != keys[i].hash ||
            Compare(Name_text(mNames[keys[i - 1].slot]), Name_text(mNames[keys[i].slot])) != 0;
}

/// The last piece that begins in front of a key, or the first one. There must be one.
Name_index::Piece& Name_index::FindPiece(const Target& target) {
    const auto behind =
        std::partition_point(mPieces.begin(), mPieces.end(),
                             [&](const Piece& piece) { return IsBefore(piece.first, target); });
    return behind == mPieces.begin() ? *behind : *std::prev(behind);
}

void Name_index::Insert(const Target& target) {
    if (mPieces.empty()) {
        mPieces.push_back({target.key, {target.key}});
        return;
    }
    Piece& piece = FindPiece(target);
    std::vector<Key>& keys = piece.keys;
    keys.insert(std::partition_point(keys.begin(), keys.end(),
                                     [&](const Key& key) { return IsBefore(key, target); }),
                target.key);
    piece.first = keys.front();
    if (keys.size() <= kMostKeys)
        return;
    const auto middle = keys.begin() + kMostKeys / 2;
    Piece upper{*middle, {middle, keys.end()}};
    keys.erase(middle, keys.end());
    mPieces.insert(mPieces.begin() + (&piece - mPieces.data()) + 1, std::move(upper));
}

void Name_index::Add(const Item_list& items, std::uint32_t slot) {
    if (!EnterName(items[slot].get(), slot))
        return;
    const Name_text name(mNames[slot]);
    mIsFirst[slot] = Find(name) == kNone;
    Insert({name, {HashOf(name), slot}});
}

void Name_index::Remove(std::uint32_t slot) {
    ++mRemovedCount;
    const Name_text name(mNames[slot]);
    const Target target{name, {HashOf(name), slot}};
    if (mPieces.empty())
        return;
    // A piece that begins with the key is the one behind.
    Piece* piece = &FindPiece({name, {target.key.hash, slot + 1}});
    std::vector<Key>& keys = piece->keys;
    const auto key = std::partition_point(keys.begin(), keys.end(),
                                          [&](const Key& k) { return IsBefore(k, target); });
    if (key == keys.end() || key->slot != slot)
        return; // not named
    keys.erase(key);
    if (keys.empty())
        mPieces.erase(mPieces.begin() + (piece - mPieces.data()));
    else
        piece->first = keys.front();
    if (const std::uint32_t next = mIsFirst[slot] ? Find(name) : kNone; next != kNone)
        mIsFirst[next] = true;
    mIsFirst[slot] = false;
}

std::uint32_t Name_index::Find(std::u16string_view name) const {
    const Target target{name, {HashOf(name), 0}};
    auto piece = std::partition_point(mPieces.begin(), mPieces.end(),
                                      [&](const Piece& p) { return IsBefore(p.first, target); });
    const Key* found = piece == mPieces.end() ? nullptr : &piece->first;
    if (piece != mPieces.begin()) { // the one in front may hold it too
        const std::vector<Key>& keys = std::prev(piece)->keys;
        const auto key = std::partition_point(keys.begin(), keys.end(),
                                              [&](const Key& k) { return IsBefore(k, target); });
        found = key == keys.end() ? found : &*key;
    }
    const bool isFound = found && found->hash == target.key.hash &&
                         Compare(Name_text(mNames[found->slot]), name) == 0;
    return isFound ? found->slot : kNone;
}

std::size_t Name_index::GetHeldBytes() const noexcept {
    std::size_t bytes = sizeof *this + mNames.capacity() * sizeof(CToken) + mIsFirst.size() / 8;
    for (const Piece& piece : mPieces)
        bytes += sizeof piece + piece.keys.capacity() * sizeof(Key);
    return bytes;
}

} // namespace io
