/// The module's resources: strings, menus, accelerators and dialogs, as constant tables.
#pragma once

#include "resources.h"

/// All tables, for ResourceRegistration.
extern const ResourceTables kModuleResources;
