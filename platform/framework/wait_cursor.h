/// CWaitCursor: the busy cursor for as long as a long job lasts.
#pragma once

#include "quorel_export.h"

/// Shows the wait cursor from construction to destruction, then the arrow. Waits may nest; the
/// arrow comes back with the outermost. Without a backend it does nothing.
class QUOREL_API CWaitCursor {
public:
    CWaitCursor();
    CWaitCursor(const CWaitCursor&) = delete;
    CWaitCursor& operator=(const CWaitCursor&) = delete;
    ~CWaitCursor();
};
