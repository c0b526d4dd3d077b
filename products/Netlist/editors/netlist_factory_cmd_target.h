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
    /// "&Netlist Editor Options...": shows the sheet of the options; its OK takes the views of
    /// netlists along. Views of scripts take the options when they get the focus.
    void OnEditorOptions();

    CNetlistFactory* m_Factory;
};
