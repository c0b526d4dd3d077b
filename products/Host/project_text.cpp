#include "project_text.h"

#include <algorithm>

#include "project_reader.h"

namespace {

std::size_t CountLinesOf(const AString& text) {
    const auto ends = std::count(text.begin(), text.end(), u'\n');
    return text.empty() ? 0 : static_cast<std::size_t>(ends) + 1;
}

} // namespace

ProjectText::ProjectText(AString text)
    : m_Text(std::move(text)), m_LineCount(CountLinesOf(m_Text)) {}

ProjectText::ProjectText(std::shared_ptr<const std::string> file, std::string_view body,
                         std::size_t lines)
    : m_File(std::move(file)), m_Body(body), m_LineCount(lines) {}

AString ProjectText::Get() const {
    return IsOfFile() ? ReadTextBody(m_Body) : m_Text;
}

void ProjectText::Set(AString text) {
    if (text == Get())
        return;
    m_Text = std::move(text);
    m_LineCount = CountLinesOf(m_Text);
    m_File.reset();
    m_Body = {};
}
