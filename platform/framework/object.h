/// CObject: the root of the framework's and the text engine's classes.
#pragma once

#include "quorel_export.h"

/// A class that may be destroyed through its base and passed as the object of an update notice.
/// It carries a virtual destructor and nothing else, so that a million small objects stay small.
/// Whether a derived class may be copied is its own decision.
class QUOREL_API CObject {
public:
    virtual ~CObject() = default;

protected:
    CObject() = default;
    CObject(const CObject&) = default;
    CObject& operator=(const CObject&) = default;
};
