/// Keeps exceptions inside the module.
#pragma once

/// Does work; what it throws is dropped with the rest of it.
template <class Work>
void Guarded(Work&& work) noexcept {
    try {
        work();
    } catch (...) {
    }
}

/// What work gives, or fallback when it throws. For every operation through which a host enters
/// the module and in which memory may run out.
template <class Result, class Work>
Result Guarded(Result fallback, Work&& work) noexcept {
    try {
        return work();
    } catch (...) {
        return fallback;
    }
}
