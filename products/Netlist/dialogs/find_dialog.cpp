#include "find_dialog.h"

#include "sim_edit_view.h"

void CFindDialog::DoDataExchange(CDataExchange& exchange) {
    exchange.Text(kControlFindWhat, m_FindWhat);
    exchange.Check(kControlMatchCase, m_MatchCase);
    exchange.Check(kControlDown, m_DownButton);
}

const NoticeMap& CFindDialog::GetNoticeMap() const {
    static constexpr NoticeEntry kEntries[] = {Notice<&CFindDialog::OnFindNext>(kIdOk)};
    static const NoticeMap kMap{kEntries, &CDialog::GetNoticeMap()};
    return kMap;
}

void CFindDialog::Act(bool& button) {
    if (!m_View || !UpdateData(true))
        return;
    button = true;
    m_View->DialogAction(*this);
    button = false;
}
