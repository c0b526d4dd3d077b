/// NetlistEditCmd: the command of one keystroke.
#pragma once

#include "iquorel_command.h"
#include "quorel_export.h"

class ICommandContext;
class IEditor;
class IViewKey;

/// A place for the keystroke on the desktop's stack of commands; the edit itself stands in the
/// journal of the editor's text.
class QUOREL_API NetlistEditCmd final : public IQuorelCommand {
public:
    /// Nothing of it is owned. Context and key may be null.
    NetlistEditCmd(ICommandContext* context, IViewKey* viewKey, IEditor* editor)
        : m_Context(context), m_ViewKey(viewKey), m_Editor(editor) {}
    ~NetlistEditCmd() override;

    ICommandContext* GetContext() const { return m_Context; }
    /// Of the instance in whose view the key was pressed.
    IViewKey* GetViewKey() const { return m_ViewKey; }
    IEditor* GetEditor() const { return m_Editor; }

private:
    ICommandContext* m_Context;
    IViewKey* m_ViewKey;
    IEditor* m_Editor;
};
