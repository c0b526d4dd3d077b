/// CAcceleratorTable: keys and the commands that they give.
#pragma once

#include <span>

#include "object.h"
#include "resources.h"

/// A loaded accelerator resource; it refers to the constant table and copies nothing.
class QUOREL_API CAcceleratorTable : public CObject {
public:
    /// Takes the keys of a registered resource. @return false, without keys then, when none has
    /// the number
    bool LoadAccelerators(unsigned id);
    void Destroy() { m_Keys = {}; }
    bool IsLoaded() const { return !m_Keys.empty(); }

    /// The command of a key pressed with exactly these KeyModifiers, 0 for none.
    unsigned FindCommand(unsigned key, unsigned modifiers) const;
    std::span<const Accelerator> GetKeys() const { return m_Keys; }

private:
    std::span<const Accelerator> m_Keys;
};
