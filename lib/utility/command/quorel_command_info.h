/// QuorelCommandInfo: what a command touched.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "quorel_export.h"

/// A record for the desktop to read: two words of flags and three lists of objects, which stay
/// their owners'. What flags and objects mean is the command's.
class QUOREL_API QuorelCommandInfo {
public:
    using Flags = std::array<std::uint32_t, 2>;
    using Objects = std::vector<void*>;
    enum List { kCreated, kDeleted, kChanged, kListCount };

    explicit QuorelCommandInfo(std::uint32_t first = 0, std::uint32_t second = 0)
        : m_Flags{first, second} {}
    QuorelCommandInfo(const QuorelCommandInfo&) = delete;
    QuorelCommandInfo& operator=(const QuorelCommandInfo&) = delete;
    virtual ~QuorelCommandInfo();
    /// Adds the flags of another record, and appends its lists to those of this one; repeats stay.
    /// Null changes nothing.
    virtual void Merge(const QuorelCommandInfo* other);

    const Flags& GetFlags() const { return m_Flags; }
    const Objects& GetObjects(List list) const { return m_Objects[list]; }
    void AddObject(List list, void* object) { m_Objects[list].push_back(object); }

private:
    Flags m_Flags;
    std::array<Objects, kListCount> m_Objects;
};
