/// OptionStore: texts by section and key, in memory or in a file.
#pragma once

#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>

#include "astring.h"
#include "quorel_export.h"
#include "status.h"

/// The options of a host. Names are compared without case. What is set is there at once; only Save
/// touches the file. Look-ups cost the logarithm of the options.
class QUOREL_API OptionStore {
public:
    /// The user's own file of options; empty when no home directory is known.
    static std::string UserFile();

    /// Reads an INI file (UTF-8) in place of what is held, and keeps its path for Save. A file that
    /// isn't there is an empty one. Without a path, and on failure, the store is empty and in
    /// memory.
    sys::Status Open(const std::string& path);

    /// Writes the options set since Open or the last Save into the file, all other lines of which
    /// stay, also those written by others meanwhile. Makes the file's folder if need be. Nothing
    /// for a store in memory. What an INI file can't hold (line ends, values over 1023 bytes, a
    /// name with "=" or "]") is left out, and the status names the first such option.
    sys::Status Save();

    std::optional<AString> Find(const AString& section, const AString& key) const;
    void Set(const AString& section, const AString& key, const AString& value);
    /// Forgets all options and the file.
    void Clear();

private:
    using Name = std::pair<AString, AString>; // section, key
    struct NameLess {
        bool operator()(const Name& a, const Name& b) const;
    };

    std::string m_Path; // empty: in memory
    std::map<Name, AString, NameLess> m_Values;
    std::set<Name, NameLess> m_Changed; // since Open or Save
};
