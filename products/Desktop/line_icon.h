/// LineIcon: the pictures of buttons and menus, drawn in the colour of the text around them.
#pragma once

#include <QIcon>

enum class LineIcon {
    fileNew,
    open,
    save,
    print,
    undo,
    redo,
    cut,
    copy,
    paste,
    bookmark,
    bookmarkNone,
    bookmarkNext,
    bookmarkPrevious,
    searchDown,
    searchUp,
    searchDownCase,
    searchUpCase,
    close,
    count
};

/// An icon that is sharp at every size and pixel ratio, and follows light and dark surroundings.
QIcon MakeLineIcon(LineIcon icon);

/// The program's own icon: the theme's, else one drawn here.
QIcon MakeProgramIcon();
