#include "host_instance.h"

HostViewKey::~HostViewKey() = default;

HostInstance::~HostInstance() {
    m_Key.InstanceEnds();
}
