#include "host_tool_bars.h"

#include <algorithm>
#include <utility>

#include "tool_bar_messages.h"
#include "tool_bar_options.h"
#include "tool_bars_data.h"

namespace {

constexpr StringRow kStrings[] = {{static_cast<unsigned>(kToolBarSectionString), u"ToolBars"}};

bool AreSame(const ToolBarButtonList& a, const ToolBarButtonList& b) {
    return std::ranges::equal(a, b, &ToolBarButton::IsSameButton);
}

ToolBarButtonList CopyList(const ToolBarButtonList* list) {
    return list ? *list : ToolBarButtonList();
}

} // namespace

/// The window to which the modules send. It is no window of the screen.
class HostToolBars::MainWindow : public CDockSite {
public:
    explicit MainWindow(HostToolBars& host) : m_Host(host) {}
    ~MainWindow() override = default;

protected:
    const MessageMap& GetMessageMap() const override {
        static constexpr MessageEntry kEntries[] = {
            Message<&MainWindow::OnTakeToolBars>(kMsgTakeToolBars),
            Message<&MainWindow::OnForgetToolBar>(kMsgForgetToolBar),
            Message<&MainWindow::OnAskCustomizing>(kMsgAskCustomizing),
            Message<&MainWindow::OnToolBarButton>(kMsgToolBarButton),
        };
        static const MessageMap kMap{kEntries, &CDockSite::GetMessageMap()};
        return kMap;
    }
    CPoint GetClientOrigin() const override {
        return m_Host.m_Screen ? m_Host.m_Screen->GetClientOrigin() : CPoint();
    }

private:
    std::intptr_t OnTakeToolBars(std::uintptr_t, std::intptr_t data) {
        m_Host.TakeBars(FromMessageValue<CToolBarsData>(data));
        return 0;
    }
    std::intptr_t OnForgetToolBar(std::uintptr_t, std::intptr_t bar) {
        m_Host.Forget(FromMessageValue<CQrToolBar>(bar));
        return 0;
    }
    std::intptr_t OnAskCustomizing(std::uintptr_t, std::intptr_t) { return m_Host.IsCustomizing(); }
    std::intptr_t OnToolBarButton(std::uintptr_t notice, std::intptr_t button) {
        return m_Host.HearOfButton(notice, FromMessageValue<const ToolBarButton>(button));
    }

    HostToolBars& m_Host;
};

HostToolBars::HostToolBars(IDesktop& desktop)
    : m_Desktop(desktop), m_Strings(kStrings), m_MainWindow(std::make_unique<MainWindow>(*this)) {
    RegisterStringSource(m_Strings);
}

HostToolBars::~HostToolBars() {
    UnregisterStringSource(m_Strings);
}

CWnd* HostToolBars::GetMainWindow() {
    return m_MainWindow.get();
}

void HostToolBars::RecalcLayout(int, int) {
    if (m_Screen)
        m_Screen->RecalcLayout();
}

void HostToolBars::SetScreen(IToolBarScreen* screen) {
    if (m_Screen)
        for (const Hosted& hosted : m_Bars)
            m_Screen->BarGoes(*hosted.m_Bar);
    m_Screen = screen;
    if (m_Screen)
        for (const Hosted& hosted : m_Bars)
            m_Screen->BarComes(*hosted.m_Bar);
}

std::vector<CQrToolBar*> HostToolBars::GetBars() const {
    std::vector<CQrToolBar*> bars;
    for (const Hosted& hosted : m_Bars)
        bars.push_back(hosted.m_Bar);
    return bars;
}

const ToolBarButton* HostToolBars::FindInCatalogue(const ToolBarButton& button) const {
    const auto found = std::ranges::find_if(m_Catalogue, [&](const ToolBarButton& each) {
        return each.mCommand == button.mCommand && each.mBitmap == button.mBitmap;
    });
    return found == m_Catalogue.end() ? nullptr : &*found;
}

bool HostToolBars::HearOfButton(std::uintptr_t notice, const ToolBarButton& button) {
    const bool isKnown = FindInCatalogue(button) != nullptr;
    if (notice == kButtonLoaded && !isKnown)
        m_Catalogue.push_back(button);
    return isKnown;
}

/// The lists are copies: what the user makes of a bar is not the module's.
void HostToolBars::TakeBars(CToolBarsData& data) {
    const auto& definitions = data.GetShownBars();
    for (const auto& bar : data.GetBars()) {
        const auto definition =
            std::ranges::find(definitions, bar->GetBarName(), &ToolBarDefinition::mName);
        auto buttons = std::make_unique<ToolBarButtonList>(
            CopyList(definition == definitions.end() ? nullptr : definition->mButtons.get()));
        m_Bars.push_back({bar.get(), std::move(buttons)});
        bar->SetButtons(m_Bars.back().m_Buttons.get());
        bar->SetHostWindow(m_MainWindow.get());
        if (m_Screen)
            m_Screen->BarComes(*bar);
    }
}

/// The bar is ending; its window has gone.
void HostToolBars::Forget(CQrToolBar& bar) {
    std::erase_if(m_Bars, [&](const Hosted& hosted) { return hosted.m_Bar == &bar; });
}

void HostToolBars::SetCustomizing(bool on) {
    if (std::exchange(m_Customizing, on) != on && m_Screen)
        m_Screen->CustomizingChanged();
}

const ToolBarButtonList* HostToolBars::FindDefaults(const CQrToolBar& bar) {
    for (const auto* list : {&bar.GetData().GetToolBarDefs(), &bar.GetData().GetBuiltInBars()})
        if (const auto found =
                std::ranges::find(*list, bar.GetBarName(), &ToolBarDefinition::mName);
            found != list->end())
            return found->mButtons.get();
    return nullptr;
}

void HostToolBars::SetButtons(CQrToolBar& bar, ToolBarButtonList buttons) {
    constexpr std::size_t kMost = CQrToolBar::kMostButtons;
    if (buttons.size() > kMost)
        buttons.erase(buttons.begin() + kMost, buttons.end());
    if (buttons.empty())
        buttons.push_back({.mCommand = ToolBarEntry::kSeparator,
                           .mBitmap = ToolBarEntry::kNoBitmap,
                           .mText = {}});
    if (!bar.GetButtons() || AreSame(*bar.GetButtons(), buttons))
        return;
    *bar.GetButtons() = std::move(buttons);
    StoreButtons(bar);
    if (m_Screen)
        m_Screen->ButtonsChanged(bar);
}

void HostToolBars::ResetButtons(CQrToolBar& bar) {
    SetButtons(bar, CopyList(FindDefaults(bar)));
}

/// The module's own buttons are stored as none, so that a bar nobody has customised gets what a
/// later module adds to it.
void HostToolBars::StoreButtons(const CQrToolBar& bar) {
    AString text;
    if (const ToolBarButtonList* defaults = FindDefaults(bar);
        !defaults || !AreSame(*defaults, *bar.GetButtons()))
        CQrToolBar::ToolbarButtons(*bar.GetButtons()).ToString(text);
    const AString key = GetToolBarButtonsKey(bar.GetData().GetName(), bar.GetBarName());
    m_Desktop.SetStringOption(0, GetToolBarSection(), key, text);
}

void HostToolBars::StoreStates() {
    for (const Hosted& hosted : m_Bars) {
        CQrToolBar& bar = *hosted.m_Bar;
        bar.SaveState();
        if (!bar.GetStateText().empty())
            m_Desktop.SetStringOption(0, GetToolBarStateSection(m_StateName),
                                      GetToolBarStateKey(bar.GetData().GetName(), bar.GetBarName()),
                                      bar.GetStateText());
    }
}

void HostToolBars::LetGo() {
    StoreStates();
    for (const Hosted& hosted : m_Bars)
        Release(hosted);
    m_Bars.clear();
    m_Catalogue.clear(); // its pictures are the modules'
}

void HostToolBars::Release(const Hosted& hosted) {
    if (m_Screen)
        m_Screen->BarGoes(*hosted.m_Bar);
    hosted.m_Bar->SetHostWindow(nullptr);
    hosted.m_Bar->SetButtons(nullptr);
}
