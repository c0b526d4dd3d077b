#include "module_resources.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "dialog_resources.h"
#include "messages.h"
#include "resource_ids.h"

namespace {

/// One command, or a text that stands alone.
struct CommandRow {
    unsigned m_Id;
    std::u16string_view m_MenuText;
    std::u16string_view m_String; ///< status text, a line feed, tool tip; or the text
};

// Ascending numbers.
constexpr CommandRow kCommands[] = {
    {kCommandOptions, u"&Netlist Editor Options...",
     u"Set Netlist Editor options\nNetlist Editor Options"},
    {kCommandClearBookmarks, u"&Delete All Bookmarks\tCtrl+B",
     u"Delete all bookmarks.\nDelete bookmarks"},
    {kCommandGoTo, u"&Go To ...\tCtrl+G", u"Go to line.\nGo to"},
    {kCommandToggleBookmark, u"Toggle &Bookmark\tCtrl+F2", u"Toggle bookmark\nToggle bookmark."},
    {kCommandNextBookmark, u"&Next Bookmark\tF2", u"Find the next bookmark\nNext bookmark"},
    {kCommandPreviousBookmark, u"&Previous Bookmark\tShift+F2",
     u"Find the previous bookmark\nPrevious bookmark"},
    {kCommandSearchDown, u"", u"Search forward\nSearch forward"},
    {kCommandExport, u"&Export", u"Export to a file\nExport"},
    {kCommandSearchUp, u"", u"Search backward\nSearch backward"},
    {kCommandSearchDownCase, u"",
     u"Search forward - case sensitive\n Forward search case sensitive"},
    {kCommandSearchUpCase, u"",
     u"Search backward - case sensitive\nBackward search case sensitive"},
    {kStringOptionsCaption, u"", u"Netlist Editor Options"},
    {kCommandSaveScript, u"&Save Script", u""},
    {kCommandJavaScript, u"&JavaScript", u""},
    {kCommandVBScript, u"&VBScript", u""},
    {kCommandUseScript, u"&Use Script", u""},
    {kCommandCopy, u"&Copy\tCtrl+C", u"Copy the selection to the Clipboard.\nCopy"},
    {kCommandCut, u"Cu&t\tCtrl+X", u"Cut the selection to the Clipboard.\nCut"},
    {kCommandFind, u"&Find ...\tCtrl+F", u"Find the specified text.\nFind"},
    {kCommandPaste, u"&Paste\tCtrl+V", u"Insert Clipboard contents.\nPaste"},
    {kCommandReplace, u"R&eplace ...\tCtrl+R",
     u"Replace specific text with different text.\nReplace"},
    {kCommandSelectAll, u"&Select All\tCtrl+A", u"Select the entire document.\nSelect All"},
    {kCommandUndo, u"", u"Undo the last action.\nUndo"},
    {kCommandRedo, u"", u"Redo the previously undone action.\nRedo"},
    {kStringNoConfiguration, u"",
     u"Cannot locate file '%s' in install directory or syslib directory."},
    {kStringUndo, u"", u"Undo"},
    {kStringRedo, u"", u"Redo"},
};
static_assert(std::ranges::is_sorted(kCommands, std::ranges::less_equal{}, &CommandRow::m_Id));

constexpr bool HasString(const CommandRow& row) {
    return !row.m_String.empty();
}

constexpr auto kStrings = [] {
    std::array<StringRow, std::ranges::count_if(kCommands, HasString)> strings{};
    auto next = strings.begin();
    for (const CommandRow& row : kCommands)
        if (HasString(row))
            *next++ = {row.m_Id, row.m_String};
    return strings;
}();

/// A menu's row with the text that the command has everywhere. A command without one doesn't
/// compile.
consteval MenuRow Item(CommandId id) {
    const auto* row = std::ranges::find(kCommands, unsigned{id}, &CommandRow::m_Id);
    if (row->m_MenuText.empty())
        throw "no menu text";
    return {MenuRow::item, id, row->m_MenuText};
}

consteval MenuRow Item(CommandId id, std::u16string_view text) {
    return {MenuRow::item, id, text};
}

constexpr MenuRow kSeparator{MenuRow::separator, 0, u""};
constexpr MenuRow kPopupEnd{MenuRow::popupEnd, 0, u""};

consteval MenuRow Popup(std::u16string_view text) {
    return {MenuRow::popup, 0, text};
}

constexpr MenuRow kOptionsMenu[] = {Item(kCommandOptions)};

constexpr MenuRow kEditMenu[] = {
    Popup(u"&Edit"),
    Item(kCommandToggleBookmark),
    Item(kCommandClearBookmarks),
    Item(kCommandNextBookmark),
    Item(kCommandPreviousBookmark),
    kSeparator,
    Item(kCommandFind),
    Item(kCommandReplace),
    Item(kCommandGoTo),
    kPopupEnd,
};

constexpr MenuRow kContextMenu[] = {
    Popup(u"Edit"),      Item(kCommandCut),  Item(kCommandCopy),
    Item(kCommandPaste), kSeparator,         Item(kCommandSelectAll),
    kSeparator,          Item(kCommandFind), Item(kCommandReplace),
    Item(kCommandGoTo),  kPopupEnd,
};

constexpr MenuRow kExportMenu[] = {Popup(u"Netlist"), Item(kCommandExport), kPopupEnd};

constexpr std::u16string_view kExportScript = u"&Export Script";

constexpr MenuRow kScriptMenu[] = {
    Popup(u"Script"),         Item(kCommandExport, kExportScript),
    Item(kCommandSaveScript), Item(kCommandJavaScript),
    Item(kCommandVBScript),   kPopupEnd,
};

constexpr MenuRow kRunScriptMenu[] = {
    Popup(u"Script"),
    Item(kCommandExport, kExportScript),
    Item(kCommandSaveScript, u"&Save/Run Script"),
    Item(kCommandJavaScript),
    Item(kCommandVBScript),
    Item(kCommandUseScript),
    kPopupEnd,
};

constexpr MenuResource kMenus[] = {
    {kMenuOptions, kOptionsMenu}, {kMenuEdit, kEditMenu},     {kMenuContext, kContextMenu},
    {kMenuExport, kExportMenu},   {kMenuScript, kScriptMenu}, {kMenuRunScript, kRunScriptMenu},
};

constexpr Accelerator kKeys[] = {
    {'A', kModControl, kCommandSelectAll},
    {'B', kModControl, kCommandClearBookmarks},
    {'C', kModControl, kCommandCopy},
    {'F', kModControl, kCommandFind},
    {'G', kModControl, kCommandGoTo},
    {'R', kModControl, kCommandReplace},
    {'V', kModControl, kCommandPaste},
    {'X', kModControl, kCommandCut},
    {kKeyF2, 0, kCommandNextBookmark},
    {kKeyF2, kModShift, kCommandPreviousBookmark},
    {kKeyF2, kModControl, kCommandToggleBookmark},
    {kKeyF3, 0, kCommandSearchDown},
    {kKeyF3, kModShift, kCommandSearchUp},
    {kKeyF3, kModAlt, kCommandSearchDownCase},
    {kKeyF3, kModAlt | kModShift, kCommandSearchUpCase},
};

constexpr AcceleratorResource kAccelerators[] = {
    {kAcceleratorsNetlist, kKeys},
    {kAcceleratorsScript, kKeys},
};

} // namespace

constinit const ResourceTables kModuleResources{.m_Strings = kStrings,
                                                .m_Menus = kMenus,
                                                .m_Accelerators = kAccelerators,
                                                .m_Dialogs = kModuleDialogs,
                                                .m_Pictures = {}};
