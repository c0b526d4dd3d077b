#include "accelerator.h"

bool CAcceleratorTable::LoadAccelerators(unsigned id) {
    const AcceleratorResource* resource = FindAccelerators(id);
    m_Keys = resource ? resource->m_Keys : std::span<const Accelerator>{};
    return resource != nullptr;
}

unsigned CAcceleratorTable::FindCommand(unsigned key, unsigned modifiers) const {
    for (const Accelerator& accelerator : m_Keys)
        if (accelerator.m_Key == key && accelerator.m_Modifiers == modifiers)
            return accelerator.m_Command;
    return 0;
}
