/// The count that RefPtr keeps, for a class to derive from.
#pragma once

#include "assertion.h"

/// A plain, not atomic count of the RefPtrs that hold an object. It starts at 0, belongs to the
/// object and not to its value, so that a copy starts at 0 again, and must be 0 at destruction.
struct MRefCount {
    int referenceCount = 0;

    MRefCount() = default;
    MRefCount(const MRefCount&) noexcept {}
    MRefCount& operator=(const MRefCount&) noexcept { return *this; }

protected:
    ~MRefCount() { USE_ASSERT(referenceCount == 0); }
};
