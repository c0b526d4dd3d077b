/// The part of CNetlistFactory that answers IFactoryTools.
#include <algorithm>
#include <cstdlib>
#include <iterator>

#include "base_editor.h"
#include "netlist_app.h"
#include "netlist_factory.h"
#include "sim_edit_view.h"

namespace {

/// The heights in pixels that a zoom goes through.
constexpr int kHeights[] = {6,  7,  8,  9,  10, 11, 12, 13, 14, 15, 16,
                            18, 20, 22, 24, 28, 32, 36, 40, 48, 64, 96};
constexpr int kFirstHeight = 12;

int HeightBeyond(int height, int steps) {
    const auto least = std::begin(kHeights), most = std::end(kHeights) - 1;
    auto at = std::ranges::lower_bound(kHeights, height);
    at = at > most ? most : at;
    const std::ptrdiff_t behind = *at > height && steps > 0 ? steps - 1 : steps;
    return at[std::clamp<std::ptrdiff_t>(behind, least - at, most - at)];
}

} // namespace

int CNetlistFactory::ZoomText(int steps) {
    LogFont& font = CurrentOptions().TextFont;
    const auto stored = static_cast<int>(
        std::min<std::int64_t>(std::abs(std::int64_t{font.m_Height}), std::end(kHeights)[-1]));
    const int height = std::max(stored, kHeights[0]);
    const int wanted = steps == 0 ? kFirstHeight : HeightBeyond(height, steps);
    font.m_Height = -wanted; // a character height
    if (m_Desktop)
        SaveTextFont(*m_Desktop, font);
    CNetlistApp::Get().RebuildFont();
    for (CBaseEditor* editor : m_Editors) {
        for (CView* view : editor->GetViews())
            if (auto* text = dynamic_cast<CSimEditView*>(view))
                text->SetFont(true);
        editor->UpdateAllViews(nullptr);
    }
    return wanted;
}
