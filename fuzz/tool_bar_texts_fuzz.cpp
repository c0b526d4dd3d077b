/// Any texts as the saved names, state and buttons of toolbars: bars come of them, and what is
/// written of these reads back as it was. Input: the three texts, a line each.
#include "host_desktop.h"
#include "tool_bar_options.h"
#include "tool_bars_data.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string_view>

namespace {

constexpr const char16_t* kOwner = u"Owner";
constexpr const char16_t* kBar = u"Edit";
constexpr ToolBarEntry kTable[] = {{1001, 11, 4, 0}, {1002, 12, 4, 1}};

void Require(bool law) {
    if (!law)
        std::abort();
}

AString TakeLine(std::string_view& rest) {
    const std::string_view line = rest.substr(0, rest.find('\n'));
    rest.remove_prefix(std::min(rest.size(), line.size() + 1));
    return AString::FromMultiByte(AString::kUtf8, line);
}

void CheckBar(CQrToolBar& bar) {
    AString text;
    bar.ToString(text);
    const CQrToolBar::Place place = bar.GetPlace();
    Require(bar.FromString(text) && bar.GetPlace() == place);

    ToolBarButtonList again;
    CQrToolBar::ToolbarButtons(*bar.GetButtons()).ToString(text);
    Require(CQrToolBar::ToolbarButtons(again).FromString(text));
    Require(std::ranges::equal(again, *bar.GetButtons(), &ToolBarButton::IsSameButton));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string_view rest(reinterpret_cast<const char*>(data), size);
    OptionStore store;
    HostDesktop desktop({}, store);
    HostToolBars& host = *desktop.GetToolBarHost();
    host.SetStateName(u"State");
    store.Set(GetToolBarSection(), GetToolBarNamesKey(kOwner), TakeLine(rest));
    store.Set(GetToolBarStateSection(u"State"), GetToolBarStateKey(kOwner, kBar), TakeLine(rest));
    store.Set(GetToolBarSection(), GetToolBarButtonsKey(kOwner, kBar), TakeLine(rest));

    CToolBarsData bars(desktop, kOwner);
    bars.AddBuiltInToolBar(kBar, kTable);
    bars.CreateBars();
    for (CQrToolBar* bar : host.GetBars())
        CheckBar(*bar);
    host.LetGo();
    return 0;
}
