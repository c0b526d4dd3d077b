/// Where the longer texts of tokens live.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "quorel_export.h"

namespace io {

/// Hands out room for token texts from blocks that many texts share, so that reading n units of
/// text takes n / 4,096 allocations or so and not one for each token. Each CToken that refers to a
/// text keeps its whole block; the store keeps two, which it fills by turns as long as no token
/// does. Not for two threads: tokens of one store, and all their copies, belong to one thread at a
/// time.
class QUOREL_API CToken_text_store {
public:
    CToken_text_store() noexcept = default;
    ~CToken_text_store();
    CToken_text_store(const CToken_text_store&) = delete;
    CToken_text_store& operator=(const CToken_text_store&) = delete;

private:
    friend class CToken;

    /// Shared by the texts behind it.
    struct Block {
        std::size_t mCount; ///< tokens that refer to it, and the store that fills it
    };
    /// In front of each text: how far back its block begins.
    using Offset = std::uint32_t;

    /// Room for `bytes` bytes, aligned for Offset, in this store's block. The caller holds one
    /// reference. Throws std::bad_alloc.
    char* Take(std::size_t bytes);
    /// Room in a block of its own.
    static char* TakeAlone(std::size_t bytes);
    static Block& BlockOf(const char* text) noexcept {
        Offset offset;
        std::memcpy(&offset, text - sizeof offset, sizeof offset);
        return *reinterpret_cast<Block*>(const_cast<char*>(text) - offset);
    }
    static void AddRef(const char* text) noexcept { ++BlockOf(text).mCount; }
    static void Release(const char* text) noexcept {
        if (Block& block = BlockOf(text); --block.mCount == 0)
            Free(block);
    }
    static Block* NewBlock(std::size_t bytes);
    static void Free(Block& block) noexcept;
    void NextBlock(std::size_t bytes);

    /// A block that the store holds.
    struct Filling {
        Block* block = nullptr;
        std::size_t used = 0; ///< bytes behind the Block that are given away
        std::size_t size = 0; ///< bytes behind the Block
    };
    static void Drop(const Filling& filling) noexcept;

    Filling mFilling;
    Filling mSpare; ///< the one before, to be filled again if no token has kept a text of it
};

} // namespace io
