/// A function-style item that stands for a moment.
#pragma once

#include <ctime>

#include "block_func.h"

namespace io {

/// `Created(year=2004, month=7, day=1, hour=9, min=5, sec=0)`, in local time.
class QUOREL_API CBlock_time_func : public CBlock_func {
public:
    using CBlock_func::CBlock_func;
    /// A negative time gives no arguments.
    CBlock_time_func(const AString& name, std::time_t time);

    /// The moment that any such function tells, by `mktime` and the day's own summer time; an
    /// argument that is missing or no number leaves its field at 0, or at 1 for the day and month.
    /// -1 for a function without arguments and for what `mktime` refuses.
    static std::time_t GetTime(const CBlock_func& func);
    std::time_t GetTime() const { return GetTime(*this); }
};

} // namespace io
