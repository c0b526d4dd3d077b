/// The registration by which hosts find the module.
#pragma once

#include "status.h"

/// Writes the small file that names the module's class, its application and this file's path.
sys::Status RegisterNetlistModule();
/// Removes it.
sys::Status UnregisterNetlistModule();
