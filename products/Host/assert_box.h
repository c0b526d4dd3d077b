/// AssertBox: failed assertions put to the user in message boxes.
#pragma once

#include "assertion.h"
#include "quorel_export.h"

class IBackendDesk;

/// While it lives, the questions of a failed assertion are message boxes of a desk. One that fails
/// while such a box is open is printed and passed over, since the box itself makes the program
/// work. One at a time; the handler before it comes back at its end.
class QUOREL_API AssertBox {
public:
    explicit AssertBox(IBackendDesk& desk);
    AssertBox(const AssertBox&) = delete;
    AssertBox& operator=(const AssertBox&) = delete;
    ~AssertBox();

private:
    AssertHandler m_Before;
    bool m_Asking = false;
};
