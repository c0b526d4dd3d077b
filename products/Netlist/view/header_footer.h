/// The bands at the head and the foot of printed pages.
#pragma once

#include <cstdint>

#include "astring.h"
#include "geometry.h"
#include "quorel_export.h"

class CDC;
class CDocument;
struct CPrintInfo;

/// A band's word of flags: five nibbles for what it shows, and single bits.
enum HeaderFooterFlag : std::uint32_t {
    kBandText = 0x1,               ///< times a nibble: the text of the option
    kBandTitle = 0x10,             ///< the document's title
    kBandTime = 0x100,             ///< date and time of the printing
    kBandPage = 0x1000,            ///< the page's number
    kBandTwoLevelPage = 0x10000,   ///< the page's number as unit and page
    kBandRule = 0x10000000,        ///< a rule below the header or above the footer
    kBandTotal = 0x20000000,       ///< page numbers come with the total
    kBandMeasureOnly = 0x40000000, ///< takes its room and draws nothing
};

/// A nibble: an item that is neither left nor right is centred.
enum HeaderFooterItem : std::uint32_t { kItemLeft = 1, kItemRight = 4, kItemShown = 8 };

/// Draws or measures both bands with the selected font, the header at the top of a rectangle, the
/// footer at its bottom, and takes their height off it. Both are a row high and a quarter more; a
/// rule takes a further quarter. A word of 0 takes nothing.
///
/// @param info its current page is the one that is shown
/// @param rect null: the whole device area, and nobody is told what is left
/// @param document null: no title @param headerText null: none @param footerText null: none
/// @param pageTotal pages, with pagesPerUnit above 1 units
/// @param pagesPerUnit 1 or more
/// @param penWidth of the rules
QUOREL_API void PrintHeaderFooter(CDC& dc, const CPrintInfo& info, std::uint32_t headerFlags,
                                  std::uint32_t footerFlags, CRect* rect, const CDocument* document,
                                  const AString* headerText, const AString* footerText,
                                  std::int32_t pageTotal, std::int32_t pagesPerUnit,
                                  std::int32_t penWidth);
