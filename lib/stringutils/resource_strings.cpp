#include "resource_strings.h"

#include <algorithm>
#include <vector>

#include "assertion.h"

namespace {

/// Sources in the order in which they are asked.
std::vector<const StringSource*>& Sources() {
    static std::vector<const StringSource*> sources;
    return sources;
}

} // namespace

StringTable::StringTable(std::span<const StringRow> rows) : mRows(rows) {
    const bool ascending = std::ranges::is_sorted(rows, {}, &StringRow::id);
    USE_ASSERT(ascending);
}

std::optional<std::u16string_view> StringTable::Find(ResourceId id) const {
    const auto number = static_cast<unsigned>(id);
    const auto row = std::ranges::lower_bound(mRows, number, {}, &StringRow::id);
    if (row == mRows.end() || row->id != number)
        return std::nullopt;
    return row->text;
}

void RegisterStringSource(const StringSource& source) {
    UnregisterStringSource(source);
    Sources().insert(Sources().begin(), &source);
}

void UnregisterStringSource(const StringSource& source) {
    std::erase(Sources(), &source);
}

std::optional<std::u16string_view> FindResourceString(ResourceId id) {
    for (const StringSource* source : Sources()) {
        if (const auto text = source->Find(id))
            return text;
    }
    return std::nullopt;
}
