#include "project_scanner.h"

namespace {

constexpr std::string_view kBlanks = " \t";

} // namespace

ProjectScanner::ProjectScanner(std::string_view bytes)
    : m_Bytes(bytes), m_Units(bytes), m_Raw(&m_Units), m_Stream(m_Raw) {}

ProjectScanner::Next ProjectScanner::Look() {
    m_Stream.Clear();
    const bool isAtEnd = m_Stream.IsAtEof();
    m_Start = GetOffset(); // a look ahead would lose it
    if (isAtEnd)
        return Next::end;
    if (m_Stream.IsEnd())
        return Next::blockEnd;
    return m_Stream.IsBegin() ? Next::block : Next::item;
}

std::size_t ProjectScanner::GetOffset() {
    io::CToken_streambuf& buffer = m_Stream.GetTokenStreambuf();
    return static_cast<std::size_t>(buffer.TellRaw() - buffer.GetTokenDistance());
}

/// Counts when it is asked for: few are, and they come in order.
int ProjectScanner::GetLine() {
    for (; m_Counted < m_Start; ++m_Counted) {
        const bool isPair = m_Bytes.substr(m_Counted, 2) == "\r\n";
        m_Line += (m_Bytes[m_Counted] == '\r' && !isPair) || m_Bytes[m_Counted] == '\n';
    }
    return m_Line;
}

std::size_t ProjectScanner::GetLineStart() const {
    const std::string_view before = m_Bytes.substr(0, m_Start);
    const std::size_t start = before.find_last_not_of(kBlanks) + 1; // 0 when there is none
    return start == 0 || before[start - 1] == '\n' || before[start - 1] == '\r' ? start : m_Start;
}

void ProjectScanner::EnterBlock() {
    m_Stream.ReadBegin();
}

bool ProjectScanner::LeaveBlock(std::u16string_view name) {
    m_WasSkipped = false;
    m_Stream.ReadEnd();
    if (m_Stream.IsEol() || m_Stream.IsAtEof() || m_Stream.ReadValue(name))
        return true;
    SkipLine();
    return false;
}

std::optional<io::XStreamioError> ProjectScanner::ReadItem(io::CBlockItemPtr& item) {
    m_WasSkipped = false;
    try {
        item.Read(m_Stream);
        return std::nullopt;
    } catch (const io::XStreamioError& error) {
        SkipLine();
        return error;
    }
}

void ProjectScanner::SkipLine() {
    m_Stream.Clear();
    m_Stream.SkipLine();
    m_WasSkipped = true;
}

std::string_view ProjectScanner::GetBytesFrom(std::size_t offset) {
    const std::string_view bytes = m_Bytes.substr(offset, GetOffset() - offset);
    const std::string_view trimmed = bytes.substr(0, bytes.find_last_not_of(kBlanks) + 1);
    for (const std::string_view lineEnd : {"\r\n", "\n", "\r"})
        if (trimmed.ends_with(lineEnd))
            return trimmed.substr(0, trimmed.size() - lineEnd.size());
    const auto kind = m_Stream.PeekToken().GetKind();
    const bool isWithinLine = kind != io::TokenKind::Eol && kind != io::TokenKind::Eof;
    // Blanks at the end of a line that was passed over may have meant something.
    return isWithinLine && !m_WasSkipped ? trimmed : bytes;
}

bool ProjectScanner::CanStandAlone(std::string_view item) {
    if (item.ends_with('\r')) // which the LF behind it would make one line end of
        return false;
    const std::string text =
        "$begin 'block'\n" + std::string(item) + "\n$end 'block'\n$begin 'behind'\n";
    ProjectScanner scanner(text);
    io::CBlock block;
    block.Read(scanner.m_Stream);
    return block.GetSize() + block.GetErrorList().size() == 1 && scanner.IsBlock(u"behind");
}
