#include "tool_bar_table.h"

#include "resource_ids.h"

namespace {

constexpr std::uint8_t kEnabled = 4;

constexpr ToolBarEntry kEntries[] = {
    {kCommandToggleBookmark, 9007, kEnabled, 0},
    {kCommandClearBookmarks, 9008, kEnabled, 0},
    {kCommandNextBookmark, 9009, kEnabled, 0},
    {kCommandPreviousBookmark, 9010, kEnabled, 0},
    {ToolBarEntry::kSeparator, ToolBarEntry::kNoBitmap, 0, 0},
    {kFindBoxCommand, ToolBarEntry::kControlPlace, 0, 0},
    {kCommandSearchDown, 9011, kEnabled, 0},
    {kCommandSearchUp, 9012, kEnabled, 0},
    {kCommandSearchDownCase, 9013, kEnabled, 0},
    {kCommandSearchUpCase, 9014, kEnabled, 0},
};

} // namespace

constinit const ToolBarTable kToolBarTable{kEntries};
