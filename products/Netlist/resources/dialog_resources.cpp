#include "dialog_resources.h"

#include "messages.h"
#include "resource_ids.h"

namespace {

using C = ControlRow;
constexpr bool kStartsGroup = true;

constexpr ControlRow kGoTo[] = {
    {C::edit, kControlLine, u"", 8, 8, 64, 13},
    {C::label, kControlRange, u"(1...n)", 78, 10, 76, 9},
    {C::defaultButton, kIdOk, u"OK", 48, 32, 50, 14},
    {C::pushButton, kIdCancel, u"Cancel", 104, 32, 50, 14},
};

constexpr ControlRow kFind[] = {
    {C::label, kControlStatic, u"Fi&nd what:", 8, 10, 48, 9},
    {C::edit, kControlFindWhat, u"", 58, 8, 116, 13},
    {C::checkBox, kControlMatchCase, u"Match &case", 8, 43, 76, 11},
    {C::groupBox, kControlStatic, u"Direction", 92, 28, 82, 30},
    {C::radioButton, kControlUp, u"&Up", 98, 41, 30, 11, kStartsGroup},
    {C::radioButton, kControlDown, u"&Down", 130, 41, 40, 11},
    {C::defaultButton, kIdOk, u"&Find Next", 182, 8, 56, 14, kStartsGroup},
    {C::pushButton, kIdCancel, u"Cancel", 182, 26, 56, 14},
};

constexpr ControlRow kReplace[] = {
    {C::label, kControlStatic, u"Fi&nd what", 8, 10, 52, 9},
    {C::edit, kControlFindWhat, u"", 62, 8, 116, 13},
    {C::label, kControlStatic, u"Re&place with", 8, 28, 52, 9},
    {C::edit, kControlReplaceWith, u"", 62, 26, 116, 13},
    {C::checkBox, kControlMatchCase, u"Match &case", 8, 61, 76, 11},
    {C::groupBox, kControlStatic, u"Direction", 96, 46, 82, 30},
    {C::radioButton, kControlUp, u"&Up", 102, 59, 30, 11, kStartsGroup},
    {C::radioButton, kControlDown, u"&Down", 134, 59, 40, 11},
    {C::defaultButton, kIdOk, u"&Find Next", 186, 8, 60, 14, kStartsGroup},
    {C::pushButton, kControlReplace, u"&Replace", 186, 26, 60, 14},
    {C::pushButton, kControlReplaceAll, u"Replace &All", 186, 44, 60, 14},
    {C::pushButton, kIdCancel, u"Cancel", 186, 62, 60, 14},
};

constexpr ControlRow kBookmarkColor[] = {
    {C::label, kControlStatic, u"Bookmark Color: ", 10, 15, 66, 9},
    {C::colorSample, kControlColorSample, u"", 80, 12, 40, 15},
    {C::pushButton, kControlEditColor, u"Edit Color", 128, 12, 60, 15},
};

constexpr ControlRow kFont[] = {
    {C::label, kControlStatic, u"Font Name", 10, 10, 120, 9},
    {C::comboBox, kControlFontName, u"", 10, 21, 126, 90},
    {C::label, kControlStatic, u"Size", 144, 10, 44, 9},
    {C::edit, kControlFontSize, u"", 144, 21, 44, 13},
    {C::label, kControlFontSample, u"Static", 10, 44, 178, 36},
};

/// What the pages of a sheet have in common.
constexpr int kPageWidth = 198;
constexpr int kPageHeight = 88;

} // namespace

constinit const DialogResource kModuleDialogs[kModuleDialogCount] = {
    {kDialogGoTo, u"GoTo Line", 162, 54, kGoTo},
    {kDialogFind, u"Find", 246, 66, kFind},
    {kDialogReplace, u"Replace", 254, 84, kReplace},
    {kDialogBookmarkColor, u"Bookmark color", kPageWidth, kPageHeight, kBookmarkColor},
    {kDialogFont, u"Font", kPageWidth, kPageHeight, kFont},
};
