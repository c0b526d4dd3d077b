/// IViewDoc: a document that the desktop drives by design instance, never by window.
#pragma once

#include <vector>

#include "astring.h"
#include "quorel_export.h"

class CCmdTarget;
class CMenu;
class CToolBarsData;
class ICommandContext;
class IDesignInstance;
namespace io {
class CBlock;
}

/// The operations stand in their fixed order; the `Reserved` ones keep their places and are never
/// called by the module. The desktop destroys an editor through its first operation.
class QUOREL_API IViewDoc {
public:
    /// Kinds of interface for GetInterface, and what the pointer given is.
    enum InterfaceKind {
        kDocumentInterface = 0,     ///< the document itself, as a `CObject*`
        kViewDocInterface = 2,      ///< `IViewDoc*`
        kEditorInterface = 3,       ///< `IEditor*`
        kDesignEditorInterface = 8, ///< `IDesignEditor*`
    };
    /// Kinds of menu for GetEditorMenu and IFactory::GetFactoryMenu.
    enum MenuKind { kEditMenu = 1, kExportMenu = 5, kOptionsMenu = 8 };

    virtual ~IViewDoc() = default;
    /// The interface of a kind; null for a kind that the editor hasn't got. From kind 0's CObject
    /// a dynamic_cast leads to IEditorInspector and IEditorDriver.
    virtual void* GetInterface(int kind) = 0;
    virtual void GetObjectName(AString& name) = 0;
    /// Null when there is none.
    virtual ICommandContext* GetCommandContext() = 0;
    virtual int Reserved4() { return 0; }
    /// Writes what the project keeps of the editor, but for its text and views. @return true
    virtual bool WriteEditor(io::CBlock* parent) = 0;
    virtual void GetBlockName(AString& name) = 0;
    /// Opens or places the views of an instance as WriteViews wrote them.
    virtual void ReadViews(io::CBlock* block, IDesignInstance* instance) = 0;
    /// Shows the document in a frame of that instance, the one that is there or a new one.
    virtual void OpenView(IDesignInstance* instance) = 0;
    /// Whether the first of the document's views belongs to the instance.
    virtual bool IsFirstViewOf(IDesignInstance* instance) = 0;
    virtual void CloseViews(IDesignInstance* instance) = 0;
    virtual void CloseAllViews() = 0;
    /// Writes the placements of the instance's views into the block. @return true
    virtual bool WriteViews(io::CBlock* block, IDesignInstance* instance) = 0;
    virtual void Reserved13() {}
    /// Builds the title anew from the names of instance, project and design.
    virtual void RefreshTitle() = 0;
    virtual int Reserved15() { return 0; }
    virtual bool Reserved16() { return true; }
    /// The editor's menu of a kind, which stays the editor's; the active view is appended to
    /// targets. @return false for another kind, nothing is touched then
    virtual bool GetEditorMenu(int kind, CMenu*& menu, std::vector<CCmdTarget*>& targets) = 0;
    /// The toolbars of the editor's module, owned by its factory; may be null.
    virtual CToolBarsData* GetToolBars() = 0;
    virtual bool Reserved19() { return false; }

protected:
    IViewDoc() = default;
    IViewDoc(const IViewDoc&) = default;
    IViewDoc& operator=(const IViewDoc&) = default;
};
