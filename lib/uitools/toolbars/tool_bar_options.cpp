#include "tool_bar_options.h"

namespace {

AString BarKey(const AString& owner, const AString& bar, const char16_t* end) {
    return AString(u"ToolBar::") + owner + u"." + bar + end;
}

} // namespace

AString GetToolBarSection() {
    return AString(kToolBarSectionString);
}

AString GetToolBarStateSection(const AString& stateName) {
    return stateName.empty() ? AString() : GetToolBarSection() + u"\\ToolBarState\\" + stateName;
}

AString GetToolBarNamesKey(const AString& owner) {
    return AString(u"ToolBars::") + owner;
}

AString GetToolBarStateKey(const AString& owner, const AString& bar) {
    return BarKey(owner, bar, u".State");
}

AString GetToolBarButtonsKey(const AString& owner, const AString& bar) {
    return BarKey(owner, bar, u".Buttons");
}
