/// AssertLog: how a host answers failed assertions.
#pragma once

#include <string>
#include <vector>

#include "assertion.h"
#include "quorel_export.h"

/// While it lives, each failed assertion is printed to standard error, counted, and passed over.
/// Whether any fails is up to the environment, as everywhere. One at a time; the handler before it
/// comes back at its end.
class QUOREL_API AssertLog {
public:
    AssertLog();
    AssertLog(const AssertLog&) = delete;
    AssertLog& operator=(const AssertLog&) = delete;
    ~AssertLog();

    int GetCount() const { return m_Count; }

private:
    AssertHandler m_Before;
    int m_Count = 0;
};
