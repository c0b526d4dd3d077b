/// The design side of a desktop: designs, their instances, components and command contexts, and
/// the listeners that hear of an editor's and a command's work.
#pragma once

#include <vector>

#include "astring.h"
#include "quorel_export.h"

class IDesign;
class IDesignInstance;
class IDesktop;
class IEditor;
class IQuorelCommand;
class PropList;

/// What names an instance beyond its life: views and commands keep the key, never the instance.
/// It lasts until the design that the instance belongs to has ended, with its editors and commands.
class QUOREL_API IViewKey {
public:
    /// The instance of this key; null when it is gone.
    virtual IDesignInstance* GetInstance() = 0;

protected:
    ~IViewKey() = default;
};

/// Hears of commands that were run, undone or redone in an instance's view.
class QUOREL_API ICommandListener {
public:
    virtual void CommandFinished(IQuorelCommand* command) = 0;

protected:
    ~ICommandListener() = default;
};

/// One use of a design, to which views of its editor belong.
class QUOREL_API IDesignInstance {
public:
    virtual void GetInstanceName(AString& name) = 0;
    /// Never null.
    virtual IViewKey* GetViewKey() = 0;
    virtual void EditorActivated(IEditor* editor) = 0;
    virtual void EditorDeactivated(IEditor* editor) = 0;
    /// May be null.
    virtual ICommandListener* GetCommandListener() = 0;

protected:
    ~IDesignInstance() = default;
};

/// Where a command acts, and who is told of it.
class QUOREL_API ICommandContext {
public:
    virtual void GetName(AString& name) = 0;
    /// The desktop, through which a command finds prompt and user interface; may be null.
    virtual IDesktop* GetOwner() = 0;
    virtual void CommandDone(IQuorelCommand* command) = 0;
    virtual void CommandUndone(IQuorelCommand* command) = 0;
    virtual void CommandFinished(IQuorelCommand* command) = 0;

protected:
    ~ICommandContext() = default;
};

/// The project that a design belongs to.
class QUOREL_API IProject {
public:
    virtual void GetName(AString& name) = 0;
    /// May be null.
    virtual ICommandContext* GetCommandContext() = 0;

protected:
    ~IProject() = default;
};

/// A design component: what a design editor edits.
class QUOREL_API IComponent {
public:
    /// The variables of the component, owned by it. Never null.
    virtual PropList* GetVariableList() = 0;
    /// The properties of the component, owned by it. Never null.
    virtual PropList* GetPropertyList() = 0;
    /// The design that the component stands for; may be null.
    virtual IDesign* GetDesign() = 0;

protected:
    ~IComponent() = default;
};

/// Finds components.
class QUOREL_API IComponentLibrary {
public:
    /// The component of that name, or null. The module passes flag 1 and the asking design.
    virtual IComponent* FindComponent(const AString& name, int flag, IDesign* design) = 0;

protected:
    ~IComponentLibrary() = default;
};

/// What manages a desktop's designs.
class QUOREL_API IDesignManager {
public:
    /// May be null.
    virtual IComponentLibrary* GetComponentLibrary() = 0;

protected:
    ~IDesignManager() = default;
};

/// A design, to which a netlist editor belongs.
class QUOREL_API IDesign {
public:
    virtual void GetName(AString& name) = 0;
    /// Executes the command, which belongs to the design's command stack from then on.
    virtual void RunCommand(IQuorelCommand* command) = 0;
    /// May be null.
    virtual IProject* GetProject() = 0;
    /// May be null.
    virtual IDesignManager* GetManager() = 0;

protected:
    ~IDesign() = default;
};

/// One recorded change of an object, for the object itself to understand.
class QUOREL_API IChange {
public:
    virtual ~IChange() = default;
};

/// An object that commands change, told of its own changes after a command, an undo or a redo.
class QUOREL_API IChangeTarget {
public:
    /// Either list may be null: no change of that sort. Both belong to the command.
    /// @param changes those of this direction (done and redone, or undone)
    /// @param common those that hold in either direction
    virtual void ChangesApplied(const std::vector<IChange*>* changes,
                                const std::vector<IChange*>* common, IQuorelCommand* command) = 0;

protected:
    ~IChangeTarget() = default;
};

/// Listens to one editor; not owned by it. It may add or remove itself while it is told.
class QUOREL_API IEditorExtender {
public:
    /// A keystroke has changed the text.
    virtual void TextChanged(IQuorelCommand* command) = 0;
    /// The script was saved: take it by GetText. Script editors only.
    virtual void Saved() = 0;
    /// The views were closed. Script editors only.
    virtual void Closed() = 0;

protected:
    ~IEditorExtender() = default;
};
