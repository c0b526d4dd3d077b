/// CPrintInfo: what a print job and a view tell each other.
#pragma once

#include "backend.h"

/// One job, from OnPreparePrinting to OnEndPrinting. Pages are counted from 1.
struct CPrintInfo {
    PrintRequest m_Request;          ///< what the dialog asks and has answered
    bool m_Preview = false;          ///< the pages are only looked at
    int m_MinPage = 1;               ///< set by the view in OnBeginPrinting
    int m_MaxPage = 0xFFFF;          ///< likewise
    int m_CurPage = 1;               ///< the page that OnPrepareDC and OnPrint are about
    bool m_ContinuePrinting = true;  ///< cleared by OnPrepareDC when there is no such page
};
