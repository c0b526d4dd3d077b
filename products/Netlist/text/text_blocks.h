/// The bytes of a loaded text, in large blocks from which lines borrow.
#pragma once

#include "quorel_export.h"

#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

/// Grows by whole blocks and never moves a byte, so that a view into it stays good until Clear.
class QUOREL_API TextBlocks {
public:
    /// Room for at least size further bytes that lie together. Use it up with Commit.
    char* Room(std::size_t size);
    /// The bytes of the room from the last Room call on that may be written.
    std::size_t RoomSize() const { return static_cast<std::size_t>(m_end - m_next); }
    /// Keeps the first size bytes of the room.
    std::string_view Commit(std::size_t size);
    void Clear();

private:
    std::vector<std::unique_ptr<char[]>> m_blocks;
    char* m_next = nullptr;
    char* m_end = nullptr;
};
