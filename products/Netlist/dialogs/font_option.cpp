#include "font_option.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "desktop_access.h"
#include "editor_options.h"
#include "guarded.h"
#include "netlist_app.h"
#include "resource_ids.h"

namespace {

/// The most points of which a sample can show anything.
constexpr double kMostSamplePoints = 500;
constexpr double kTenthsPerPoint = 10;

/// All names once, in order.
std::vector<AString> FixedPitchFonts() {
    IBackendDesk* const desk = GetBackend();
    std::vector<AString> names = desk ? desk->GetFixedPitchFonts() : std::vector<AString>();
    std::ranges::sort(names);
    const auto repeats = std::ranges::unique(names);
    names.erase(repeats.begin(), repeats.end());
    return names;
}

/// The height of characters that a size asks for.
std::int32_t HeightOf(double size) {
    constexpr double kMost = std::numeric_limits<std::int32_t>::max();
    return -static_cast<std::int32_t>(std::min(std::abs(size), kMost));
}

} // namespace

AString CFontOption::s_FaceName;

CFontOption::CFontOption() : CPropertyPage(kDialogFont) {}

const NoticeMap& CFontOption::GetNoticeMap() const {
    static constexpr NoticeEntry kEntries[] = {
        Notice<&CFontOption::OnFaceChosen>(kControlFontName, kNoticeSelectionDone),
        Notice<&CFontOption::OnFaceTyped>(kControlFontName, kNoticeTextChanged),
        Notice<&CFontOption::OnSizeChanged>(kControlFontSize, kNoticeTextChanged),
    };
    static const NoticeMap kMap{kEntries, &CPropertyPage::GetNoticeMap()};
    return kMap;
}

void CFontOption::DoDataExchange(CDataExchange& exchange) {
    exchange.Number(kControlFontSize, m_Size);
}

void CFontOption::OnInitDialog() {
    const LogFont& font = CurrentOptions().TextFont;
    m_Size = std::abs(double{1} * font.m_Height);
    s_FaceName = font.m_FaceName;
    CPropertyPage::OnInitDialog();
    ListFonts();
    ShowSample();
}

/// A face that isn't there is shown all the same.
void CFontOption::ListFonts() {
    IBackendDialog* const controls = GetControls();
    if (!controls)
        return;
    const std::vector<AString> names = FixedPitchFonts();
    for (const AString& name : names)
        controls->AddItem(kControlFontName, name);
    const auto own = std::ranges::find_if(
        names, [](const AString& name) { return name.CompareNoCase(s_FaceName) == 0; });
    if (own == names.end())
        controls->SetText(kControlFontName, s_FaceName);
    else
        controls->SetSelection(kControlFontName, static_cast<int>(own - names.begin()));
}

void CFontOption::OnFaceChosen() {
    if (IBackendDialog* controls = GetControls())
        s_FaceName = controls->GetText(kControlFontName);
    ShowSample();
}

/// The name of a font that is typed in full is chosen too.
void CFontOption::OnFaceTyped() {
    IBackendDialog* const controls = GetControls();
    if (controls &&
        std::ranges::binary_search(FixedPitchFonts(), controls->GetText(kControlFontName)))
        OnFaceChosen();
}

/// What is typed is looked at while it is unfinished, so nothing is refused yet.
void CFontOption::OnSizeChanged() {
    IBackendDialog* const controls = GetControls();
    if (!controls || !controls->GetText(kControlFontSize).ToDouble(m_Size))
        return;
    ShowSample();
}

void CFontOption::ShowSample() {
    const double points = std::isnan(m_Size) ? 0 : std::min(std::abs(m_Size), kMostSamplePoints);
    const int tenths = static_cast<int>(std::lround(points * kTenthsPerPoint));
    if (IBackendDialog* controls = GetControls();
        controls && m_SampleFont.CreatePointFont(tenths, s_FaceName))
        controls->SetFont(kControlFontSample, m_SampleFont.Get());
}

void CFontOption::OnOK() {
    LogFont& font = CurrentOptions().TextFont;
    font.m_FaceName = s_FaceName;
    font.m_Height = HeightOf(m_Size);
    if (IDesktop* desktop = GetDesktop())
        SaveTextFont(*desktop, font);
    Guarded([] { CNetlistApp::Get().RebuildFont(); });
}
