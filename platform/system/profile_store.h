/// A profile (INI) file that is changed and saved.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "status.h"

namespace sys {

/// The lines of a profile file, by the rules of ProfileFile. Setting and removing touch the lines
/// of that key alone: comments, order, line ends and what isn't understood stay. A look-up walks
/// all sections and the keys of one, as suits a file of options.
class QUOREL_API ProfileStore {
public:
    static constexpr std::size_t kMaxSize = 32u << 20u; ///< bytes of a file

    /// Reads a file in place of what is held; on failure the store is empty. ENOENT tells that
    /// there is no such file. Whoever saves over a file that he couldn't read loses it.
    Status Load(const std::string& path);

    /// Takes a text in place of what is held.
    void Parse(std::string_view text);

    /// The value of a key; nothing when there is none.
    std::optional<std::string> Find(std::string_view section, std::string_view key) const;

    /// Sets a key, which is added to the end of its section, and the section to the end of the
    /// file, when new. False, and no change, for what a profile file can't give back exactly: line
    /// ends in the value, a value over ProfileFile::kMaxValue bytes, names with outer blanks, "="
    /// or "]".
    bool Set(std::string_view section, std::string_view key, std::string_view value);

    /// Removes a key; false when there was none.
    bool Remove(std::string_view section, std::string_view key);

    /// The text of the file.
    std::string ToText() const;

    /// Writes the file as AtomicFile does.
    Status Save(const std::string& path) const;

private:
    // Lines without their ends. The first section has no header: what stands before the first one.
    struct Section {
        std::string header;
        std::vector<std::string> lines;
    };

    Section* FindSection(std::string_view name);
    const Section* FindSection(std::string_view name) const;
    Section& AddSection(std::string header);
    void SetOffNextSection(); // by a blank line

    std::vector<Section> mSections;
    std::string mMark; // the byte order mark, if there was one
    std::string mLineEnd = "\n";
};

} // namespace sys
