/// IQuorelCommand: one action of a user, as a desktop keeps it.
#pragma once

#include "quorel_export.h"

/// What stands on a desktop's stack of commands, which owns it.
class QUOREL_API IQuorelCommand {
public:
    virtual ~IQuorelCommand() = default;
};
