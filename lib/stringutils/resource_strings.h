/// Texts by resource number, from sources that modules register.
#pragma once

#include <optional>
#include <span>
#include <string_view>

#include "quorel_export.h"

/// The number of a text, as a type of its own so that no number turns into text unasked.
enum class ResourceId : unsigned {};

/// Where texts come from.
class QUOREL_API StringSource {
public:
    virtual ~StringSource() = default;
    /// The text, which lives as long as the source; nothing for a number it doesn't have.
    virtual std::optional<std::u16string_view> Find(ResourceId id) const = 0;
};

/// One row of a constant table of texts.
struct StringRow {
    unsigned id;
    std::u16string_view text;
};

/// A source over a constant table, which it doesn't copy. The rows' numbers ascend, asserted as
/// "ascending"; otherwise texts may not be found.
class QUOREL_API StringTable : public StringSource {
public:
    explicit StringTable(std::span<const StringRow> rows);
    std::optional<std::u16string_view> Find(ResourceId id) const override;

private:
    std::span<const StringRow> mRows;
};

/// Adds a source, which the caller keeps alive until it unregisters it. Of two sources with the
/// same number the later one counts. Adding it again moves it to the front.
QUOREL_API void RegisterStringSource(const StringSource& source);
/// Takes a source out; nothing happens if it isn't registered.
QUOREL_API void UnregisterStringSource(const StringSource& source);
/// The text of the registered sources.
QUOREL_API std::optional<std::u16string_view> FindResourceString(ResourceId id);
