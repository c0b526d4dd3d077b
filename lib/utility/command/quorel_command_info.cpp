#include "quorel_command_info.h"

QuorelCommandInfo::~QuorelCommandInfo() = default;

void QuorelCommandInfo::Merge(const QuorelCommandInfo* other) {
    if (!other)
        return;
    for (std::size_t word = 0; word < m_Flags.size(); ++word)
        m_Flags[word] |= other->m_Flags[word];
    for (std::size_t list = 0; list < m_Objects.size(); ++list) {
        const Objects added = other->m_Objects[list]; // the other may be this one
        m_Objects[list].insert(m_Objects[list].end(), added.begin(), added.end());
    }
}
