#include "cmd_target.h"

#include <algorithm>

const CommandEntry* CommandMap::Find(unsigned id) const {
    for (const CommandMap* map = this; map; map = map->m_Base) {
        const auto entry = std::ranges::find(map->m_Entries, id, &CommandEntry::m_Id);
        if (entry != map->m_Entries.end())
            return &*entry;
    }
    return nullptr;
}

CCmdTarget::~CCmdTarget() = default;

const CommandMap& CCmdTarget::GetCommandMap() const {
    static constexpr CommandMap kMap{};
    return kMap;
}

CCmdTarget::Route CCmdTarget::RouteCommand(unsigned id) {
    const CommandEntry* entry = GetCommandMap().Find(id);
    return entry ? Route{this, entry} : Route{};
}

bool CCmdTarget::UpdateCommand(CCmdUI& ui) {
    const Route route = RouteCommand(ui.GetId());
    ui.Enable(route.m_Target != nullptr);
    if (!route.m_Target)
        return false;
    if (route.m_Entry->m_Update)
        route.m_Entry->m_Update(*route.m_Target, ui);
    return true;
}

bool CCmdTarget::RunCommand(unsigned id) {
    CCmdUI ui(id);
    return UpdateCommand(ui) && ui.IsEnabled() && SendCommand(id);
}

bool CCmdTarget::SendCommand(unsigned id) {
    const Route route = RouteCommand(id);
    if (!route.m_Target)
        return false;
    route.m_Entry->m_Handler(*route.m_Target);
    return true;
}
