/// Cutting a stream of bytes into the lines of a document.
#pragma once

#include "ieditor_inspector.h"
#include "line_text.h"
#include "tab_table.h"
#include "text_blocks.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// Takes a text in pieces and hands its lines out in order. CR LF, CR and LF end a line; a single
/// CR or LF at the very end of the text makes no further line, a CR LF there makes an empty one.
/// The lines' bytes go to blocks, with the tabs expanded. A line that takes more bytes than a
/// LineText holds, with three more for each tab, throws std::length_error.
class LineSplitter {
public:
    /// What is called with each line: its expanded bytes, in the blocks, and its tabs.
    struct Target {
        virtual void AddLine(LineText&& text, const TabTable& tabs) = 0;

    protected:
        ~Target() = default;
    };

    LineSplitter(TextBlocks& blocks, Target& target) : m_blocks(blocks), m_target(target) {}

    void Add(std::string_view piece);
    /// The text has ended: hands out the last line.
    void Finish();

    /// The line ends met so far, one at the very end included.
    LineEnds MetLineEnds() const { return m_met; }

private:
    void Meet(LineEnds ends) {
        m_met = m_met == LineEnds::none || m_met == ends ? ends : LineEnds::mixed;
    }
    void PutLine(std::string_view line, std::size_t tabs);
    void PutBegun();

    TextBlocks& m_blocks;
    Target& m_target;
    std::string m_begun;   ///< the begin of a line whose end hasn't been seen
    char m_endOfPiece = 0; ///< the CR or LF behind m_begun with which the last piece ended, else 0
    TabTable m_tabs;
    LineEnds m_met = LineEnds::none;
};
