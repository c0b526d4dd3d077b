/// PrintLayout: what a view has measured and worked out for the print job that runs.
#pragma once

#include <memory>

#include "backend.h"
#include "page_table.h"

/// In device units unless said. The font is the text font at the device's resolution; rows and
/// columns are at least 1.
struct PrintLayout {
    std::unique_ptr<IBackendFont> m_Font; ///< null: the device's own
    std::int32_t m_PrintLineHeight = 1;   ///< with external leading
    std::int32_t m_PrintCharWidth = 1;    ///< of the widest character
    CRect m_PrintPage;                    ///< PrintLeft to PrintBottom: the page between borders
    std::int32_t m_PrintLinesPerPage = 1; ///< rows
    std::int32_t m_PrintCharsPerLine = 1; ///< columns, those of line numbers included
    bool m_LineNumbers = false;
    PageTable m_PageTable;
};
