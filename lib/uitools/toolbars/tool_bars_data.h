/// CToolBarsData: the toolbars of one module, described to the host.
#pragma once

#include <memory>
#include <vector>

#include "qr_tool_bar.h"
#include "tool_bar_definition.h"
#include "tool_bar_messages.h"

class IDesktop;
class IToolBarHost;

/// Holds the definitions of a module's toolbars and the bars made from them. The host builds what
/// is seen of them; this class tells it of each button, hands it the bars, and keeps the names of
/// those on show from one start to the next.
///
/// Add definitions and controls first, then CreateBars, as often as one likes. Without a host or a
/// main window the bars are made all the same, and nobody is told.
class QUOREL_API CToolBarsData {
public:
    /// Loads the names saved at the last close.
    /// @param desktop outlives this object, as its toolbar host does @param name the owner's
    CToolBarsData(IDesktop& desktop, AString name);
    CToolBarsData(const CToolBarsData&) = delete;
    CToolBarsData& operator=(const CToolBarsData&) = delete;
    /// Ends the bars, whose host isn't told any more, and saves their names, or those that were
    /// loaded when there were no bars; no names are not saved.
    virtual ~CToolBarsData();

    /// @name Definitions: each appends one, with a list made from the table
    /// The host is told of each button; a row of bitmap ToolBarEntry::kTableEnd ends the table.
    /// @{
    void AddToolBar(const AString& name, ToolBarTable table);
    /// One of the bars that CreateBars makes.
    void AddShownToolBar(const AString& name, ToolBarTable table);
    /// A built-in bar, which is shown too.
    void AddBuiltInToolBar(const AString& name, ToolBarTable table);
    /// @}

    /// @param window not owned, outlives this object; its place is that of the command `id`
    /// @param style its window style @param width in pixels, as the height
    void AddControl(CWnd* window, std::uint32_t id, std::uint32_t style, int width, int height);
    /// Gives the first control of that id; false, and nothing is touched, when there is none.
    bool FindControl(std::uint32_t id, ToolBarControl*& control) const;

    /// Makes the bars, once: one for each definition to be shown, then an empty one for each name
    /// saved at the last close that has no definition. Each takes its saved state and buttons.
    /// Then the host gets them. @return true
    bool CreateBars();
    /// Ends the bars; their names are kept for the next CreateBars. Nothing when there are none.
    /// @param forget the host isn't told that they end
    void DestroyBars(bool forget);

    const AString& GetName() const { return mName; }
    IDesktop& GetDesktop() const { return mDesktop; }
    IToolBarHost* GetHost() const { return mHost; }
    /// The names of the bars at the last close, "^" behind each.
    const AString& GetSavedNames() const { return mSavedNames; }
    bool AreCreated() const { return mCreated; }
    const std::vector<ToolBarDefinition>& GetToolBarDefs() const { return mToolBarDefs; }
    const std::vector<ToolBarDefinition>& GetShownBars() const { return mShownBars; }
    const std::vector<ToolBarDefinition>& GetBuiltInBars() const { return mBuiltInBars; }
    /// In the order of their making.
    const std::vector<std::unique_ptr<CQrToolBar>>& GetBars() const { return mBars; }
    const std::vector<std::unique_ptr<ToolBarControl>>& GetControls() const { return mControls; }

private:
    void AddDefinition(std::vector<ToolBarDefinition>& list, const AString& name,
                       ToolBarTable table);
    void FillButtons(ToolBarButtonList& buttons, ToolBarTable table);
    void TellButton(const ToolBarButton& button);
    std::intptr_t SendButton(ToolBarButtonNotice notice, const ToolBarButton& button);
    void MergeSavedNames();
    void CreateBar(ToolBarDefinition& definition, const AString& stateName);

    AString mName;
    std::vector<ToolBarDefinition> mToolBarDefs;
    std::vector<ToolBarDefinition> mShownBars;
    std::vector<ToolBarDefinition> mBuiltInBars;
    std::vector<std::unique_ptr<CQrToolBar>> mBars;
    std::vector<std::unique_ptr<ToolBarControl>> mControls;
    bool mCreated = false;
    AString mSavedNames;
    CWnd* mMainWindow = nullptr;
    IToolBarHost* mHost = nullptr;
    IDesktop& mDesktop;
};
