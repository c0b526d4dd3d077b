/// IFactoryTools: what a host shows of a module beside its editors.
#pragma once

#include <span>

#include "quorel_export.h"

class CToolBarsData;
struct Accelerator;

/// Reached by dynamic_cast from the factory. What it gives is the factory's.
class QUOREL_API IFactoryTools {
public:
    /// The module's toolbars with their controls; null before the factory's start and after its
    /// end.
    virtual CToolBarsData* GetToolBars() = 0;
    /// The keys of the editors' commands; none before the factory's start.
    virtual std::span<const Accelerator> GetKeys() = 0;
    /// Takes the option font that many sizes up, or down, or back to the first size for 0; stores
    /// it and shows all views with it. @return its height in pixels
    virtual int ZoomText(int steps) = 0;

protected:
    ~IFactoryTools() = default;
};
