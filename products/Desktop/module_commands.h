/// ModuleCommands: the module's commands as Qt's actions and menus.
#pragma once

#include <functional>
#include <vector>

#include <QAction>
#include <QMenu>

#include "astring.h"

class CCmdTarget;
class CMenu;
class OpenDocument;

/// A menu of the module with those who answer its commands, as its contract gives them.
struct ModuleMenu {
    CMenu* m_Menu = nullptr; ///< null: there is none
    std::vector<CCmdTarget*> m_Targets;
};

/// The active editor's menu of an IViewDoc::MenuKind; none without a document.
ModuleMenu EditorMenuOf(OpenDocument* document, int kind);

/// The status text and the tool tip of a command; empty without a string.
QString StatusTextOf(unsigned command);
QString ToolTipOf(unsigned command);

/// Shows commands and runs them. Texts, states and names come from the update handlers each time a
/// menu opens; keys are shown but left to the module, which takes them itself.
class ModuleCommands {
public:
    using Source = std::function<ModuleMenu()>;

    /// @param ran told after each command
    explicit ModuleCommands(std::function<void()> ran) : m_Ran(std::move(ran)) {}

    /// Appends the entries of a menu to one on the screen; a single popup gives its entries.
    void Append(QMenu& shown, const Source& source);
    /// Appends one command with a text of the host's own.
    QAction* AppendCommand(QMenu& shown, unsigned command, const QString& text,
                           const Source& source);
    /// Sets an action's state by the command's update handler.
    static void Update(QAction& action, unsigned command, const ModuleMenu& menu);
    /// Runs a command, and tells.
    void Run(unsigned command, const Source& source);

private:
    void AppendItems(QMenu& shown, const CMenu& menu, const ModuleMenu& from, const Source& source);

    std::function<void()> m_Ran;
};

/// The title of a menu's only popup; empty when it has none.
QString PopupTitleOf(const ModuleMenu& menu);
