/// A pointer that shares its object by a count inside the object.
#pragma once

#include <cstddef>
#include <utility>

#include "assertion.h"

/// Holds a T, which has an integer member `referenceCount` (see MRefCount) and belongs to the
/// RefPtrs that hold it: the last to leave deletes it. May be null. An object on the stack must not
/// be given to one. For one thread at a time.
template <class T>
class RefPtr {
public:
    RefPtr() noexcept = default;
    RefPtr(std::nullptr_t) noexcept {}
    RefPtr(T* object) noexcept : pRep(object) { Hold(); }
    RefPtr(const RefPtr& other) noexcept : pRep(other.pRep) { Hold(); }
    RefPtr(RefPtr&& other) noexcept : pRep(std::exchange(other.pRep, nullptr)) {}
    ~RefPtr() { Release(); }

    RefPtr& operator=(RefPtr other) noexcept {
        std::swap(pRep, other.pRep);
        return *this;
    }

    T* get() const noexcept { return pRep; }
    T* operator->() const noexcept { return pRep; }
    T& operator*() const noexcept { return *pRep; }
    explicit operator bool() const noexcept { return pRep != nullptr; }

    friend bool operator==(const RefPtr& a, const RefPtr& b) noexcept { return a.pRep == b.pRep; }
    friend bool operator==(const RefPtr& a, const T* b) noexcept { return a.pRep == b; }

private:
    void Hold() noexcept {
        if (pRep)
            ++pRep->referenceCount;
    }
    void Release() noexcept {
        if (!pRep)
            return;
        const int referenceCount = --pRep->referenceCount;
        USE_ASSERT(referenceCount >= 0);
        if (referenceCount == 0)
            Destroy(pRep);
    }
    /// Out of line: inlined, two holders of one object look like a use behind the end to GCC 12.
    [[gnu::noinline]] static void Destroy(T* rep) noexcept { delete rep; }

    T* pRep = nullptr;
};
