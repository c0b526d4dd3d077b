/// CFindReplaceDlg: the find dialog with a text that replaces what is found.
#pragma once

#include "find_dialog.h"

class CFindReplaceDlg : public CFindDialog {
public:
    CFindReplaceDlg() : CFindDialog(kDialogReplace) {}

    bool IsReplace() const override { return m_Replace; }
    bool IsReplaceAll() const override { return m_ReplaceAll; }
    AString GetReplaceText() const override { return m_ReplaceWith; }

    AString m_ReplaceWith;
    bool m_Replace = false;    ///< while that button is handled
    bool m_ReplaceAll = false; ///< while that button is handled

protected:
    void DoDataExchange(CDataExchange& exchange) override;
    const NoticeMap& GetNoticeMap() const override;

private:
    void OnReplace() { Act(m_Replace); }
    void OnReplaceAll() { Act(m_ReplaceAll); }
};
