/// COleDataSource: a text that the user drags to other programs.
#pragma once

#include "backend.h"

/// The source side of one drag. Nothing is registered as a target, so a drop in an own window does
/// nothing.
class QUOREL_API COleDataSource {
public:
    /// The text that the drag offers.
    void CacheText(AString text);
    /// Runs the drag, offering to copy and to move, until the user lets go.
    /// @return none also without a backend
    DropEffect DoDragDrop();

private:
    AString m_Text;
};
