/// The two lists of a document's journal.
#pragma once

#include "quorel_export.h"
#include "sim_edit_line.h"

#include <cstddef>
#include <deque>
#include <memory>

/// Records from the oldest to the newest, at most a limit of them. Appending and dropping at
/// either end is constant.
class QUOREL_API RecordList {
public:
    std::size_t Size() const { return m_records.size(); }
    bool Empty() const { return m_records.empty(); }
    CSimEditLine& operator[](std::size_t index) const { return *m_records[index]; }
    CSimEditLine& Newest() const { return *m_records.back(); }

    /// Appends record; the oldest go first so that no more than limit are there, which may have
    /// been lowered. A limit of 0 destroys the record and nothing else.
    void Append(std::unique_ptr<CSimEditLine> record, std::size_t limit);
    /// Destroys up to count of the newest.
    void DropNewest(std::size_t count);
    /// Destroys all, the newest first.
    void Clear() { DropNewest(Size()); }

private:
    std::deque<std::unique_ptr<CSimEditLine>> m_records;
};
