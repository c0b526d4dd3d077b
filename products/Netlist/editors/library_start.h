/// The start of the libraries that one desktop shares among its modules.
#pragma once

class IDesktop;

/// Brings up the desktop's unit manager, its global manager "units". The module has no unit library
/// yet, and nothing happens.
void InitUnitManager(IDesktop& desktop);

/// Brings up the desktop's value manager, its global manager "value", which needs the units. The
/// module has no value library yet, and nothing happens.
void InitValueManager(IDesktop& desktop);
