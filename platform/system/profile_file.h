/// Reading of profile (INI) files.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "status.h"

namespace sys {

/// A profile file in memory, indexed, never changed after it was read.
///
/// The file is lines that end with LF, CR LF or CR; a UTF-8 byte order mark in front is skipped.
/// Bytes are 8-bit characters of no particular set; blanks are space and tab.
///
/// - "[name]" opens a section: the name reaches to the first "]" (without one to the line's end),
///   outer blanks stripped. Keys before the first section belong to none and are passed over.
/// - "key=value" is an entry: the value begins behind the first "=". Outer blanks of both are
///   stripped, then one pair of equal quotes (" or ') around the value, then the value is cut at
///   kMaxValue bytes. So a value that must keep its quotes or outer blanks stands in a further pair
///   of quotes.
/// - A line whose first character but blanks is ";" is a comment; other lines mean nothing.
/// - Names are compared without the case of ASCII letters. Of equal sections, and of equal keys in
///   a section, the first counts and the others are as if they weren't there.
///
/// Cost: for n bytes, whatever is in them, reading takes n log n at worst and memory for the text
/// and 24 bytes a key; a look-up takes log n. Texts given out are parts of the object: they live
/// until it is read anew or destroyed. Reading from several threads is safe.
class QUOREL_API ProfileFile {
public:
    static constexpr std::size_t kMaxValue = 1023;       ///< bytes of a value
    static constexpr std::size_t kMaxSize = 256u << 20u; ///< bytes of a file

    /// Reads a file. On failure the profile is empty, and each look-up gives its fallback.
    Status Open(const std::string& path);

    /// Reads a text. Fails, with an empty profile, only when it is longer than kMaxSize.
    Status Parse(std::string text);

    /// True when the last Open or Parse succeeded.
    bool HasFile() const { return mHasFile; }

    bool HasSection(std::string_view section) const;
    bool HasKey(std::string_view section, std::string_view key) const;
    /// The keys of a section; 0 for one that isn't there.
    std::size_t CountKeys(std::string_view section) const;

    /// The value, or `fallback` when there is no such key. A key without text behind "=" has the
    /// empty value.
    std::string_view GetString(std::string_view section, std::string_view key,
                               std::string_view fallback = {}) const;

    /// The longest decimal prefix of the value, with an optional sign, kept within 32 bits;
    /// `fallback` when there is no such key or no digit.
    std::int32_t GetInt(std::string_view section, std::string_view key,
                        std::int32_t fallback = 0) const;

    /// The numbers d below `count` for which the key `stem` followed by d (decimal, no leading
    /// zero) is there, ascending. Costs the section's keys, whatever the count says.
    std::vector<std::int32_t> GetNumberedKeys(std::string_view section, std::string_view stem,
                                              std::int32_t count) const;

    /// Sections in file order. An index must be below the count.
    std::size_t GetSectionCount() const { return mSections.size(); }
    std::string_view GetSectionName(std::size_t section) const;

    /// Keys of a section in file order.
    std::size_t GetKeyCount(std::size_t section) const { return mSections[section].keyCount; }
    std::string_view GetKeyName(std::size_t section, std::size_t key) const;
    std::string_view GetValue(std::size_t section, std::size_t key) const;

private:
    // Offsets and lengths in mText.
    struct Section {
        std::uint32_t name, nameLength;
        std::uint32_t body, bodyLength;
        std::uint32_t firstKey, keyCount; // in mKeys
    };
    struct Key {
        std::uint32_t name, nameLength;
        std::uint32_t value, valueLength;
    };
    // An index is a list of slots in the order of hash, then name.
    struct Slot {
        std::uint32_t hash;
        std::uint32_t item; // in mSections; for keys counted from the section's first
    };

    void Clear();
    void ReadSections();
    void ReadKeys(Section& section);
    template <class Item>
    void IndexNames(std::vector<Item>& items, std::size_t first, std::vector<Slot>& index) const;
    template <class Item>
    static void DropWithoutSlot(std::vector<Item>& items, std::size_t first, std::span<Slot> slots);
    template <class Item>
    const Item* Find(const Item* items, const Slot* slots, std::size_t count,
                     std::string_view name) const;
    const Section* FindSection(std::string_view section) const;
    const Key* FindKey(std::string_view section, std::string_view key) const;
    std::uint32_t OffsetOf(std::string_view part) const;
    template <class Item>
    std::string_view NameOf(const Item& item) const;
    std::string_view ValueOf(const Key& key) const;

    std::string mText;
    std::vector<Section> mSections;
    std::vector<Key> mKeys;
    std::vector<Slot> mSectionIndex;
    std::vector<Slot> mKeyIndex; // the slots of a section at the places of its keys
    bool mHasFile = false;
};

} // namespace sys
