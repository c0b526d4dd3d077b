/// Coloured text for a terminal.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "command.h"
#include "ieditor_inspector.h"

/// Writes lines of 8-bit text as a person reads them: in UTF-8, control characters as their
/// pictures, so that no text works a terminal, colours as 24-bit codes.
class AnsiText {
public:
    /// `onPaper` is black on white, as in the editor, for a terminal of unknown background: the
    /// colours were chosen for white.
    enum class Style { plain, colored, onPaper };

    /// @param sample the whole text or a part: text that is UTF-8 stays as it is, other is read as
    ///        the code page of the editors
    AnsiText(Style style, std::string_view sample);

    /// Appends a line without an end. Spans ascend; one that leaves the line is cut.
    void AppendLine(std::string_view line, std::span<const ColorSpan> colors,
                    std::string& out) const;
    /// Appends a line's number, 1-based, in a column of that many digits.
    void AppendNumber(int row, std::size_t digits, std::string& out) const;

private:
    void AppendVisible(std::string_view bytes, std::string& out) const;
    bool InColor() const { return m_Style != Style::plain; }

    Style m_Style;
    bool m_IsUtf8;
};

/// When to colour: --color auto|always|never.
struct ColorOption {
    std::string m_When = "auto";

    void AddTo(CLI::App& command);
    /// The style of standard output: with auto coloured when it is a terminal that shows colours
    /// and the environment has no NO_COLOR.
    AnsiText::Style GetStyle() const;
};
