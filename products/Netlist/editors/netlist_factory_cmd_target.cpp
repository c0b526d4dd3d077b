#include "netlist_factory_cmd_target.h"

#include "doc_template.h"
#include "document.h"
#include "netlist_app.h"
#include "netlist_factory.h"
#include "netlist_option.h"
#include "resource_ids.h"
#include "sim_edit_view.h"

namespace {

void TakeOptions(CDocument& document) {
    const auto color = static_cast<ColorRef>(CNetlistApp::Get().GetOptions().BMColor);
    for (CView* view : document.GetViews())
        if (auto* text = dynamic_cast<CSimEditView*>(view)) {
            text->SetFont(true);
            text->SetBookmarkColor(color);
        }
    document.UpdateAllViews(nullptr);
}

} // namespace

const CommandMap& CNetlistFactoryCmdTarget::GetCommandMap() const {
    static constexpr CommandEntry kEntries[] = {
        Command<&CNetlistFactoryCmdTarget::OnEditorOptions>(kCommandOptions),
    };
    static const CommandMap kMap{kEntries, &CCmdTarget::GetCommandMap()};
    return kMap;
}

void CNetlistFactoryCmdTarget::OnEditorOptions() {
    CNetlistOption sheet{AString(ResourceId{kStringOptionsCaption})};
    if (sheet.DoModal() != kIdOk)
        return;
    CDocTemplate* const netlists = m_Factory ? m_Factory->GetNetlistTemplate() : nullptr;
    if (!netlists)
        return;
    for (CDocument* document : netlists->GetDocuments())
        TakeOptions(*document);
}
