/// The settings of the debug log, which come from the environment alone.
#pragma once

#include <cstdint>
#include <fstream>
#include <memory>
#include <string>

#include "mrefcount.h"
#include "quorel_export.h"
#include "refptr.h"

/// What writers of the log share; nobody in this system fills it.
struct DebugLogShared : MRefCount {};

/// Where and how much to log. One object, built at start-up; the writers stand with the host.
class QUOREL_API DebugLog {
public:
    /// The process's object, made from the environment as it was at start-up.
    static DebugLog& Get();

    /// Reads the environment:
    /// "QUOREL_DEBUG_MODE"     a decimal integer of 32 bits becomes mMode, anything else is passed
    ///                         over
    /// "QUOREL_DEBUG_VERBOSE"  sets mVerbose, whatever its value
    /// "QUOREL_DEBUG_FILE"     becomes mFile
    /// "QUOREL_DEBUG_LOG"      a file, opened for appending as mLog; null when that fails
    DebugLog();
    DebugLog(const DebugLog&) = delete;
    DebugLog& operator=(const DebugLog&) = delete;

    std::int32_t mMode = 0;
    std::string mFile;
    bool mVerbose = false;
    RefPtr<DebugLogShared> mShared;
    std::unique_ptr<std::ofstream> mLog;
};
