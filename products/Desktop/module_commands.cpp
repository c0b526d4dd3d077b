#include "module_commands.h"

#include "cmd_target.h"
#include "ieditor.h"
#include "menu.h"
#include "open_document.h"
#include "qt_strings.h"

namespace {

/// A menu that is nothing but one popup stands for that popup.
const CMenu& BodyOf(const CMenu& menu) {
    const CMenu* const only = menu.GetItemCount() == 1 ? menu.GetSubMenu(0) : nullptr;
    return only ? *only : menu;
}

QString StringOf(unsigned command, int part) {
    return FromAString(AString(ResourceId{command}))
        .section(QLatin1Char('\n'), part, part)
        .trimmed();
}

} // namespace

ModuleMenu EditorMenuOf(OpenDocument* document, int kind) {
    ModuleMenu found;
    if (document)
        static_cast<void>(
            document->GetEditor().m_Editor->GetEditorMenu(kind, found.m_Menu, found.m_Targets));
    return found;
}

QString StatusTextOf(unsigned command) {
    return StringOf(command, 0);
}

QString ToolTipOf(unsigned command) {
    return StringOf(command, 1);
}

QString PopupTitleOf(const ModuleMenu& menu) {
    const bool isPopup = menu.m_Menu && &BodyOf(*menu.m_Menu) != menu.m_Menu;
    return isPopup ? FromAString(menu.m_Menu->GetItem(0).m_Text) : QString();
}

void ModuleCommands::Append(QMenu& shown, const Source& source) {
    const ModuleMenu menu = source();
    if (menu.m_Menu)
        AppendItems(shown, BodyOf(*menu.m_Menu), menu, source);
}

void ModuleCommands::AppendItems(QMenu& shown, const CMenu& menu, const ModuleMenu& from,
                                 const Source& source) {
    for (std::size_t i = 0; i < menu.GetItemCount(); ++i) {
        const CMenuItem& item = menu.GetItem(i);
        if (item.m_Popup)
            AppendItems(*shown.addMenu(FromAString(item.m_Text)), *item.m_Popup, from, source);
        else if (item.IsSeparator())
            shown.addSeparator();
        else
            Update(*AppendCommand(shown, item.m_Command, FromAString(item.m_Text), source),
                   item.m_Command, from);
    }
}

QAction* ModuleCommands::AppendCommand(QMenu& shown, unsigned command, const QString& text,
                                       const Source& source) {
    QAction* const action = shown.addAction(text);
    action->setStatusTip(StatusTextOf(command));
    QObject::connect(action, &QAction::triggered, &shown,
                     [this, command, source] { Run(command, source); });
    return action;
}

void ModuleCommands::Update(QAction& action, unsigned command, const ModuleMenu& menu) {
    for (CCmdTarget* target : menu.m_Targets) {
        CCmdUI state(command);
        if (!target->UpdateCommand(state))
            continue;
        action.setEnabled(state.IsEnabled());
        action.setCheckable(action.isCheckable() || state.IsChecked());
        action.setChecked(state.IsChecked());
        if (!state.GetText().empty())
            action.setText(FromAString(state.GetText()));
        return;
    }
    action.setEnabled(false);
}

void ModuleCommands::Run(unsigned command, const Source& source) {
    for (CCmdTarget* target : source().m_Targets)
        if (target->RunCommand(command))
            break;
    m_Ran();
}
