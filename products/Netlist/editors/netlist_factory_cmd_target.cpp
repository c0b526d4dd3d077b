#include "netlist_factory_cmd_target.h"

#include "resource_ids.h"

const CommandMap& CNetlistFactoryCmdTarget::GetCommandMap() const {
    static constexpr CommandEntry kEntries[] = {
        Command<&CNetlistFactoryCmdTarget::OnEditorOptions>(kCommandOptions),
    };
    static const CommandMap kMap{kEntries, &CCmdTarget::GetCommandMap()};
    return kMap;
}

void CNetlistFactoryCmdTarget::OnEditorOptions() {}
