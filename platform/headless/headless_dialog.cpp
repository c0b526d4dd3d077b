#include "headless_dialog.h"

#include <algorithm>

HeadlessDialog::HeadlessDialog(const AString& title, std::span<const DialogResource* const> pages,
                               IDialogSink& sink)
    : m_Title(title), m_Sink(sink) {
    int group = 0;
    for (const DialogResource* page : pages) {
        if (m_Title.empty())
            m_Title = page->m_Title;
        ++group;
        for (const ControlRow& row : page->m_Controls) {
            group += row.m_StartsGroup;
            m_Controls.insert_or_assign(row.m_Id, Control{.m_Kind = row.m_Kind,
                                                          .m_Text = row.m_Text,
                                                          .m_Group = group,
                                                          .m_Items = {}});
        }
    }
    if (!Find(kIdOk) && !Find(kIdCancel))
        for (const int button : {kIdOk, kIdCancel})
            m_Controls[static_cast<unsigned>(button)] = {
                .m_Kind = ControlRow::pushButton, .m_Text = {}, .m_Items = {}};
}

HeadlessDialog::~HeadlessDialog() = default;

HeadlessDialog::Control* HeadlessDialog::Find(unsigned control) {
    const auto place = m_Controls.find(control);
    return place == m_Controls.end() ? nullptr : &place->second;
}

const HeadlessDialog::Control* HeadlessDialog::Find(unsigned control) const {
    const auto place = m_Controls.find(control);
    return place == m_Controls.end() ? nullptr : &place->second;
}

HeadlessDialog::Control* HeadlessDialog::FindForUser(unsigned control) {
    Control* found = m_Result ? nullptr : Find(control);
    return found && found->m_Enabled ? found : nullptr;
}

AString HeadlessDialog::GetText(unsigned control) {
    const Control* found = Find(control);
    return found ? found->m_Text : AString();
}

void HeadlessDialog::SetText(unsigned control, const AString& text) {
    if (Control* found = Find(control))
        found->m_Text = text;
}

bool HeadlessDialog::IsChecked(unsigned control) {
    const Control* found = Find(control);
    return found && found->m_Checked;
}

void HeadlessDialog::SetChecked(unsigned control, bool checked) {
    Control* found = Find(control);
    if (!found)
        return;
    if (checked && found->m_Kind == ControlRow::radioButton)
        for (auto& [id, other] : m_Controls)
            if (other.m_Kind == ControlRow::radioButton && other.m_Group == found->m_Group)
                other.m_Checked = false;
    found->m_Checked = checked;
}

void HeadlessDialog::Enable(unsigned control, bool enabled) {
    if (Control* found = Find(control))
        found->m_Enabled = enabled;
}

void HeadlessDialog::AddItem(unsigned control, const AString& text) {
    if (Control* found = Find(control))
        found->m_Items.push_back(text);
}

int HeadlessDialog::GetSelection(unsigned control) {
    const Control* found = Find(control);
    return found ? found->m_Selection : -1;
}

void HeadlessDialog::SetSelection(unsigned control, int index) {
    Control* found = Find(control);
    if (!found)
        return;
    const bool inside = index >= 0 && index < static_cast<int>(found->m_Items.size());
    found->m_Selection = inside ? index : -1;
    found->m_Text = inside ? found->m_Items[static_cast<std::size_t>(index)] : AString();
}

void HeadlessDialog::SetFont(unsigned control, const IBackendFont* font) {
    if (Control* found = Find(control))
        found->m_Font = font;
}

void HeadlessDialog::SetColor(unsigned control, ColorRef color) {
    if (Control* found = Find(control))
        found->m_Color = color;
}

void HeadlessDialog::End(int result) {
    if (!m_Result)
        m_Result = result;
}

bool HeadlessDialog::Click(unsigned control) {
    // A closed window is a click on kIdCancel, even where there is only a button for OK.
    const bool closing = control == kIdCancel && !m_Result && !Find(control);
    const Control* found = FindForUser(control);
    if (!found && !closing)
        return false;
    if (found && found->m_Kind == ControlRow::checkBox)
        SetChecked(control, !found->m_Checked);
    else if (found && found->m_Kind == ControlRow::radioButton)
        SetChecked(control, true);
    m_Sink.ControlNotice(control, kNoticeClicked);
    return true;
}

bool HeadlessDialog::Type(unsigned control, const AString& text) {
    Control* found = FindForUser(control);
    if (!found)
        return false;
    found->m_Text = text;
    m_Sink.ControlNotice(control, kNoticeTextChanged);
    return true;
}

bool HeadlessDialog::Choose(unsigned control, const AString& item) {
    const Control* found = FindForUser(control);
    if (!found)
        return false;
    const auto place = std::ranges::find(found->m_Items, item);
    if (place == found->m_Items.end())
        return false;
    SetSelection(control, static_cast<int>(place - found->m_Items.begin()));
    m_Sink.ControlNotice(control, kNoticeSelectionDone);
    return true;
}

std::vector<AString> HeadlessDialog::GetItems(unsigned control) const {
    const Control* found = Find(control);
    return found ? found->m_Items : std::vector<AString>();
}

const IBackendFont* HeadlessDialog::GetFont(unsigned control) const {
    const Control* found = Find(control);
    return found ? found->m_Font : nullptr;
}

ColorRef HeadlessDialog::GetColor(unsigned control) const {
    const Control* found = Find(control);
    return found ? found->m_Color : kBlack;
}

bool HeadlessDialog::IsEnabled(unsigned control) const {
    const Control* found = Find(control);
    return found && found->m_Enabled;
}
