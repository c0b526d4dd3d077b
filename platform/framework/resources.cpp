#include "resources.h"

#include <algorithm>
#include <vector>

namespace {

/// The registered tables, in the order of their registration.
std::vector<const ResourceTables*>& Registered() {
    static std::vector<const ResourceTables*> sTables;
    return sTables;
}

template <class Row>
const Row* Find(std::span<const Row> ResourceTables::*list, unsigned id) {
    const auto& registered = Registered();
    for (auto tables = registered.rbegin(); tables != registered.rend(); ++tables) {
        const std::span<const Row> rows = (*tables)->*list;
        const auto row = std::ranges::find(rows, id, &Row::m_Id);
        if (row != rows.end())
            return &*row;
    }
    return nullptr;
}

} // namespace

ResourceRegistration::ResourceRegistration(const ResourceTables& tables)
    : m_Tables(&tables), m_Strings(tables.m_Strings) {
    Registered().push_back(m_Tables);
    RegisterStringSource(m_Strings);
}

ResourceRegistration::~ResourceRegistration() {
    UnregisterStringSource(m_Strings);
    std::erase(Registered(), m_Tables);
}

const MenuResource* FindMenu(unsigned id) {
    return Find(&ResourceTables::m_Menus, id);
}

const AcceleratorResource* FindAccelerators(unsigned id) {
    return Find(&ResourceTables::m_Accelerators, id);
}

const DialogResource* FindDialog(unsigned id) {
    return Find(&ResourceTables::m_Dialogs, id);
}

const PictureResource* FindPicture(unsigned id) {
    return Find(&ResourceTables::m_Pictures, id);
}
