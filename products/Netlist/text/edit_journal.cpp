#include "edit_journal.h"

void RecordList::Append(std::unique_ptr<CSimEditLine> record, std::size_t limit) {
    if (limit == 0)
        return;
    while (m_records.size() >= limit)
        m_records.pop_front();
    m_records.push_back(std::move(record));
}

void RecordList::DropNewest(std::size_t count) {
    for (; count > 0 && !m_records.empty(); --count)
        m_records.pop_back();
}
