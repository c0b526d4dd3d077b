/// HostToolBars: a host's side of its modules' toolbars: buttons, saving, customising.
#pragma once

#include <memory>
#include <vector>

#include "dock_site.h"
#include "idesktop.h"
#include "qr_tool_bar.h"
#include "quorel_export.h"
#include "resource_strings.h"

/// Puts the toolbars on the screen. None of it is asked for without a bar.
class QUOREL_API IToolBarScreen {
public:
    /// A bar has come, with its buttons and where it was at the last close. The screen gives it its
    /// window, if it is to have one.
    virtual void BarComes(CQrToolBar& bar) = 0;
    /// The bar has other buttons.
    virtual void ButtonsChanged(CQrToolBar& bar) = 0;
    /// The bar ends, or the host lets go of it: the window goes.
    virtual void BarGoes(CQrToolBar& bar) = 0;
    /// The user begins or ends customising.
    virtual void CustomizingChanged() = 0;
    /// Where the main window's client area begins on the screen.
    virtual CPoint GetClientOrigin() = 0;
    /// Lays the main window out again.
    virtual void RecalcLayout() = 0;

protected:
    ~IToolBarScreen() = default;
};

/// The toolbars of all modules of a desktop. It answers their messages as the desktop's main window
/// does, gives each bar a list of buttons of its own, keeps the pictures and texts of all buttons,
/// and stores states and buttons in the desktop's options. It names the section of these options,
/// "ToolBars", as a string resource while it lives.
///
/// A host without a screen has the bars all the same.
class QUOREL_API HostToolBars : public IToolBarHost {
public:
    /// @param desktop for its options; outlives this object
    explicit HostToolBars(IDesktop& desktop);
    HostToolBars(const HostToolBars&) = delete;
    HostToolBars& operator=(const HostToolBars&) = delete;
    virtual ~HostToolBars();

    CWnd* GetMainWindow() override;
    void RecalcLayout(int first, int second) override;
    void GetToolBarStateName(AString& name) override { name = m_StateName; }

    /// Takes the screen, not owned, which gets the bars that are there; null: no screen any more.
    void SetScreen(IToolBarScreen* screen);
    /// The name under which states are stored, ahead of the first bars. Empty: in an empty section,
    /// which a file of options can't keep.
    void SetStateName(const AString& name) { m_StateName = name; }

    /// Those at hand, in the order in which they came.
    std::vector<CQrToolBar*> GetBars() const;
    /// Every button that a module has told of, once each, with picture and text.
    const std::vector<ToolBarButton>& GetCatalogue() const { return m_Catalogue; }
    /// The entry of the catalogue for a button of a list; null when there is none.
    const ToolBarButton* FindInCatalogue(const ToolBarButton& button) const;

    /// @name Customising
    /// @{
    bool IsCustomizing() const { return m_Customizing; }
    void SetCustomizing(bool on);
    /// The buttons as the bar's module wants them; none for a bar that it doesn't know.
    static const ToolBarButtonList* FindDefaults(const CQrToolBar& bar);
    /// Gives a bar other buttons and stores them. Buttons over CQrToolBar::kMostButtons are left
    /// out. A bar without any holds a separator, since no list can't be told from none stored.
    void SetButtons(CQrToolBar& bar, ToolBarButtonList buttons);
    /// Back to the buttons of the module.
    void ResetButtons(CQrToolBar& bar);
    /// @}

    /// Stores the states of all bars, as their windows now are.
    void StoreStates();
    /// Stores the states and lets go of all bars. To be called ahead of the end of their modules,
    /// which doesn't tell.
    void LetGo();

private:
    class MainWindow;
    struct Hosted {
        CQrToolBar* m_Bar;
        std::unique_ptr<ToolBarButtonList> m_Buttons;
    };

    void TakeBars(CToolBarsData& data);
    void Forget(CQrToolBar& bar);
    bool HearOfButton(std::uintptr_t notice, const ToolBarButton& button);
    void StoreButtons(const CQrToolBar& bar);
    void Release(const Hosted& hosted);

    IDesktop& m_Desktop;
    StringTable m_Strings;
    AString m_StateName;
    std::unique_ptr<MainWindow> m_MainWindow;
    IToolBarScreen* m_Screen = nullptr;
    std::vector<Hosted> m_Bars;
    std::vector<ToolBarButton> m_Catalogue;
    bool m_Customizing = false;
};
