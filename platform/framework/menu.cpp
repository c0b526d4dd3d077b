#include "menu.h"

#include "resources.h"

CMenu::CMenu() = default;

CMenu::~CMenu() = default;

bool CMenu::LoadMenu(unsigned id) {
    const MenuResource* resource = FindMenu(id);
    if (!resource)
        return false;
    CMenu loaded;
    std::vector<CMenu*> open{&loaded}; // the menus that rows go into, the innermost last
    for (const MenuRow& row : resource->m_Rows) {
        if (row.m_Kind == MenuRow::popupEnd) {
            open.pop_back();
            if (open.empty())
                return false;
            continue;
        }
        CMenuItem item{row.m_Command, row.m_Text, nullptr};
        CMenu* const into = open.back();
        if (row.m_Kind == MenuRow::popup) {
            item.m_Popup = std::make_unique<CMenu>();
            item.m_Popup->m_Loaded = true;
            open.push_back(item.m_Popup.get());
        }
        into->m_Items.push_back(std::move(item));
    }
    if (open.size() != 1)
        return false;
    m_Items = std::move(loaded.m_Items);
    m_Loaded = true;
    return true;
}

void CMenu::DestroyMenu() {
    m_Items.clear();
    m_Loaded = false;
}

CMenu* CMenu::GetSubMenu(std::size_t index) const {
    return index < m_Items.size() ? m_Items[index].m_Popup.get() : nullptr;
}

const CMenuItem* CMenu::FindCommand(unsigned command) const {
    for (const CMenuItem& item : m_Items) {
        if (!item.m_Popup && item.m_Command == command && command != 0)
            return &item;
        if (const CMenuItem* inner = item.m_Popup ? item.m_Popup->FindCommand(command) : nullptr)
            return inner;
    }
    return nullptr;
}
