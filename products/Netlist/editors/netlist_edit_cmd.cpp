#include "netlist_edit_cmd.h"

#include "assertion.h"
#include "base_editor.h"
#include "sim_edit_view.h"

namespace {

CSimEditView* ActiveViewOf(const std::weak_ptr<CBaseEditor>& editor) {
    const std::shared_ptr<CBaseEditor> alive = editor.lock();
    return alive ? alive->GetActiveView() : nullptr;
}

} // namespace

NetlistEditCmd::NetlistEditCmd(ICommandContext* context, IViewKey* viewKey, IEditor* editor)
    : QuorelCommand(context, viewKey, editor) {
    if (auto* const own = dynamic_cast<CBaseEditor*>(editor))
        m_Editor = own->GetHandle();
}

NetlistEditCmd::~NetlistEditCmd() = default;

bool NetlistEditCmd::Execute() {
    USE_ASSERT_TEXT(GetContext().mEditor, "ed");
    if (const std::shared_ptr<CBaseEditor> editor = m_Editor.lock())
        editor->TellTextChanged(this);
    return true;
}

void NetlistEditCmd::Undo() {
    QuorelCommand::Undo();
    if (CSimEditView* view = ActiveViewOf(m_Editor))
        view->UndoEdit();
}

void NetlistEditCmd::Redo() {
    QuorelCommand::Redo();
    if (CSimEditView* view = ActiveViewOf(m_Editor))
        view->RedoEdit();
}
