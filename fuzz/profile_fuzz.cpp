// Any bytes as a profile file. What the reader lists it must find again by name; a store must give
// the same file back; a key that a store takes must be read back by both.

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "profile_file.h"
#include "profile_store.h"

namespace {

void Require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

/// All that the reader holds, each text with its length so that no two profiles look alike.
std::string Dump(const sys::ProfileFile& profile) {
    std::string text;
    const auto add = [&](std::string_view part) {
        text.append(std::to_string(part.size())).append(":").append(part);
    };
    for (std::size_t i = 0; i < profile.GetSectionCount(); ++i) {
        add(profile.GetSectionName(i));
        text += '{';
        for (std::size_t k = 0; k < profile.GetKeyCount(i); ++k) {
            add(profile.GetKeyName(i, k));
            add(profile.GetValue(i, k));
        }
        text += '}';
    }
    return text;
}

void CheckLookUps(const sys::ProfileFile& profile) {
    for (std::size_t i = 0; i < profile.GetSectionCount(); ++i) {
        const std::string_view section = profile.GetSectionName(i);
        Require(profile.HasSection(section));
        for (std::size_t k = 0; k < profile.GetKeyCount(i); ++k) {
            const std::string_view key = profile.GetKeyName(i, k);
            const std::string_view value = profile.GetString(section, key, "\n");
            Require(value == profile.GetValue(i, k));
            Require(value.size() <= sys::ProfileFile::kMaxValue);
            static_cast<void>(profile.GetInt(section, key));
        }
        for (const std::int32_t number : profile.GetNumberedKeys(section, "x", 2000000000)) {
            Require(profile.HasKey(section, "x" + std::to_string(number)));
        }
    }
}

std::string_view TakePart(std::string_view& rest) {
    const std::size_t end = std::min(rest.find('|'), rest.size());
    const std::string_view part = rest.substr(0, end);
    rest.remove_prefix(std::min(end + 1, rest.size()));
    return part;
}

/// The input's first line may be "section|key|value", to be set in the rest.
void CheckSet(sys::ProfileStore& store, std::string_view text) {
    std::string_view rest = text;
    const std::string section(TakePart(rest)), key(TakePart(rest)), value(TakePart(rest));
    const std::string before = store.ToText();
    if (!store.Set(section, key, value)) {
        Require(store.ToText() == before);
        return;
    }
    sys::ProfileFile reader;
    Require(reader.Parse(store.ToText()).IsOk());
    Require(reader.HasKey(section, key) && reader.GetString(section, key) == value);
    Require(store.Find(section, key) == value);
    Require(store.Remove(section, key) && !store.Find(section, key));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    sys::ProfileFile profile;
    Require(profile.Parse(text).IsOk());
    CheckLookUps(profile);

    sys::ProfileStore store;
    store.Parse(text);
    sys::ProfileFile again;
    Require(again.Parse(store.ToText()).IsOk());
    Require(Dump(again) == Dump(profile));
    CheckSet(store, std::string_view(text).substr(0, std::min(text.find('\n'), text.size())));
    return 0;
}
