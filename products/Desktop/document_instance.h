/// DocumentInstance: the design instance to which the views of one document belong.
#pragma once

#include "host_instance.h"

class DocumentInstance : public HostInstance {
public:
    using HostInstance::HostInstance;
};
