/// CSimEditView: shows a text document in a scrolling window.
#pragma once

#include <memory>

#include "text_view.h"
#include "view.h"

class CBaseEditor;
class IDesignInstance;
class IViewKey;

/// One of the views of an editor; it belongs to a design instance or to none. It keeps the measures
/// of the text that its document tells it.
class CSimEditView : public CScrollView, public ITextView {
public:
    CSimEditView();
    /// The document then has another active view, or none.
    ~CSimEditView() override;

    /// The instance of the view's key; null without a key, and when the instance is gone.
    IDesignInstance* GetInstance() const;
    /// Keeps the instance's key; null clears it.
    void SetInstance(IDesignInstance* instance);

    /// The longest line seen, in columns.
    std::int32_t GetMaxLineLength() const { return m_MaxLineLength; }

    void ResetText(std::int32_t lineCount, std::int32_t width) override;
    void SetMaxLineLength(std::int32_t width) override;

    void OnActivateView(bool activate, CView* activated, CView* deactivated) override;

    /// The view has become the active one of its document (activate), or losing is no longer it:
    /// tells the document, and the instance or the desktop.
    virtual void ActivationNotice(bool activate, CSimEditView* view, CSimEditView* losing);
    /// The mark that the frame sets while it gives that notice itself; good when the view has gone.
    std::shared_ptr<bool> BusyMark() const { return m_Busy; }

private:
    CBaseEditor* GetEditor() const;
    void TellActivation(CBaseEditor& editor, bool activate);

    std::int32_t m_LineCount = 1;
    std::int32_t m_MaxLineLength = kLeastViewWidth;
    IViewKey* m_ViewKey = nullptr; ///< the instance's
    std::shared_ptr<bool> m_Busy = std::make_shared<bool>(false);
};
