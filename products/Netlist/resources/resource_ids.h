/// The numbers of the module's resources and commands.
#pragma once

/// Commands that menus, keys and buttons give.
enum CommandId : unsigned {
    kCommandOptions = 42000,
    kCommandClearBookmarks = 42001,
    kCommandGoTo = 42002,
    kCommandToggleBookmark = 42005,
    kCommandNextBookmark = 42006,
    kCommandPreviousBookmark = 42007,
    kCommandSearchDown = 42008,
    kCommandExport = 42009,
    kCommandSearchUp = 42010,
    kCommandSearchDownCase = 42011,
    kCommandSearchUpCase = 42012,
    kCommandSaveScript = 42015,
    kCommandJavaScript = 42016,
    kCommandVBScript = 42017,
    kCommandUseScript = 42018,
    kCommandClear = 57632,
    kCommandCopy = 57634,
    kCommandCut = 57635,
    kCommandFind = 57636,
    kCommandPaste = 57637,
    kCommandReplace = 57641,
    kCommandSelectAll = 57642,
    kCommandUndo = 57643,
    kCommandRedo = 57644,
};

/// Texts that no command has. A command's number names its status text and, behind a line feed, its
/// tool tip.
enum StringId : unsigned {
    kStringOptionsCaption = 42013,
    kStringNoConfiguration = 57646, ///< with the file's name as "%s"
    kStringUndo = 57647,
    kStringRedo = 57648,
};

enum MenuId : unsigned {
    kMenuOptions = 9000,
    kMenuEdit = 9002,
    kMenuContext = 9003,
    kMenuExport = 9015,
    kMenuScript = 9016,
    kMenuRunScript = 9017,
};

enum DialogId : unsigned {
    kDialogGoTo = 9006,
    kDialogFind = 9016,
    kDialogReplace = 9017,
    kDialogBookmarkColor = 9018,
    kDialogFont = 9019,
};

/// Controls of the dialogs, beside kIdOk and kIdCancel. "Find Next" is the OK of its dialogs.
enum ControlId : unsigned {
    kControlRange = 9000,
    kControlLine = 9001,
    kControlMatchCase = 9004,
    kControlUp = 9005,
    kControlDown = 9006,
    kControlFindWhat = 9007,
    kControlReplaceWith = 9008,
    kControlReplace = 9010,
    kControlReplaceAll = 9011,
    kControlEditColor = 9013,
    kControlColorSample = 9014,
    kControlFontName = 9015,
    kControlFontSize = 9016,
    kControlFontSample = 9017,
    kControlStatic = 0xFFFF, ///< texts and frames that nobody asks for
};

enum AcceleratorId : unsigned { kAcceleratorsNetlist = 9000, kAcceleratorsScript = 9001 };

enum TemplateId : unsigned { kTemplateNetlist = 9000, kTemplateScript = 9001 };
