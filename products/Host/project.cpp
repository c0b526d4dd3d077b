#include "project.h"

#include <algorithm>

#include "block_value.h"
#include "token_streambuf.h"

namespace {

bool HasName(const io::CBlock_item& item, std::u16string_view name) {
    return io::CToken_streambuf::IsNoCaseWord(item.GetNameToken().GetTextView(), name);
}

const io::CBlock_func* AsFunction(const io::CBlock_item& item, std::u16string_view name) {
    return item.IsFunc() && HasName(item, name) ? static_cast<const io::CBlock_func*>(&item)
                                                : nullptr;
}

bool TakeWindow(const io::CBlock_item& item, ProjectPlacement::Window& window) {
    const io::CBlock_func* const numbers = AsFunction(item, u"WindowPos");
    if (!numbers || numbers->GetSize() != window.size())
        return false;
    unsigned index = 0;
    return std::all_of(window.begin(), window.end(), [&](int& number) {
        const io::CBlock_ptr<io::CBlock_func_arg> arg = numbers->GetArg(index++);
        return arg->IsValue() && static_cast<const io::CBlock_value&>(*arg).Get(number);
    });
}

/// @param takeView is called for each view that has numbers
/// @return whether all are views and nothing else
template <class TakeView>
bool ForEachWindow(const io::CBlock_func& views, TakeView takeView) {
    bool isSound = true;
    for (unsigned i = 0; i < views.GetSize(); ++i) {
        const io::CBlock_ptr<io::CBlock_func_arg> arg = views.GetArg(i);
        const io::CBlock_func* const view = AsFunction(*arg, u"View");
        ProjectPlacement::Window window{};
        const bool hasWindow = view && view->GetSize() == 1 && TakeWindow(*view->GetArg(0), window);
        if (hasWindow)
            takeView(window);
        isSound = isSound && view && (hasWindow || view->GetSize() == 0);
    }
    return isSound;
}

} // namespace

bool ProjectPlacement::IsOne(const io::CBlock_func& views) {
    return ForEachWindow(views, [](const Window&) {});
}

std::vector<ProjectPlacement::Window> ProjectPlacement::GetWindows() const {
    std::vector<Window> windows;
    if (m_Views)
        ForEachWindow(*m_Views, [&](const Window& window) { windows.push_back(window); });
    return windows;
}
