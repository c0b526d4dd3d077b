/// ToolBarScreen: the modules' toolbars on the main window.
#pragma once

#include <functional>
#include <vector>

#include <QPointer>

#include "host_tool_bars.h"
#include "module_tool_bar.h"

class CustomizePage;
class QMainWindow;

/// Shows the bars that the host has, where they were at the last close. Gone before the host.
class ToolBarScreen : public IToolBarScreen {
public:
    /// What it needs of the window; all outlives it.
    struct Surroundings {
        QMainWindow& m_Window;
        ModuleBarUse m_Use;
        /// A bar has come: the window's own memory of places has a chance to be exact.
        std::function<void()> m_RestorePlaces;
        std::function<void(QAction&)> m_AddToggle; ///< of a bar that has come
        std::function<void()> m_Changed;           ///< options want to be saved
    };

    ToolBarScreen(HostToolBars& host, Surroundings surroundings);
    ToolBarScreen(const ToolBarScreen&) = delete;
    ToolBarScreen& operator=(const ToolBarScreen&) = delete;
    ~ToolBarScreen();

    /// Brings the buttons' states up to date.
    void Refresh();
    /// Lets the user choose the buttons, while he works on.
    void Customize();

    void BarComes(CQrToolBar& bar) override;
    void ButtonsChanged(CQrToolBar& bar) override;
    void BarGoes(CQrToolBar& bar) override;
    void CustomizingChanged() override;
    CPoint GetClientOrigin() override;
    void RecalcLayout() override;

private:
    ModuleToolBar* Find(const CQrToolBar& bar) const;
    void Settle(ModuleToolBar& shown, const CQrToolBar::Place& place);

    HostToolBars& m_Host;
    Surroundings m_Around;
    std::vector<ModuleToolBar*> m_Bars; ///< the window's
    QPointer<CustomizePage> m_Page;
};
