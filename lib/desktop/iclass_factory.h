/// IClassFactory: the class object that DllGetClassObject gives.
#pragma once

#include "iunknown.h"

/// Makes objects of one class; here it yields the module's single factory.
class QUOREL_API IClassFactory : public IUnknown {
public:
    /// Gives the interface of that id of the class's object, with one more reference.
    /// @param outer must be null, else kResultNoAggregation
    virtual ResultCode CreateInstance(IUnknown* outer, const InterfaceId& id, void** object) = 0;
    /// Counts one module lock more or less.
    virtual ResultCode LockServer(bool lock) = 0;

protected:
    ~IClassFactory() = default;
};
