#include "find_replace_dlg.h"

void CFindReplaceDlg::DoDataExchange(CDataExchange& exchange) {
    CFindDialog::DoDataExchange(exchange);
    exchange.Text(kControlReplaceWith, m_ReplaceWith);
}

const NoticeMap& CFindReplaceDlg::GetNoticeMap() const {
    static constexpr NoticeEntry kEntries[] = {
        Notice<&CFindReplaceDlg::OnReplace>(kControlReplace),
        Notice<&CFindReplaceDlg::OnReplaceAll>(kControlReplaceAll),
    };
    static const NoticeMap kMap{kEntries, &CFindDialog::GetNoticeMap()};
    return kMap;
}
