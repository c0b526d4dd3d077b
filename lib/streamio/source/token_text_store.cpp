#include "token_text_store.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace io {

namespace {

/// A first block is small, since most streams are short; each next one is twice as large.
constexpr std::size_t kFirstBlock = 256;
constexpr std::size_t kLastBlock = 16384;
/// A text beyond this has a block of its own, so that little of a shared one is left over.
constexpr std::size_t kLargeText = 2048;

constexpr std::size_t RoundUp(std::size_t bytes, std::size_t unit) {
    return (bytes + unit - 1) / unit * unit;
}

} // namespace

CToken_text_store::~CToken_text_store() {
    Drop(mFilling);
    Drop(mSpare);
}

CToken_text_store::Block* CToken_text_store::NewBlock(std::size_t bytes) {
    return ::new (::operator new(sizeof(Block) + bytes)) Block{1};
}

void CToken_text_store::Free(Block& block) noexcept {
    ::operator delete(&block);
}

void CToken_text_store::NextBlock(std::size_t bytes) {
    std::swap(mFilling, mSpare);
    const bool isFree = mFilling.block && mFilling.block->mCount == 1;
    if (!isFree || mFilling.size < kLastBlock) {
        const std::size_t size =
            std::max(std::clamp(mSpare.size * 2, kFirstBlock, kLastBlock), bytes);
        Block* const block = NewBlock(size);
        Drop(mFilling);
        mFilling = {block, 0, size};
    }
    mFilling.used = 0;
}

void CToken_text_store::Drop(const Filling& filling) noexcept {
    if (filling.block && --filling.block->mCount == 0)
        Free(*filling.block);
}

char* CToken_text_store::Take(std::size_t bytes) {
    const std::size_t size = RoundUp(sizeof(Offset) + bytes, sizeof(Offset));
    if (size > kLargeText)
        return TakeAlone(bytes);
    if (size > mFilling.size - mFilling.used)
        NextBlock(size);
    const auto offset = static_cast<Offset>(sizeof(Block) + mFilling.used + sizeof(Offset));
    char* const text = reinterpret_cast<char*>(mFilling.block) + offset;
    std::memcpy(text - sizeof offset, &offset, sizeof offset);
    mFilling.used += size;
    ++mFilling.block->mCount;
    return text;
}

char* CToken_text_store::TakeAlone(std::size_t bytes) {
    Block* const block = NewBlock(sizeof(Offset) + bytes);
    const Offset offset = sizeof(Block) + sizeof(Offset);
    char* const text = reinterpret_cast<char*>(block) + offset;
    std::memcpy(text - sizeof offset, &offset, sizeof offset);
    return text;
}

} // namespace io
