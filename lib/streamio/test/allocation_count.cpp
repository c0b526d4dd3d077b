#include "allocation_count.h"

#include <cstdlib>
#include <new>

namespace {
std::size_t gCount = 0;
}

std::size_t io::test::GetAllocationCount() {
    return gCount;
}

void* operator new(std::size_t size) {
    ++gCount;
    if (void* const memory = std::malloc(size))
        return memory;
    throw std::bad_alloc();
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    ++gCount;
    return std::malloc(size);
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}
