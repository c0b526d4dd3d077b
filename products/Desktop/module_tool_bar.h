/// ModuleToolBar: the module's toolbar, built from its button table.
#pragma once

#include <functional>
#include <vector>

#include <QToolBar>

#include "module_commands.h"

class FindBox;
class IFactoryTools;

class ModuleToolBar : public QToolBar {
public:
    /// @param tools outlives the bar, as does commands @param source gives who answers the commands
    ModuleToolBar(IFactoryTools& tools, ModuleCommands& commands, ModuleCommands::Source source,
                  QWidget* parent);

    /// Brings the buttons' states up to date.
    void Refresh();
    /// Null when the table has no box.
    FindBox* GetFindBox() const { return m_Box; }

private:
    struct Button {
        QAction* m_Action;
        unsigned m_Command;
    };
    void AddButton(unsigned command, unsigned bitmap);
    void AddBox(IFactoryTools& tools, unsigned command);
    void Search(bool backward);

    ModuleCommands& m_Commands;
    ModuleCommands::Source m_Source;
    std::vector<Button> m_Buttons;
    FindBox* m_Box = nullptr;
    std::size_t m_FirstBehindBox = 0; ///< among the buttons
};
