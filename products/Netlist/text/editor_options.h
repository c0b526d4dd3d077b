/// The editor's options: one set for the whole module, kept by the host under "Options".
#pragma once

#include "astring.h"
#include "log_font.h"
#include "quorel_export.h"

#include <cstdint>

class IDesktop;

/// The options as they are in force; what each does is said where it is used.
struct EditorOptions {
    std::int32_t PrintLineNumbers = 0;
    std::int32_t PrintLBorder = 10;
    std::int32_t PrintRBorder = 10;
    std::int32_t PrintHead = 0;
    std::int32_t PrintFoot = 0;
    AString PrintHeadText;
    AString PrintFootText;
    LogFont TextFont;
    std::int32_t BMColor = 0xC0C0C0;    ///< bookmark colour, red in the lowest byte
    std::int32_t FillBlanksOnEnter = 0; ///< nonzero: Enter copies the line's indentation
    std::int32_t DropBlanksOnSave = 0;  ///< nonzero: trailing blanks go when text goes out
    std::int32_t NumberOfUndos = 1000;  ///< bound of each journal list in records; 0: no journal
    std::int32_t ModelComment = 1;      ///< kept for the store; nothing acts on it
};

/// The one set in force, with the defaults until LoadOptions.
QUOREL_API EditorOptions& CurrentOptions();

/// Reads all keys of the section "Options" into CurrentOptions; a missing key gives its default.
QUOREL_API void LoadOptions(IDesktop& desktop);

/// Reads a font's text form: the fields in order between commas, runs of commas counting as one.
/// Fields past the last are dropped; missing ones are 0.
QUOREL_API LogFont ParseTextFont(const AString& text);
QUOREL_API AString FormatTextFont(const LogFont& font);
/// Stores the text form of font under "TextFont".
QUOREL_API void SaveTextFont(IDesktop& desktop, const LogFont& font);
/// Stores the bookmark colour under "BMColor".
QUOREL_API void SaveBookmarkColor(IDesktop& desktop, std::int32_t color);
