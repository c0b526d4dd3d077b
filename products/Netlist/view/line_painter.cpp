#include "line_painter.h"

#include <algorithm>
#include <array>

#include "code_page.h"
#include "sim_edit_line.h"

namespace {

constexpr std::size_t kPiece = 1024;

constexpr auto kBlanks = [] {
    std::array<char16_t, kPiece> blanks{};
    blanks.fill(u' ');
    return blanks;
}();

} // namespace

void LinePainter::Text(std::string_view text) {
    std::array<char16_t, kPiece> units;
    while (!text.empty() && m_Dc.GetCurrentPosition().x < m_Right) {
        const std::string_view piece = text.substr(0, kPiece);
        codepage::Decode(codepage::Page::kWindows1252, piece, units.data());
        m_Dc.TextOut({units.data(), piece.size()});
        text.remove_prefix(piece.size());
    }
}

void LinePainter::Blanks(std::int64_t count) {
    for (; count > 0 && m_Dc.GetCurrentPosition().x < m_Right; count -= kPiece)
        m_Dc.TextOut(
            {kBlanks.data(), static_cast<std::size_t>(std::min<std::int64_t>(count, kPiece))});
}

void LinePainter::Coloured(std::string_view text, ColorRef color) {
    const ColorRef before = m_Dc.SetTextColor(color);
    Text(text);
    m_Dc.SetTextColor(before);
}

void LinePainter::Columns(const CSimEditLine& line, std::int32_t from, std::int32_t to) {
    to = std::min(to, line.Length());
    from = std::min(from, to);
    const auto textOf = [&line](std::int32_t first, std::int32_t behind) {
        return line.Text().substr(static_cast<std::size_t>(first),
                                  static_cast<std::size_t>(behind - first));
    };
    if (m_Line != &line || from < m_Behind)
        m_Span = line.Colors().begin();
    m_Line = &line;
    m_Behind = to;
    for (; m_Span != line.Colors().end(); ++m_Span) {
        const std::int32_t start = std::clamp(m_Span->Start, from, to);
        const std::int32_t behind = std::clamp(m_Span->End + 1, start, to);
        if (start >= to || m_Dc.GetCurrentPosition().x >= m_Right)
            break;
        Text(textOf(from, start));
        Coloured(textOf(start, behind), m_Span->Color);
        from = behind;
        if (m_Span->End >= to) // and it may go on in the next piece
            break;
    }
    Text(textOf(from, to));
}
