#include "line_splitter.h"

#include "expand_tabs.h"
#include "line_scan.h"

#include <cstring>

namespace {

/// A line end of one character.
LineEnds EndsOf(char character) {
    return character == '\r' ? LineEnds::cr : LineEnds::lf;
}

} // namespace

void LineSplitter::Add(std::string_view piece) {
    if (piece.empty())
        return;
    const char* from = piece.data();
    const char* const end = from + piece.size();
    if (m_endOfPiece != 0) { // the text goes on, so that line end did end a line
        PutBegun();
        const bool isPair = m_endOfPiece == '\r' && *from == '\n';
        Meet(isPair ? LineEnds::crLf : EndsOf(m_endOfPiece));
        from += isPair;
        m_endOfPiece = 0;
    }
    std::size_t tabs = 0;
    for (const char* at = from;; ++at) {
        at = FindControl(at, end);
        if (at == end)
            break;
        if (!IsLineEnd(*at)) {
            tabs += *at == '\t';
            continue;
        }
        if (at + 1 == end) {
            m_endOfPiece = *at;
            m_begun.append(from, at);
            return;
        }
        const std::string_view line(from, static_cast<std::size_t>(at - from));
        if (m_begun.empty()) {
            PutLine(line, tabs);
        } else {
            m_begun += line;
            PutBegun();
        }
        const bool isPair = at[0] == '\r' && at[1] == '\n';
        Meet(isPair ? LineEnds::crLf : EndsOf(*at));
        at += isPair;
        from = at + 1;
        tabs = 0;
    }
    m_begun.append(from, end);
}

void LineSplitter::Finish() {
    if (m_endOfPiece != 0)
        Meet(EndsOf(m_endOfPiece));
    PutBegun();
}

void LineSplitter::PutBegun() {
    PutLine(m_begun, CountTabs(m_begun));
    m_begun.clear();
}

void LineSplitter::PutLine(std::string_view line, std::size_t tabs) {
    m_tabs.clear();
    std::size_t size = line.size() + tabs * kTabGrowth;
    char* const room = m_blocks.Room(size);
    if (tabs != 0) {
        LineText::CheckSize(size); // columns are counted below
        size = ExpandTabs(line, 0, room, m_tabs);
    } else if (size != 0) {
        std::memcpy(room, line.data(), size);
    }
    m_target.AddLine(LineText::Borrow(m_blocks.Commit(size)), m_tabs);
}
