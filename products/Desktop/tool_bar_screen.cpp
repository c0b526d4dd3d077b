#include "tool_bar_screen.h"

#include <algorithm>

#include <QLayout>
#include <QMainWindow>

#include "customize_page.h"
#include "module_tool_bar.h"

ToolBarScreen::ToolBarScreen(HostToolBars& host, Surroundings surroundings)
    : m_Host(host), m_Around(std::move(surroundings)) {
    m_Host.SetStateName(u"Desktop");
    m_Host.SetScreen(this);
}

ToolBarScreen::~ToolBarScreen() {
    delete m_Page;
    m_Host.SetScreen(nullptr);
}

void ToolBarScreen::Refresh() {
    for (ModuleToolBar* shown : m_Bars)
        shown->Refresh();
}

ModuleToolBar* ToolBarScreen::Find(const CQrToolBar& bar) const {
    const auto found = std::ranges::find_if(
        m_Bars, [&](const ModuleToolBar* shown) { return &shown->GetBar() == &bar; });
    return found == m_Bars.end() ? nullptr : *found;
}

void ToolBarScreen::BarComes(CQrToolBar& bar) {
    const CQrToolBar::Place before = bar.GetPlace(); // events move it
    QMainWindow& window = m_Around.m_Window;
    auto* const shown =
        new ModuleToolBar(bar,
                          {.m_Host = m_Host,
                           .m_Use = m_Around.m_Use,
                           .m_GetArea =
                               [this, &bar] {
                                   ModuleToolBar* const own = Find(bar);
                                   return own ? DockBarIdOf(m_Around.m_Window.toolBarArea(own)) : 0;
                               },
                           .m_OnEnd = [this, &bar] { BarGoes(bar); }},
                          &window);
    m_Bars.push_back(shown);
    shown->setIconSize(window.iconSize());
    window.addToolBar(shown);
    m_Around.m_AddToggle(*shown->toggleViewAction());
    m_Around.m_RestorePlaces();
    if (!bar.GetStateText().empty())
        Settle(*shown, before);
}

/// The window remembers where in its row a bar stood, which the bar's own state doesn't; but where
/// the two differ, the state is right.
void ToolBarScreen::Settle(ModuleToolBar& shown, const CQrToolBar::Place& place) {
    QMainWindow& window = m_Around.m_Window;
    if (place.mDocked && shown.isFloating())
        shown.setWindowFlags(Qt::Widget);
    if (place.mDocked && window.toolBarArea(&shown) != AreaOf(place.mDockBarId))
        window.addToolBar(AreaOf(place.mDockBarId), &shown);
    shown.setVisible(place.mVisible);
    if (!place.mDocked)
        shown.FloatAt({place.mX, place.mY});
}

void ToolBarScreen::ButtonsChanged(CQrToolBar& bar) {
    if (ModuleToolBar* shown = Find(bar))
        shown->ShowButtons();
    if (m_Page)
        m_Page->ShowBar();
    m_Around.m_Changed();
}

void ToolBarScreen::BarGoes(CQrToolBar& bar) {
    ModuleToolBar* const shown = Find(bar);
    std::erase(m_Bars, shown);
    bar.SetPeer(nullptr);
    delete shown;
}

void ToolBarScreen::CustomizingChanged() {
    for (ModuleToolBar* shown : m_Bars)
        shown->SetCustomizing(m_Host.IsCustomizing());
}

CPoint ToolBarScreen::GetClientOrigin() {
    const QPoint origin = m_Around.m_Window.mapToGlobal(QPoint(0, 0));
    return {origin.x(), origin.y()};
}

void ToolBarScreen::RecalcLayout() {
    m_Around.m_Window.layout()->activate();
}

void ToolBarScreen::Customize() {
    if (!m_Page)
        m_Page = new CustomizePage(m_Host, &m_Around.m_Window);
    m_Page->show();
    m_Page->raise();
    m_Page->activateWindow();
}
