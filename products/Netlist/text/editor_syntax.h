/// Which description of the configuration the editors take.
#pragma once

#include <cstddef>
#include <string_view>

/// A kind of text, and the place of its description in the configuration's order.
struct EditorSyntax {
    std::string_view m_Name;
    int m_Index;
    std::size_t m_Least; ///< with fewer descriptions the editor has none

    /// The index for a configuration of that many descriptions, -1 for none.
    constexpr int IndexAmong(std::size_t count) const { return count < m_Least ? -1 : m_Index; }
};

/// The two languages of scripts are there together or not at all.
inline constexpr EditorSyntax kNetlistSyntax{"netlist", 2, 3};
inline constexpr EditorSyntax kJavaScriptSyntax{"javascript", 3, 5};
inline constexpr EditorSyntax kVBScriptSyntax{"vbscript", 4, 5};
