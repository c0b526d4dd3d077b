/// ProjectScanner: the items of block text, with the bytes that each takes.
#pragma once

#include <optional>
#include <string_view>

#include "block.h"
#include "memory_units.h"
#include "token_istream.h"

/// Goes over block text item by item. What can't be read costs its line, as the block reader has
/// it.
class ProjectScanner {
public:
    /// What stands next.
    enum class Next { item, block, blockEnd, end };

    /// @param bytes outlive the scanner
    explicit ProjectScanner(std::string_view bytes);

    /// Goes to what stands next, past comments and line ends.
    Next Look();
    /// The byte at which what Look has found begins, and its line.
    std::size_t GetStart() const { return m_Start; }
    int GetLine();
    /// The same byte, or that at which its line begins if nothing but blanks stands in front of it.
    std::size_t GetLineStart() const;
    /// Whether it is a block of that name.
    bool IsBlock(std::u16string_view name) { return m_Stream.IsBegin(name); }

    /// Goes into the block that stands next.
    void EnterBlock();
    /// Goes out of a block that ends next. False, and the rest of the line is passed over, if the
    /// end has another name.
    bool LeaveBlock(std::u16string_view name);
    /// Reads an item or block whole. What can't be read is passed over.
    std::optional<io::XStreamioError> ReadItem(io::CBlockItemPtr& item);
    /// Passes over the line.
    void SkipLine();

    /// The byte behind what was read last; comments may stand between.
    std::size_t GetOffset();
    /// The bytes from an offset to behind what was read or passed over last, without its line end.
    std::string_view GetBytesFrom(std::size_t offset);

    /// Whether an item's bytes are the same item, and no more, in front of the end of a block.
    static bool CanStandAlone(std::string_view item);

private:
    std::string_view m_Bytes;
    MemoryUnits m_Units;
    io::CRawIstream m_Raw;
    io::CToken_istream m_Stream;
    std::size_t m_Start = 0;
    std::size_t m_Counted = 0; ///< bytes whose line ends are counted in m_Line
    int m_Line = 1;
    bool m_WasSkipped = false; ///< what was read last took the rest of its line with it
};
