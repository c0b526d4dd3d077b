/// ToolBarEntry: a row of a module's button table.
#pragma once

#include <cstdint>
#include <span>

/// A place on a toolbar. Its status text and tip are the string resource of the command's number.
struct ToolBarEntry {
    static constexpr std::uint32_t kSeparator = 0xFFFFFFFF; ///< as command: a gap
    static constexpr std::uint32_t kNoBitmap = 0xFFFFFFFF;  ///< as bitmap: that of a separator
    static constexpr std::uint32_t kControlPlace = 289; ///< as bitmap: a control fills the place
    static constexpr std::uint32_t kTableEnd = 0;       ///< as bitmap: ends a table early

    std::uint32_t m_Command;
    std::uint32_t m_Bitmap;
    std::uint8_t m_State;
    std::uint8_t m_Style;
    bool operator==(const ToolBarEntry&) const = default;
};

/// A module's table: constant data that outlives its use.
using ToolBarTable = std::span<const ToolBarEntry>;
