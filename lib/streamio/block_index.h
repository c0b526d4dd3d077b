/// Random access to the blocks of a stream.
#pragma once

#include <ctime>

#include "block.h"
#include "stream_state.h"

namespace io {

class CAbstract_stream;

/// Where blocks begin: a table from a block's path to its position, as a block of functions. A path
/// is the names from the outermost block on, joined by tabs, and matches without regard to case. A
/// stream stores it as its last block, "$index$", and in front, in "$base_index$", a block of fixed
/// size, where that stands.
class QUOREL_API CBlock_index : public CStreamio_object {
public:
    static constexpr const char16_t* kIndexName = u"$index$";
    static constexpr const char16_t* kBaseIndexName = u"$base_index$";

    CBlock_index();
    /// With an empty table of that name.
    explicit CBlock_index(const AString& name);

    /// Empties the table.
    void Clear();
    bool IsEmpty() const;
    /// Whether nested blocks get entries.
    void SetAllLevels(bool isOn) noexcept { mAllLevels = isOn; }
    bool GetAllLevels() const noexcept { return mAllLevels; }
    std::time_t GetTime() const noexcept { return mTime; }
    int GetVersion() const noexcept { return mVersion; }
    void SetVersion(int version) noexcept { mVersion = version; }
    /// Takes over all of these from another index.
    void TakeSettings(const CBlock_index& other) noexcept;

    /// Enters a block, in place of an entry of that path. A nested one is passed over, with true,
    /// unless all levels are on. False for a position that is not valid, and for a path that would
    /// make the table's paths long beyond measure: more than 16 units for each unit of the stream
    /// in front of the position, with 65,536 to begin with.
    bool AddEntry(const AString& path, const CAbstract_stream_pos& pos);
    /// Takes position, line and level of an entry over into `pos`; false without one, and for one
    /// that tells no position from 0 on.
    bool FindEntry(const AString& path, CAbstract_stream_pos& pos) const;
    /// Takes them from an item of the table; false for one that is no such entry.
    static bool FillFrom(const CBlock_item& item, CAbstract_stream_pos& pos);
    /// Goes to a block. False, and the stream stays, without an entry.
    bool Seek(const AString& path, CAbstract_stream& stream) const;

    /// Replaces the table by the block of its name that the stream holds next; the "properties" of
    /// such a block become this object's settings.
    void Read(CAbstract_istream& stream) override;
    void Write(CAbstract_ostream& stream) const override;

    /// The entries: functions named by their paths.
    const CBlock_ptr<CBlock>& GetTable() const noexcept { return mIndexBlock; }

private:
    CBlock_ptr<CBlock> mIndexBlock;
    bool mAllLevels = false;
    std::time_t mTime;
    int mVersion = 0;
    std::size_t mPathUnits = 0; ///< of the paths entered
};

} // namespace io
