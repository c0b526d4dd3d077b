/// CQrToolBar: one toolbar of a module, which tells its own state as text.
#pragma once

#include <vector>

#include "dock_site.h"
#include "streamio_object.h"
#include "tool_bar.h"
#include "tool_bar_definition.h"

class CToolBarsData;

/// A toolbar. CToolBarsData makes it and loads its state; the host then gives it a window, a holder
/// and a list of buttons, and stores its state and buttons when it likes.
///
/// As an object of a token stream it is its place: dock bar, visible, docked, x, y, width, flag and
/// value, with neither name nor mark. Reading takes all of them or, when the stream fails, none.
class QUOREL_API CQrToolBar : public CToolBar, public io::CStreamio_object {
public:
    /// A list of buttons as an object of a token stream: their count, then of each the command, the
    /// bitmap, the state and the style. Reading throws away the list's buttons, and keeps those
    /// read ahead of a failure.
    class QUOREL_API ToolbarButtons : public io::CStreamio_object {
    public:
        /// @param buttons not owned
        explicit ToolbarButtons(ToolBarButtonList& buttons) : mButtons(&buttons) {}
        ~ToolbarButtons() override;

        void Read(io::CAbstract_istream& stream) override;
        void Write(io::CAbstract_ostream& stream) const override;

    private:
        ToolBarButtonList* mButtons;
    };

    /// Where the bar was when its state was last saved or loaded.
    struct Place {
        std::uint32_t mDockBarId = 0; ///< the number of the dock bar that held it, the host's own
        bool mVisible = true;
        bool mDocked = true;
        int mX = 0; ///< on the screen, but see IsPositionPending
        int mY = 0;
        std::uint32_t mWidth = 0;
        bool mPersistedFlag = true; ///< the host's own, as the value
        std::int32_t mPersistedValue = 0;
        bool operator==(const Place&) const = default;
    };

    /// The buttons of a text at most; a text with more doesn't parse.
    static constexpr int kMostButtons = 99;

    /// @param data the owner
    explicit CQrToolBar(CToolBarsData& data);
    /// Ends the window and, unless told otherwise, has the holder forget the bar.
    ~CQrToolBar() override;

    /// @name Saved forms
    /// @{
    /// Takes the name and loads state and buttons from the desktop's store. A state that doesn't
    /// parse counts as none.
    void LoadState(const AString& stateName, const AString& dataName, const AString& barName);
    /// Makes a table of the buttons' text. False, with the text cleared if it doesn't parse or
    /// holds no buttons, when there is none.
    bool ParseButtons(std::vector<ToolBarEntry>& table);
    /// Takes place and state text from the window; nothing without one.
    void SaveState();

    void Read(io::CAbstract_istream& stream) override;
    void Write(io::CAbstract_ostream& stream) const override;

    /// Empty: nothing was saved.
    const AString& GetStateText() const { return mStateText; }
    const AString& GetButtonsText() const { return mButtonsText; }
    const Place& GetPlace() const { return mPlace; }
    /// Whether x and y of the place are still relative to a holder that isn't there yet.
    bool IsPositionPending() const { return mPositionPending; }
    /// @}

    /// @name The host's
    /// @{
    /// The window that holds the bar, not owned, null for none. A pending position becomes one on
    /// the screen.
    void SetHostWindow(CDockSite* window);
    CDockSite* GetHostWindow() const { return mHostWindow; }
    /// The bar's buttons, a list of the host's, null for none.
    void SetButtons(ToolBarButtonList* buttons) { mButtons = buttons; }
    ToolBarButtonList* GetButtons() const { return mButtons; }
    /// Whether the holder is told of the bar's end.
    void SetNotifyHost(bool on) { mNotifyHost = on; }
    /// Without it, each change of the window's place has the host lay its window out again.
    void SetSkipRelayout(bool on) { mSkipRelayout = on; }
    void SetPersisted(bool flag, std::int32_t value);
    /// @}

    CToolBarsData& GetData() const { return mData; }
    const AString& GetBarName() const { return mBarName; }

    /// A copy of the button at a place of the bar; an empty one, command 0, when there is none.
    /// Asks for a list of buttons.
    ToolBarButton HitTest(CPoint point);
    /// The index of the button last hit, 0 before the first.
    std::size_t GetHitIndex() const { return mHitIndex; }
    /// The place last tested.
    CPoint GetClickPoint() const { return mClick; }

protected:
    const MessageMap& GetMessageMap() const override;
    bool OnCommand(std::uintptr_t first, std::intptr_t second) override;
    bool OnChildNotify(unsigned notice, std::intptr_t& result) override;

private:
    std::intptr_t OnLButtonDown(std::uintptr_t first, std::intptr_t second);
    std::intptr_t OnLButtonUp(std::uintptr_t first, std::intptr_t second);
    std::intptr_t OnMouseMove(std::uintptr_t first, std::intptr_t second);
    std::intptr_t OnWindowPosChanged(std::uintptr_t first, std::intptr_t second);
    std::intptr_t OnSetCursor(std::uintptr_t first, std::intptr_t second);
    std::intptr_t OnDestroy(std::uintptr_t first, std::intptr_t second);
    std::intptr_t AskCustomizing();
    void EndControl(std::uint32_t id);
    void LoadButtons(const AString& key);
    void MakeButtonsText();
    void PlaceOnScreen();

    CToolBarsData& mData;
    CPoint mClick;
    AString mButtonsText;
    AString mStateText;
    Place mPlace;
    std::size_t mHitIndex = 0;
    bool mSkipRelayout = true;
    CDockSite* mHostWindow = nullptr;
    ToolBarButtonList* mButtons = nullptr;
    AString mBarName;
    bool mNotifyHost = true;
    bool mPositionPending = false;
};
