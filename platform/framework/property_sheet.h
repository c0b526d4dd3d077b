/// CPropertySheet: pages as one modal dialog. CPropertyPage: one of them.
#pragma once

#include <vector>

#include "dialog.h"

/// A page: a dialog that a sheet shows, and ends, together with others.
class QUOREL_API CPropertyPage : public CDialog {
public:
    explicit CPropertyPage(unsigned resourceId);
    ~CPropertyPage() override;

protected:
    /// Before the OK of the sheet. The base takes the controls' texts into the members. @return
    /// false: the sheet stays on show
    virtual bool OnKillActive();
    /// The OK of the sheet, once every page has allowed it. The base does nothing.
    void OnOK() override;
    /// The base does nothing.
    void OnCancel() override;

private:
    friend class CPropertySheet;
};

/// A dialog with the buttons OK and Cancel, and a tab for each page.
class QUOREL_API CPropertySheet : public CObject, private IDialogSink {
public:
    explicit CPropertySheet(const AString& caption);
    CPropertySheet(const CPropertySheet&) = delete;
    CPropertySheet& operator=(const CPropertySheet&) = delete;
    ~CPropertySheet() override;

    /// Adds a page behind the others. Not owned; it outlives the sheet's use of it. Numbers of
    /// controls are unique over all pages.
    void AddPage(CPropertyPage& page) { m_Pages.push_back(&page); }
    /// Shows the sheet until it ends. @return kIdOk, or kIdCancel: also without a backend, and when
    /// a page has no table
    virtual int DoModal();

private:
    void DialogShown(IBackendDialog& dialog) override;
    void ControlNotice(unsigned control, unsigned notice) override;
    void OnOK();
    void OnCancel();

    AString m_Caption;
    std::vector<CPropertyPage*> m_Pages;
    IBackendDialog* m_Controls = nullptr;
};
