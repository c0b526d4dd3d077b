#include "color_option.h"

#include "desktop_access.h"
#include "editor_options.h"
#include "resource_ids.h"

namespace {

/// What the colour dialog offers beside its own colours: greys from white to black.
constexpr ColorRef kCustomColors[] = {0xFFFFFF, 0xEFEFEF, 0xDFDFDF, 0xCFCFCF, 0xBFBFBF, 0xAFAFAF,
                                      0x9F9F9F, 0x8F8F8F, 0x7F7F7F, 0x6F6F6F, 0x5F5F5F, 0x4F4F4F,
                                      0x3F3F3F, 0x2F2F2F, 0x1F1F1F, 0};

} // namespace

CColorOption::CColorOption() : CPropertyPage(kDialogBookmarkColor) {}

const NoticeMap& CColorOption::GetNoticeMap() const {
    static constexpr NoticeEntry kEntries[] = {
        Notice<&CColorOption::OnEditColor>(kControlEditColor),
    };
    static const NoticeMap kMap{kEntries, &CPropertyPage::GetNoticeMap()};
    return kMap;
}

void CColorOption::OnInitDialog() {
    CPropertyPage::OnInitDialog();
    m_Color = static_cast<ColorRef>(CurrentOptions().BMColor);
    ShowColor();
}

void CColorOption::ShowColor() {
    if (IBackendDialog* controls = GetControls())
        controls->SetColor(kControlColorSample, m_Color);
}

void CColorOption::OnEditColor() {
    IBackendDesk* const desk = GetBackend();
    if (!desk)
        return;
    if (const auto chosen = desk->AskColor(m_Color, kCustomColors)) {
        m_Color = *chosen;
        ShowColor();
    }
}

void CColorOption::OnOK() {
    CurrentOptions().BMColor = static_cast<std::int32_t>(m_Color);
    if (IDesktop* desktop = GetDesktop())
        SaveBookmarkColor(*desktop, CurrentOptions().BMColor);
}
