/// CPrintInfo: what a print job and a view tell each other.
#pragma once

#include <memory>

#include "backend.h"

/// The last page as long as nobody has told it.
inline constexpr int kPagesUnknown = 0xFFFF;

/// One job, from OnPreparePrinting to OnEndPrinting. Pages are counted from 1.
struct CPrintInfo {
    PrintRequest m_Request;                     ///< what the dialog asks and has answered
    bool m_Preview = false;                     ///< the pages are only looked at
    std::unique_ptr<IBackendPrinter> m_Printer; ///< the device, once the preparation has found it
    int m_MinPage = 1;                          ///< set by the view in OnBeginPrinting
    int m_MaxPage = kPagesUnknown;              ///< likewise
    int m_CurPage = 1;                          ///< the page that OnPrepareDC and OnPrint are about
    bool m_ContinuePrinting = true; ///< cleared by OnPrepareDC when there is no such page
};
