// Counts what the test program and the libraries under test allocate.
#pragma once

#include <cstddef>

namespace io::test {

/// Calls of operator new so far.
std::size_t GetAllocationCount();

/// The calls that a piece of work makes.
template <class Work>
std::size_t CountAllocations(Work work) {
    const std::size_t before = GetAllocationCount();
    work();
    return GetAllocationCount() - before;
}

} // namespace io::test
