#include "property_sheet.h"

#include <algorithm>

CPropertyPage::CPropertyPage(unsigned resourceId) : CDialog(resourceId) {}

CPropertyPage::~CPropertyPage() = default;

bool CPropertyPage::OnKillActive() {
    return UpdateData(true);
}

void CPropertyPage::OnOK() {}

void CPropertyPage::OnCancel() {}

CPropertySheet::CPropertySheet(const AString& caption) : m_Caption(caption) {}

CPropertySheet::~CPropertySheet() = default;

int CPropertySheet::DoModal() {
    std::vector<const DialogResource*> tables;
    for (const CPropertyPage* page : m_Pages)
        tables.push_back(FindDialog(page->m_ResourceId));
    IBackendDesk* const desk = GetBackend();
    if (!desk || tables.empty() || std::ranges::find(tables, nullptr) != tables.end())
        return kIdCancel;
    const int result = desk->RunDialog(m_Caption, tables, *this);
    m_Controls = nullptr;
    for (CPropertyPage* page : m_Pages)
        page->m_Controls = nullptr;
    return result;
}

void CPropertySheet::DialogShown(IBackendDialog& dialog) {
    m_Controls = &dialog;
    for (CPropertyPage* page : m_Pages)
        page->DialogShown(dialog);
}

void CPropertySheet::ControlNotice(unsigned control, unsigned notice) {
    const bool isClick = notice == kNoticeClicked;
    if (isClick && control == kIdOk)
        return OnOK();
    if (isClick && control == kIdCancel)
        return OnCancel();
    for (CPropertyPage* page : m_Pages)
        page->ControlNotice(control, notice);
}

void CPropertySheet::OnOK() {
    for (CPropertyPage* page : m_Pages)
        if (!page->OnKillActive())
            return;
    for (CPropertyPage* page : m_Pages)
        page->OnOK();
    m_Controls->End(kIdOk);
}

void CPropertySheet::OnCancel() {
    for (CPropertyPage* page : m_Pages)
        page->OnCancel();
    m_Controls->End(kIdCancel);
}
