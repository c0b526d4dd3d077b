#include "ifactory.h"

bool IFactory::GetFactoryMenus(int kind, std::vector<CMenu*>& menus,
                               std::vector<CCmdTarget*>& targets) {
    menus.reserve(menus.size() + 1); // or nothing is touched
    CMenu* menu = nullptr;
    if (!GetFactoryMenu(kind, menu, targets))
        return false;
    menus.push_back(menu);
    return true;
}

void IFactory::GetFactoryName(AString& name) {
    GetEnvironmentName(name);
}

int IFactory::ReservedQuery(std::intptr_t) {
    return 0;
}

bool IFactory::ReservedTest(std::intptr_t) {
    return true;
}

void IEditorFactory::CreateDesignEditor(IComponent*, IDesignEditor*& editor) {
    editor = nullptr;
}

void IEditorFactory::ReservedStep(std::intptr_t, std::intptr_t, std::intptr_t) {}
