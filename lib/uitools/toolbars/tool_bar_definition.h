/// What a module tells of its toolbars: buttons, lists of them by name, controls on them.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "astring.h"
#include "tool_bar_entry.h"

class CWnd;
struct PictureResource;

/// A button. Lists hold buttons without picture and text; those go to the host, once for each.
struct ToolBarButton {
    std::uint32_t mCommand = 0;
    std::uint32_t mBitmap = 0;
    std::uint8_t mState = 0;
    std::uint8_t mStyle = 0;
    /// The picture of the number mBitmap: constant data. Whoever draws it puts the colour of button
    /// faces in the place of kPictureFace. Null: there is none.
    const PictureResource* mBitmapObject = nullptr;
    AString mText; ///< the string resource of the command's number

    static constexpr std::uint32_t kPictureFace = 0xC0C0C0;

    bool IsSeparator() const { return mCommand == ToolBarEntry::kSeparator; }
    bool IsControlPlace() const { return mBitmap == ToolBarEntry::kControlPlace; }
    /// Whether they are the same in the lists and in their saved form.
    bool IsSameButton(const ToolBarButton& other) const {
        return mCommand == other.mCommand && mBitmap == other.mBitmap && mState == other.mState &&
               mStyle == other.mStyle;
    }
};

using ToolBarButtonList = std::vector<ToolBarButton>;

/// A toolbar as a module wants it.
struct ToolBarDefinition {
    AString mName;
    std::unique_ptr<ToolBarButtonList> mButtons; ///< never null
};

/// A window that stands on a toolbar where a button has the bitmap kControlPlace.
struct ToolBarControl {
    std::uint32_t mId = 0;    ///< the command of its place
    std::uint32_t mStyle = 0; ///< its window style
    int mWidth = 0;           ///< in pixels, as the height
    int mHeight = 0;
    CWnd* mWindow = nullptr; ///< not owned; may be null
    /// @name The selection and items of a box when its toolbar's window ended
    /// @{
    int mSelection = -1;
    std::vector<AString> mItems; ///< those of several ends one behind the other
    /// @}
};
