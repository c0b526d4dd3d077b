/// LogFont: what a font is asked by, in the fields and order of the stored font option.
#pragma once

#include <cstdint>

#include "astring.h"

/// A negative height is a character height in device units, a positive one a cell height, 0 the
/// backend's default. Widths of 0 are chosen by the backend.
struct LogFont {
    AString m_FaceName;
    std::int32_t m_Height = 0;
    std::int32_t m_Width = 0;
    std::int32_t m_Escapement = 0;
    std::int32_t m_Orientation = 0;
    std::int32_t m_Weight = 0;
    std::uint8_t m_Italic = 0;
    std::uint8_t m_Underline = 0;
    std::uint8_t m_StrikeOut = 0;
    std::uint8_t m_CharSet = 0;
    std::uint8_t m_OutPrecision = 0;
    std::uint8_t m_ClipPrecision = 0;
    std::uint8_t m_Quality = 0;
    std::uint8_t m_PitchAndFamily = 0;

    bool operator==(const LogFont&) const = default;
};
