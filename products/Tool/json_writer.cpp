#include "json_writer.h"

#include "code_page.h"
#include "json_text.h"
#include "output.h"

namespace {

constexpr std::size_t kSpillSize = 64 * 1024;

bool IsPlain(char c) {
    return static_cast<unsigned char>(c) >= 0x20 && c != '"' && c != '\\';
}

/// Appends a character that can't stand in a JSON string.
void AppendEscaped(char c, std::string& text) {
    constexpr const char* kHex = "0123456789abcdef";
    constexpr std::string_view kShort = "\"\"\\\\\bb\ff\nn\rr\tt"; // each with its letter
    for (std::size_t i = 0; i < kShort.size(); i += 2) {
        if (kShort[i] == c) {
            text += {'\\', kShort[i + 1]};
            return;
        }
    }
    text += "\\u00";
    text += {kHex[c >> 4], kHex[c & 0xF]};
}

} // namespace

void JsonWriter::Spill() {
    if (m_Target == Target::kKept)
        return;
    Output::Get().Write(m_Text);
    m_Text.clear();
}

void JsonWriter::NextElement(bool isFirst) {
    if (!isFirst)
        m_Text += ',';
    if (m_Target == Target::kStandardOutput)
        m_Text += '\n';
    if (m_Text.size() > kSpillSize)
        Spill();
}

void JsonWriter::EndList() {
    if (m_Target == Target::kStandardOutput)
        m_Text += '\n';
    m_Text += ']';
}

void JsonWriter::End() {
    m_Text += '\n';
    Spill();
}

void JsonWriter::AppendString(std::string_view utf8) {
    m_Text += '"';
    for (std::size_t i = 0; i < utf8.size(); ++i) {
        const std::size_t first = i;
        while (i < utf8.size() && IsPlain(utf8[i]))
            ++i;
        m_Text += utf8.substr(first, i - first);
        if (i < utf8.size())
            AppendEscaped(utf8[i], m_Text);
    }
    m_Text += '"';
}

void JsonWriter::AppendString(std::u16string_view text) {
    m_Utf8.clear();
    codepage::AppendUtf16ToUtf8(text, m_Utf8);
    AppendString(std::string_view(m_Utf8));
}

void JsonWriter::AppendBytes(std::string_view bytes) {
    AppendString(JsonFromBytes(bytes));
}

void JsonWriter::AppendInteger(std::int64_t number) {
    m_Text += std::to_string(number);
}

void JsonWriter::AppendIntegers(std::initializer_list<std::int64_t> numbers) {
    if (!m_Text.ends_with('['))
        m_Text += ',';
    char open = '[';
    for (const std::int64_t number : numbers) {
        m_Text += open;
        AppendInteger(number);
        open = ',';
    }
    m_Text += ']';
}
