#include "profile_file.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <limits>

#include "file_io.h"
#include "profile_line.h"

// The text is kept as it was read; sections and keys are offsets into it. Each list of names has an
// index: slots sorted by a hash of the name, then by the name, then by place. Sorting rather than a
// hash table, since no choice of names makes it slow: names with equal hashes just cost a
// comparison. The place decides which of equal names is the first.

namespace sys {
namespace {

/// 32-bit FNV-1a (Fowler, Noll, Vo) of the name in lower case.
std::uint32_t HashName(std::string_view name) {
    std::uint32_t hash = 2166136261u;
    for (const char byte : name) {
        hash = (hash ^ LowerByte(byte)) * 16777619u;
    }
    return hash;
}

std::uint32_t Narrow(std::size_t value) {
    static_assert(ProfileFile::kMaxSize <= std::numeric_limits<std::uint32_t>::max());
    return static_cast<std::uint32_t>(value);
}

/// The number behind a key's stem, -1 unless it is all of the text and written without leading
/// zeros.
std::int32_t ReadKeyNumber(std::string_view digits) {
    std::int32_t number = -1;
    const char* end = digits.data() + digits.size();
    const auto result = std::from_chars(digits.data(), end, number);
    const bool isWritten = digits == "0" || (digits[0] >= '1' && digits[0] <= '9');
    return result.ec == std::errc() && result.ptr == end && isWritten ? number : -1;
}

} // namespace

Status ProfileFile::Open(const std::string& path) {
    std::string text;
    Status status = ReadWholeFile(path, kMaxSize, text);
    if (!status) {
        Clear();
        return status;
    }
    return Parse(std::move(text));
}

Status ProfileFile::Parse(std::string text) {
    Clear();
    if (text.size() > kMaxSize) {
        return Failure("read", "profile", EFBIG);
    }
    mText = std::move(text);
    ReadSections();
    for (Section& section : mSections) {
        ReadKeys(section);
    }
    mHasFile = true;
    return {};
}

void ProfileFile::Clear() {
    *this = ProfileFile();
}

std::uint32_t ProfileFile::OffsetOf(std::string_view part) const {
    return part.empty() ? 0 : Narrow(static_cast<std::size_t>(part.data() - mText.data()));
}

template <class Item>
std::string_view ProfileFile::NameOf(const Item& item) const {
    return std::string_view(mText).substr(item.name, item.nameLength);
}

std::string_view ProfileFile::ValueOf(const Key& key) const {
    return std::string_view(mText).substr(key.value, key.valueLength);
}

void ProfileFile::ReadSections() {
    std::string_view rest = SkipByteOrderMark(mText);
    while (!rest.empty()) {
        const std::string_view text = TakeLine(rest);
        const ProfileLine line = ReadProfileLine(text);
        if (line.kind == ProfileLine::Kind::kSection) {
            const std::uint32_t body = Narrow(mText.size() - rest.size());
            mSections.push_back({OffsetOf(line.name), Narrow(line.name.size()), body, 0, 0, 0});
        } else if (!mSections.empty()) {
            Section& section = mSections.back();
            section.bodyLength = Narrow(mText.size() - rest.size()) - section.body;
        }
    }
    IndexNames(mSections, 0, mSectionIndex);
}

void ProfileFile::ReadKeys(Section& section) {
    section.firstKey = Narrow(mKeys.size());
    std::string_view rest = std::string_view(mText).substr(section.body, section.bodyLength);
    while (!rest.empty()) {
        const ProfileLine line = ReadProfileLine(TakeLine(rest));
        if (line.kind == ProfileLine::Kind::kKey) {
            mKeys.push_back({OffsetOf(line.name), Narrow(line.name.size()), OffsetOf(line.value),
                             Narrow(line.value.size())});
        }
    }
    IndexNames(mKeys, section.firstKey, mKeyIndex);
    section.keyCount = Narrow(mKeys.size()) - section.firstKey;
}

/// Appends the slots of the items from `first` on to `index`, and drops each item whose name came
/// before.
template <class Item>
void ProfileFile::IndexNames(std::vector<Item>& items, std::size_t first,
                             std::vector<Slot>& index) const {
    const auto nameOf = [&](const Slot& slot) { return NameOf(items[first + slot.item]); };
    const std::size_t start = index.size();
    for (std::size_t i = first; i < items.size(); ++i) {
        index.push_back({HashName(NameOf(items[i])), Narrow(i - first)});
    }
    const auto slots = index.begin() + static_cast<std::ptrdiff_t>(start);
    std::sort(slots, index.end(), [&](const Slot& left, const Slot& right) {
        if (left.hash != right.hash) {
            return left.hash < right.hash;
        }
        const int order = CompareNames(nameOf(left), nameOf(right));
        return order != 0 ? order < 0 : left.item < right.item;
    });
    const auto end = std::unique(slots, index.end(), [&](const Slot& left, const Slot& right) {
        return left.hash == right.hash && CompareNames(nameOf(left), nameOf(right)) == 0;
    });
    if (end != index.end()) {
        index.erase(end, index.end());
        DropWithoutSlot(items, first, std::span(index).subspan(start));
    }
}

/// Closes the gaps: the items that have a slot move up, and the slots follow them.
template <class Item>
void ProfileFile::DropWithoutSlot(std::vector<Item>& items, std::size_t first,
                                  std::span<Slot> slots) {
    std::vector<std::uint32_t> place(items.size() - first, 0);
    for (const Slot& slot : slots) {
        place[slot.item] = 1;
    }
    std::uint32_t kept = 0;
    for (std::size_t i = 0; i < place.size(); ++i) {
        if (place[i] != 0) {
            items[first + kept] = items[first + i];
            place[i] = kept++;
        }
    }
    items.resize(first + kept);
    for (Slot& slot : slots) {
        slot.item = place[slot.item];
    }
}

template <class Item>
const Item* ProfileFile::Find(const Item* items, const Slot* slots, std::size_t count,
                              std::string_view name) const {
    const std::uint32_t hash = HashName(name);
    const Slot* end = slots + count;
    const Slot* found =
        std::lower_bound(slots, end, name, [&](const Slot& slot, std::string_view wanted) {
            return slot.hash != hash ? slot.hash < hash
                                     : CompareNames(NameOf(items[slot.item]), wanted) < 0;
        });
    if (found == end || found->hash != hash ||
        CompareNames(NameOf(items[found->item]), name) != 0) {
        return nullptr;
    }
    return items + found->item;
}

const ProfileFile::Section* ProfileFile::FindSection(std::string_view section) const {
    return Find(mSections.data(), mSectionIndex.data(), mSections.size(), section);
}

const ProfileFile::Key* ProfileFile::FindKey(std::string_view section, std::string_view key) const {
    const Section* found = FindSection(section);
    return found == nullptr ? nullptr
                            : Find(mKeys.data() + found->firstKey,
                                   mKeyIndex.data() + found->firstKey, found->keyCount, key);
}

bool ProfileFile::HasSection(std::string_view section) const {
    return FindSection(section) != nullptr;
}

bool ProfileFile::HasKey(std::string_view section, std::string_view key) const {
    return FindKey(section, key) != nullptr;
}

std::string_view ProfileFile::GetString(std::string_view section, std::string_view key,
                                        std::string_view fallback) const {
    const Key* found = FindKey(section, key);
    return found == nullptr ? fallback : ValueOf(*found);
}

std::int32_t ProfileFile::GetInt(std::string_view section, std::string_view key,
                                 std::int32_t fallback) const {
    using Limits = std::numeric_limits<std::int32_t>;
    std::string_view text = GetString(section, key);
    const bool isNegative = text.starts_with('-');
    if (text.starts_with('+') && !text.starts_with("+-")) {
        text.remove_prefix(1);
    }
    std::int32_t number = fallback;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
    if (result.ec == std::errc::result_out_of_range) {
        return isNegative ? Limits::min() : Limits::max();
    }
    return number;
}

std::size_t ProfileFile::CountKeys(std::string_view section) const {
    const Section* found = FindSection(section);
    return found == nullptr ? 0 : found->keyCount;
}

std::vector<std::int32_t> ProfileFile::GetNumberedKeys(std::string_view section,
                                                       std::string_view stem,
                                                       std::int32_t count) const {
    std::vector<std::int32_t> numbers;
    const Section* found = FindSection(section);
    if (found == nullptr) {
        return numbers;
    }
    for (const Key& key : std::span(mKeys).subspan(found->firstKey, found->keyCount)) {
        const std::string_view name = NameOf(key);
        if (name.size() > stem.size() && CompareNames(name.substr(0, stem.size()), stem) == 0) {
            const std::int32_t number = ReadKeyNumber(name.substr(stem.size()));
            if (number >= 0 && number < count) {
                numbers.push_back(number);
            }
        }
    }
    std::sort(numbers.begin(), numbers.end());
    return numbers;
}

std::string_view ProfileFile::GetSectionName(std::size_t section) const {
    return NameOf(mSections[section]);
}

std::string_view ProfileFile::GetKeyName(std::size_t section, std::size_t key) const {
    return NameOf(mKeys[mSections[section].firstKey + key]);
}

std::string_view ProfileFile::GetValue(std::size_t section, std::size_t key) const {
    return ValueOf(mKeys[mSections[section].firstKey + key]);
}

} // namespace sys
