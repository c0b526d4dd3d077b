/// IGlobalManager: an object that the desktop keeps for all its modules under a name.
#pragma once

#include "quorel_export.h"

/// Registered by IDesktop::SetGlobalManager, owned by the desktop from then on, which destroys it
/// through the one operation of this interface.
class QUOREL_API IGlobalManager {
public:
    virtual ~IGlobalManager() = default;

protected:
    IGlobalManager() = default;
    IGlobalManager(const IGlobalManager&) = default;
    IGlobalManager& operator=(const IGlobalManager&) = default;
};
