/// NetlistEditCmd: the command of one keystroke.
#pragma once

#include <memory>

#include "quorel_command.h"

class CBaseEditor;

/// A place for the keystroke on the desktop's stack of commands; the edit itself stands in the
/// journal of the editor's text. Undoing and redoing have the editor's active view replay one
/// action of the journal; without such a view, or when the editor is gone, nothing more happens.
class NetlistEditCmd final : public QuorelCommand {
public:
    /// Nothing is owned; each may be null.
    NetlistEditCmd(ICommandContext* context, IViewKey* viewKey, IEditor* editor);
    ~NetlistEditCmd() override;

    /// Tells the editor's extenders that the text has changed. A command that was made without an
    /// editor is an assertion. @return true
    bool Execute() override;
    void Undo() override;
    void Redo() override;
    void GetSecondDescription(AString& description) const override { description.clear(); }
    void Reserved19() override {}

private:
    std::weak_ptr<CBaseEditor> m_Editor;
};
