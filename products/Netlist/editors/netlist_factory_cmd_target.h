/// CNetlistFactoryCmdTarget: who answers the factory's commands.
#pragma once

#include "cmd_target.h"

class CNetlistFactory;

class CNetlistFactoryCmdTarget : public CCmdTarget {
public:
    /// @param factory owns this object
    explicit CNetlistFactoryCmdTarget(CNetlistFactory* factory) : m_Factory(factory) {}

protected:
    const CommandMap& GetCommandMap() const override;

private:
    /// "&Netlist Editor Options...": where the sheet of the options opens. There is no sheet yet,
    /// and nothing happens.
    void OnEditorOptions();

    [[maybe_unused]] CNetlistFactory* m_Factory;
};
