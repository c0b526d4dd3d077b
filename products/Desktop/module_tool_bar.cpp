#include "module_tool_bar.h"

#include <algorithm>

#include "find_box.h"
#include "ifactory_tools.h"
#include "line_icon.h"

namespace {

/// The pictures of the buttons by their bitmap's number.
constexpr struct {
    unsigned m_Bitmap;
    LineIcon m_Icon;
} kIcons[] = {
    {9007, LineIcon::bookmark},       {9008, LineIcon::bookmarkNone},
    {9009, LineIcon::bookmarkNext},   {9010, LineIcon::bookmarkPrevious},
    {9011, LineIcon::searchDown},     {9012, LineIcon::searchUp},
    {9013, LineIcon::searchDownCase}, {9014, LineIcon::searchUpCase},
};

} // namespace

ModuleToolBar::ModuleToolBar(IFactoryTools& tools, ModuleCommands& commands,
                             ModuleCommands::Source source, QWidget* parent)
    : QToolBar(QString::fromUtf16(tools.GetToolBarName()), parent), m_Commands(commands),
      m_Source(std::move(source)) {
    setObjectName(QStringLiteral("ModuleToolBar"));
    for (const ToolBarEntry& entry : tools.GetToolBarEntries()) {
        if (entry.m_Command == ToolBarEntry::kSeparator)
            addSeparator();
        else if (entry.m_Bitmap == ToolBarEntry::kControlPlace)
            AddBox(tools, entry.m_Command);
        else
            AddButton(entry.m_Command, entry.m_Bitmap);
    }
}

void ModuleToolBar::AddButton(unsigned command, unsigned bitmap) {
    QAction* const action = addAction(ToolTipOf(command));
    if (const auto icon =
            std::ranges::find(kIcons, bitmap, &std::decay_t<decltype(*kIcons)>::m_Bitmap);
        icon != std::end(kIcons))
        action->setIcon(MakeLineIcon(icon->m_Icon));
    action->setStatusTip(StatusTextOf(command));
    connect(action, &QAction::triggered, this,
            [this, command] { m_Commands.Run(command, m_Source); });
    m_Buttons.push_back({action, command});
}

void ModuleToolBar::AddBox(IFactoryTools& tools, unsigned command) {
    CComboBox* const box = tools.GetToolBarBox(command);
    if (!box)
        return;
    m_Box = new FindBox(*box, this);
    m_FirstBehindBox = m_Buttons.size();
    m_Box->m_OnReturn = [this](bool backward) { Search(backward); };
    addWidget(m_Box);
}

/// Return presses the button behind the box, with Shift the one after it.
void ModuleToolBar::Search(bool backward) {
    const std::size_t index = m_FirstBehindBox + (backward ? 1 : 0);
    if (index < m_Buttons.size())
        m_Commands.Run(m_Buttons[index].m_Command, m_Source);
}

void ModuleToolBar::Refresh() {
    const ModuleMenu menu = m_Source();
    for (const Button& button : m_Buttons)
        ModuleCommands::Update(*button.m_Action, button.m_Command, menu);
}
