/// CustomizePage: where the user chooses the buttons of the modules' toolbars.
#pragma once

#include <QDialog>

#include "tool_bar_definition.h"

class CQrToolBar;
class HostToolBars;
class QComboBox;
class QListWidget;
class QPushButton;

/// The buttons that there are beside those of one bar. Each change is made at once. While the page
/// is there, toolbars are being customised; it deletes itself when it is closed.
class CustomizePage : public QDialog {
public:
    /// @param host outlives the page
    CustomizePage(HostToolBars& host, QWidget* parent);
    ~CustomizePage() override;

    /// Shows the chosen bar's present buttons.
    void ShowBar();

private:
    void BuildLists();
    void FillAvailable();
    QPushButton* AddButton(const QString& text, void (CustomizePage::*run)());
    CQrToolBar* GetBar() const;
    ToolBarButtonList GetShown() const;
    void Change(const ToolBarButtonList& buttons, int selected);
    void Add();
    void Remove();
    void MoveUp() { Move(-1); }
    void MoveDown() { Move(1); }
    void Move(int distance);
    void TakeOrder();
    void Reset();
    void EnableButtons();

    HostToolBars& m_Host;
    ToolBarButtonList m_Choice; ///< what the list of available buttons shows
    QComboBox* m_Bars;
    QListWidget* m_Available;
    QListWidget* m_Shown;
    QPushButton* m_Add;
    QPushButton* m_Remove;
    QPushButton* m_Up;
    QPushButton* m_Down;
    QPushButton* m_Reset;
};
