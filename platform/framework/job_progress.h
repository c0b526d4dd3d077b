/// CJobProgress: how far a long job is, shown to a user who may stop it.
#pragma once

#include <chrono>
#include <cstdint>

#include "astring.h"
#include "quorel_export.h"

/// Implemented by backends that can show progress; others let each job run to its end in silence.
class QUOREL_API IProgressDesk {
public:
    /// Asked now and then during a job, which is modal.
    /// @param thousandths how far the job is, 0 to 1000
    /// @return false: the user has stopped the job
    virtual bool ShowProgress(const AString& what, int thousandths) = 0;
    /// The job is over, whatever its end.
    virtual void EndProgress() = 0;

protected:
    ~IProgressDesk() = default;
};

/// One job, from construction to destruction. The user's input goes to nobody else meanwhile, but
/// windows may be painted inside GoOn.
class QUOREL_API CJobProgress {
public:
    /// @param what a text for the user
    explicit CJobProgress(AString what);
    CJobProgress(const CJobProgress&) = delete;
    CJobProgress& operator=(const CJobProgress&) = delete;
    ~CJobProgress();

    /// Tells how far the job is: done out of total. Cheap enough for each step of a loop.
    /// @return false, from then on always: the user has stopped the job
    bool GoOn(std::int64_t done, std::int64_t total);

    /// Between two questions to the backend; often enough for a bar that moves smoothly.
    static std::chrono::milliseconds s_Interval;

private:
    using Clock = std::chrono::steady_clock;

    AString m_What;
    Clock::time_point m_Next; ///< when the backend is asked again
    bool m_Shown = false;
    bool m_Stopped = false;
};
