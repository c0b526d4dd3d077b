/// NetlistClassObject: the class object behind DllGetClassObject.
#pragma once

#include <atomic>

#include "iclass_factory.h"

/// Yields the module's single factory. It belongs to the module's state and lives as long as that;
/// while anybody holds a reference, it counts one module lock.
class NetlistClassObject final : public IClassFactory {
public:
    ResultCode QueryInterface(const InterfaceId& id, void** object) override;
    std::uint32_t AddRef() override;
    std::uint32_t Release() override;

    ResultCode CreateInstance(IUnknown* outer, const InterfaceId& id, void** object) override;
    ResultCode LockServer(bool lock) override;

private:
    std::atomic<std::uint32_t> m_References = 0;
};
