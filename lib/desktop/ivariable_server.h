/// IVariableServer: how a name space asks an editor or a property list for a variable.
#pragma once

#include <bitset>

#include "astring.h"
#include "quorel_export.h"

class Variable;

/// Looks variables up by name. Never destroyed through this interface.
class QUOREL_API IVariableServer {
public:
    using Flags = std::bitset<32>;

    /// The variable of that name, owned by the server's side, or null.
    virtual Variable* GetVariable(const AString& name) = 0;
    /// What kind of server this is, one bit a kind; the empty set for none.
    virtual Flags GetServerFlags() = 0;

protected:
    IVariableServer() = default;
    IVariableServer(const IVariableServer&) = default;
    IVariableServer& operator=(const IVariableServer&) = default;
    ~IVariableServer() = default;
};
