/// CDocument: what is edited, apart from any window: its views, title, path and modified flag.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "astring.h"
#include "cmd_target.h"

class CAcceleratorTable;
class CArchive;
class CDocTemplate;
class CFrameWnd;
class CView;

/// The base of every document. It doesn't own its views: a view enters and leaves the list by
/// AddView and RemoveView, and a view still there when the document goes is told that it has no
/// document any more. A document in a template's list leaves it when it is destroyed.
class QUOREL_API CDocument : public CCmdTarget {
public:
    CDocument();
    ~CDocument() override;

    /// The views in the order in which they were added. Copy the list before an operation that may
    /// destroy views.
    const std::vector<CView*>& GetViews() const { return m_Views; }
    /// Puts a view that has no document at the end of the list. Null and a view with a document
    /// are assertions and change nothing.
    void AddView(CView* view);
    /// Takes a view out; one that isn't in the list changes nothing. When the last view leaves and
    /// the document is auto-deleting, the document destroys itself.
    void RemoveView(CView* view);
    /// Whether the document destroys itself with its last view. Initially false: whoever made it
    /// destroys it.
    void SetAutoDelete(bool on) { m_AutoDelete = on; }

    /// Calls OnUpdate of every view but the sender (null: of all), in the list's order. hint and
    /// object mean what document and views have agreed on. A view may leave the list meanwhile.
    void UpdateAllViews(CView* sender, std::intptr_t hint = 0, CObject* object = nullptr);
    /// OnInitialUpdate of every view, as after a new or loaded text.
    void SendInitialUpdate();

    virtual bool IsModified() const { return m_Modified; }
    virtual void SetModifiedFlag(bool modified = true) { m_Modified = modified; }

    const AString& GetTitle() const { return m_Title; }
    /// Stores the title and shows it in the frames of all views.
    virtual void SetTitle(const AString& title);
    const AString& GetPathName() const { return m_PathName; }
    /// Stores the path; the title isn't touched.
    virtual void SetPathName(const AString& path) { m_PathName = path; }

    /// Reads or writes the document, by the archive's direction. The base does nothing.
    virtual void Serialize(CArchive& archive);
    /// Makes the document a new, empty one: DeleteContents, not modified, no path.
    virtual bool OnNewDocument();
    /// Destroys the content, not the document. The base does nothing.
    virtual void DeleteContents();
    /// Asked before the document is closed: it may ask its user and save. The base says yes.
    /// @return false: it is to stay open
    virtual bool SaveModified() { return true; }
    /// Destroys the frames of all views, then the document itself if it is auto-deleting.
    virtual void OnCloseDocument();

    /// The accelerators of this document's frames when no menu brings its own; null for none.
    virtual const CAcceleratorTable* GetDefaultAccelerator() { return nullptr; }

    /// The template in whose list the document stands, null when none.
    CDocTemplate* GetDocTemplate() const { return m_Template; }

    /// Own map first, then the template's.
    Route RouteCommand(unsigned id) override;

private:
    friend class CDocTemplate;

    std::vector<CView*> m_Views;
    AString m_Title;
    AString m_PathName;
    CDocTemplate* m_Template = nullptr;
    bool m_Modified = false;
    bool m_AutoDelete = false;
};
