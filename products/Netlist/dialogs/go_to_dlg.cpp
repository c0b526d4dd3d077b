#include "go_to_dlg.h"

#include "resource_ids.h"

CGoToDlg::CGoToDlg(std::int32_t lineCount) : CDialog(kDialogGoTo) {
    m_Range.Format(u"(1...%d)", lineCount);
}

void CGoToDlg::DoDataExchange(CDataExchange& exchange) {
    exchange.Integer(kControlLine, m_Line);
    exchange.Text(kControlRange, m_Range);
}
