#include "library_start.h"

void InitUnitManager(IDesktop&) {}

void InitValueManager(IDesktop&) {}
