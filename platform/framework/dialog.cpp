#include "dialog.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr std::u16string_view kNoInteger = u"Please enter an integer.";
constexpr std::u16string_view kNoNumber = u"Please enter a number.";

} // namespace

void CDataExchange::Text(unsigned control, AString& member) {
    if (!m_ToMembers)
        m_Controls.SetText(control, member);
    else if (Takes())
        member = m_Controls.GetText(control);
}

void CDataExchange::Check(unsigned control, bool& member) {
    if (!m_ToMembers)
        m_Controls.SetChecked(control, member);
    else if (Takes())
        member = m_Controls.IsChecked(control);
}

void CDataExchange::Integer(unsigned control, std::int32_t& member) {
    if (!m_ToMembers)
        return m_Controls.SetText(control, AString(std::to_string(member)));
    if (!Takes())
        return;
    using Limits = std::numeric_limits<std::int32_t>;
    long number = 0;
    if (m_Controls.GetText(control).ToLong(number))
        member = static_cast<std::int32_t>(std::clamp<long>(number, Limits::min(), Limits::max()));
    else
        m_Refusal = kNoInteger;
}

void CDataExchange::Number(unsigned control, double& member) {
    if (!m_ToMembers)
        return m_Controls.SetText(control, AString().Format(u"%.15g", member));
    if (!Takes())
        return;
    double number = 0;
    if (m_Controls.GetText(control).ToDouble(number) && std::isfinite(number))
        member = number;
    else
        m_Refusal = kNoNumber;
}

const NoticeEntry* NoticeMap::Find(unsigned control, unsigned notice) const {
    for (const NoticeMap* map = this; map; map = map->m_Base)
        for (const NoticeEntry& entry : map->m_Entries)
            if (entry.m_Control == control && entry.m_Notice == notice)
                return &entry;
    return nullptr;
}

CDialog::CDialog(unsigned resourceId) : m_ResourceId(resourceId) {}

CDialog::~CDialog() = default;

int CDialog::DoModal() {
    IBackendDesk* const desk = GetBackend();
    const DialogResource* const resource = FindDialog(m_ResourceId);
    if (!desk || !resource)
        return kIdCancel;
    const int result = desk->RunDialog({}, {&resource, 1}, *this);
    m_Controls = nullptr;
    return result;
}

bool CDialog::UpdateData(bool toMembers) {
    if (!m_Controls)
        return false;
    CDataExchange exchange(*m_Controls, toMembers);
    DoDataExchange(exchange);
    if (exchange.GetRefusal().empty())
        return true;
    if (IBackendDesk* desk = GetBackend())
        desk->ShowMessage(exchange.GetRefusal(), kWarningStyle);
    return false;
}

void CDialog::EndDialog(int result) {
    if (m_Controls)
        m_Controls->End(result);
}

void CDialog::DoDataExchange(CDataExchange&) {}

void CDialog::OnInitDialog() {
    UpdateData(false);
}

void CDialog::OnOK() {
    if (UpdateData(true))
        EndDialog(kIdOk);
}

void CDialog::OnCancel() {
    EndDialog(kIdCancel);
}

const NoticeMap& CDialog::GetNoticeMap() const {
    static constexpr NoticeEntry kEntries[] = {
        Notice<&CDialog::OnOK>(kIdOk),
        Notice<&CDialog::OnCancel>(kIdCancel),
    };
    static constexpr NoticeMap kMap{kEntries};
    return kMap;
}

void CDialog::DialogShown(IBackendDialog& dialog) {
    m_Controls = &dialog;
    OnInitDialog();
}

void CDialog::ControlNotice(unsigned control, unsigned notice) {
    if (const NoticeEntry* entry = GetNoticeMap().Find(control, notice))
        entry->m_Handler(*this);
}
