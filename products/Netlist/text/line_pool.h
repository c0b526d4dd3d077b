/// Memory for the many small objects of one size that a document is made of.
#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <new>
#include <utility>
#include <vector>

#if defined(__SANITIZE_ADDRESS__)
#define QUOREL_PLAIN_POOL 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define QUOREL_PLAIN_POOL 1
#endif
#endif

/// Places of kSize bytes, taken and given back at the cost of a list's head, without a heap's
/// header for each. The blocks go back to the heap when the last place has been given back. For
/// one thread. Under the address sanitizer each place comes from the heap, so that misuse is seen.
template <std::size_t kSize>
class LinePool {
public:
    static void* Take() {
#ifdef QUOREL_PLAIN_POOL
        return ::operator new(kSize);
#else
        Pool& pool = ThePool();
        ++pool.used;
        if (pool.free != nullptr)
            return std::exchange(pool.free, pool.free->next);
        if (pool.fresh == pool.freshEnd)
            AddBlock(pool);
        return std::exchange(pool.fresh, pool.fresh + kSize);
#endif
    }

    static void GiveBack(void* memory) {
#ifdef QUOREL_PLAIN_POOL
        ::operator delete(memory);
#else
        Pool& pool = ThePool();
        pool.free = ::new (memory) Free{pool.free};
        if (--pool.used == 0)
            pool = Pool{};
#endif
    }

private:
    struct Free {
        Free* next;
    };
    static_assert(kSize >= sizeof(Free) && kSize % alignof(Free) == 0);

    struct Pool {
        std::size_t used = 0;
        Free* free = nullptr;
        std::byte* fresh = nullptr;
        std::byte* freshEnd = nullptr;
        std::vector<std::unique_ptr<std::byte[]>> blocks;
    };

    /// Never destroyed: lines may outlive every other static object.
    static Pool& ThePool() {
        static Pool& pool = *new Pool;
        return pool;
    }

    static void AddBlock(Pool& pool) {
        constexpr std::size_t kLeast = 64;
        constexpr std::size_t kMost = 16384;
        const std::size_t places =
            pool.blocks.empty()
                ? kLeast
                : std::min(kMost, kLeast << std::min<std::size_t>(pool.blocks.size(), 8));
        pool.blocks.push_back(std::make_unique_for_overwrite<std::byte[]>(places * kSize));
        pool.fresh = pool.blocks.back().get();
        pool.freshEnd = pool.fresh + places * kSize;
    }
};
