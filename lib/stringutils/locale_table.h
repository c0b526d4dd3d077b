/// Locales by name, the same on every machine.
#pragma once

#include <span>
#include <string_view>

#include "quorel_export.h"

/// One locale.
struct LocaleRow {
    /// Language and country in English, and the default ANSI code page: "German_Austria.1252".
    std::u16string_view name;
    unsigned id = 0;
    std::u16string_view language; ///< the language's name in itself: "Deutsch"
};

/// All locales, in the order of their names' units.
QUOREL_API std::span<const LocaleRow> GetLocaleTable() noexcept;

/// The locale of a name, whose case counts; for an unknown one a row of empty texts and the id 0.
/// Takes a binary search.
QUOREL_API LocaleRow FindLocale(std::u16string_view name) noexcept;
