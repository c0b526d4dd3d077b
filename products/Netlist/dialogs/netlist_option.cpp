#include "netlist_option.h"

CNetlistOption::CNetlistOption(const AString& caption) : CPropertySheet(caption) {
    AddPage(m_ColorPage);
    AddPage(m_FontPage);
}
