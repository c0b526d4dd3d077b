/// ModuleToolBar: one of the module's toolbars on the screen.
#pragma once

#include <functional>
#include <vector>

#include <QToolBar>

#include "module_commands.h"
#include "qr_tool_bar.h"

class QKeyEvent;
class FindBox;
class HostToolBars;

/// The areas of a main window as the numbers of dock bars; an unknown number is the top.
unsigned DockBarIdOf(Qt::ToolBarArea area);
Qt::ToolBarArea AreaOf(unsigned dockBarId);

/// The picture of a button; a null one when it has none.
QIcon IconOf(const ToolBarButton& button);

/// What becomes of the user's clicks and keys in a bar. All outlives it.
struct ModuleBarUse {
    ModuleCommands& m_Commands;
    ModuleCommands::Source m_Source;                    ///< gives who answers the commands
    std::function<void()> m_OnEscape;                   ///< out of a box
    std::function<bool(const QKeyEvent&)> m_OnOtherKey; ///< that a box has no use for
};

/// Shows the buttons and controls of the module's bar, and passes on to it what the pointer does.
class ModuleToolBar : public QToolBar, public IToolBarPeer {
public:
    /// What the bar needs of those around it; all outlives it.
    struct Surroundings {
        HostToolBars& m_Host;
        ModuleBarUse m_Use;
        std::function<unsigned()> m_GetArea; ///< the number of the dock bar
        std::function<void()> m_OnEnd;       ///< deletes this bar, whose own one ends
    };

    ModuleToolBar(CQrToolBar& bar, Surroundings surroundings, QWidget* parent);
    /// Shows the bar's present list of buttons.
    void ShowButtons();
    /// Brings the buttons' states up to date.
    void Refresh();
    /// Lets it stand free, with its upper left corner there.
    void FloatAt(CPoint place);
    /// Customising begins or ends.
    void SetCustomizing(bool on);
    CQrToolBar& GetBar() const { return m_Bar; }

    CRect GetItemRect(std::size_t index) override;
    bool IsFloating() override { return isFloating(); }
    bool IsBarVisible() override { return !isHidden(); }
    unsigned GetDockBarId() override;
    CRect GetWindowRect() override;
    std::optional<CRect> GetFrameRect() override;
    std::intptr_t DefaultMessage(unsigned message, std::uintptr_t first,
                                 std::intptr_t second) override;
    void DisableControl(CWnd& control) override;
    void ToolBarEnds() override { m_Around.m_OnEnd(); }

protected:
    bool event(QEvent* event) override;
    /// While customising, buttons are dragged: along the bar to another place, or off it.
    bool eventFilter(QObject* watched, QEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    struct Item {
        QAction* m_Action;
        unsigned m_Command; ///< 0: not a button that is pressed
    };
    struct Box {
        FindBox* m_Shown;
        QAction* m_Action;
        CWnd* m_Window;
    };
    /// An event on its way through the bar.
    struct Passing {
        QEvent* m_Event;
        bool m_IsTaken;
    };
    QAction* AddItem(const ToolBarButton& button);
    QAction* AddButton(const ToolBarButton& button);
    QAction* AddBox(const ToolBarButton& button);
    void Search(unsigned box, bool backward);
    bool Pass(unsigned message, QEvent& event);
    void FitBoxes();
    bool FilterMouse(QWidget& button, const QMouseEvent& mouse);
    void DragButton(std::size_t index);
    void MoveButton(std::size_t from, std::optional<std::size_t> to);
    std::size_t IndexAt(QPoint place) const;

    CQrToolBar& m_Bar;
    Surroundings m_Around;
    std::vector<Item> m_Items; ///< one for each of the bar's buttons
    std::vector<Box> m_Boxes;
    Passing* m_Passing = nullptr;
    QPoint m_PressedAt;                     ///< while customising
    std::optional<std::size_t> m_Dragged;   ///< the index of the button that is on its way
    std::optional<std::size_t> m_DropIndex; ///< where it was dropped
};
