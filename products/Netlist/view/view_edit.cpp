/// Editing in a CSimEditView: what keys, commands and search do to the text at the caret.
#include <algorithm>

#include "base_editor.h"
#include "netlist_edit_cmd.h"
#include "record_type.h"
#include "sim_edit_doc.h"
#include "sim_edit_view.h"

namespace {

/// Recolouring is off while it lives.
class ColouringPause {
public:
    explicit ColouringPause(CSimEditDoc& document)
        : m_Document(document), m_Before(document.Colouring()) {
        m_Document.SetColouring(0);
    }
    ColouringPause(const ColouringPause&) = delete;
    ColouringPause& operator=(const ColouringPause&) = delete;
    ~ColouringPause() { m_Document.SetColouring(m_Before); }

private:
    CSimEditDoc& m_Document;
    std::int32_t m_Before;
};

/// The bytes of the line end with which text begins, 0 for none.
std::size_t LineEndLength(std::string_view text) {
    if (text.starts_with("\r\n"))
        return 2;
    return text.starts_with('\r') || text.starts_with('\n') ? 1 : 0;
}

/// Gives the number 1 once, then 0: what marks the oldest record of an action, by the records that
/// have come to the journal meanwhile.
class FirstRecord {
public:
    explicit FirstRecord(const CSimEditDoc& document) : m_Document(document) {}
    std::int32_t Mark() const { return m_Done ? 0 : 1; }
    /// An edit was made; a record was written for it if it changed the text.
    void Edited(bool changed) { m_Done = m_Done || changed; }

private:
    const CSimEditDoc& m_Document;
    bool m_Done = false;
};

} // namespace
