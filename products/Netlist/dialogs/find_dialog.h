/// CFindDialog: asks for a text and has a view search it.
#pragma once

#include "dialog.h"
#include "resource_ids.h"

class CSimEditView;

/// "Find Next" and the buttons of derived dialogs ask the view's DialogAction and leave the dialog
/// open.
class CFindDialog : public CDialog {
public:
    explicit CFindDialog(unsigned resourceId = kDialogFind) : CDialog(resourceId) {}

    /// @name What a derived dialog's button asks for
    /// @{
    virtual bool IsReplace() const { return false; }
    virtual bool IsReplaceAll() const { return false; }
    /// The new text.
    virtual AString GetReplaceText() const { return {}; }
    /// @}

    AString m_FindWhat;
    bool m_MatchCase = false;
    bool m_DownButton = true;       ///< search down, else up
    CSimEditView* m_View = nullptr; ///< who works for the dialog; outlives it
    bool m_FindNext = false;        ///< while that button is handled

protected:
    void DoDataExchange(CDataExchange& exchange) override;
    const NoticeMap& GetNoticeMap() const override;
    /// Has the view do what a button asks, with its flag set meanwhile.
    void Act(bool& button);

private:
    void OnFindNext() { Act(m_FindNext); }
};
