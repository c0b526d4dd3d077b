#include "edit_script.h"

#include <algorithm>
#include <charconv>

#include "astring.h"
#include "code_page.h"
#include "tool_error.h"

namespace {

constexpr std::string_view kBlanks = " \t\r\n";

ToolError Malformed(const std::string& reason) {
    return {ExitCode::no, reason};
}

/// Reads one line from its begin to its end.
class WordReader {
public:
    explicit WordReader(std::string_view line) : m_Rest(line) { SkipBlanks(); }

    bool AtEnd() const { return m_Rest.empty(); }
    bool AtComment() const { return m_Rest.starts_with('#'); }

    std::string ReadWord() {
        std::string word = m_Rest.starts_with('"') ? ReadQuoted() : ReadPlain();
        if (!AtEnd() && kBlanks.find(m_Rest.front()) == kBlanks.npos)
            throw Malformed("a quote stands beside a word");
        SkipBlanks();
        return word;
    }

private:
    void SkipBlanks() {
        m_Rest.remove_prefix(std::min(m_Rest.find_first_not_of(kBlanks), m_Rest.size()));
    }

    std::string ReadPlain() {
        const std::size_t end = std::min(m_Rest.find_first_of(" \t\r\n\""), m_Rest.size());
        std::string word(m_Rest.substr(0, end));
        m_Rest.remove_prefix(end);
        return word;
    }

    std::string ReadQuoted() {
        std::string word;
        for (m_Rest.remove_prefix(1); !m_Rest.starts_with('"');) {
            const std::size_t end = m_Rest.find_first_of("\"\\");
            if (end == m_Rest.npos)
                throw Malformed("a quote is missing");
            word += m_Rest.substr(0, end);
            m_Rest.remove_prefix(end);
            if (m_Rest.front() == '\\')
                AppendEscaped(word);
        }
        m_Rest.remove_prefix(1);
        return word;
    }

    void AppendEscaped(std::string& word) {
        constexpr std::string_view kEscapes = "\\\\\"\"t\tr\rn\n"; // each with what it stands for
        const char letter = m_Rest.size() > 1 ? m_Rest[1] : '\0';
        if (letter == 'x')
            return AppendByte(word);
        for (std::size_t i = 0; i < kEscapes.size(); i += 2)
            if (kEscapes[i] == letter) {
                word += kEscapes[i + 1];
                m_Rest.remove_prefix(2);
                return;
            }
        throw Malformed("a backslash stands before something else than \\ \" t r n x");
    }

    void AppendByte(std::string& word) {
        constexpr std::size_t kDigits = 2;
        const std::string_view digits = m_Rest.substr(2, kDigits);
        unsigned char byte = 0;
        const auto [end, error] =
            std::from_chars(digits.data(), digits.data() + digits.size(), byte, 16);
        if (error != std::errc() || end != digits.data() + kDigits)
            throw Malformed("\\x stands without two hexadecimal digits");
        const auto character = static_cast<char>(byte);
        word += AString::FromMultiByte(AString::kAnsi, {&character, 1}).ToCString(AString::kUtf8);
        m_Rest.remove_prefix(2 + kDigits);
    }

    std::string_view m_Rest;
};

} // namespace

std::vector<std::string_view> SplitLines(std::string_view script) {
    std::vector<std::string_view> lines;
    while (!script.empty()) {
        const std::size_t end = std::min(script.find('\n'), script.size());
        lines.push_back(script.substr(0, end));
        script.remove_prefix(std::min(end + 1, script.size()));
    }
    return lines;
}

std::vector<std::string> SplitWords(std::string_view line) {
    if (!codepage::IsValidUtf8(line))
        throw Malformed("the line isn't UTF-8");
    std::vector<std::string> words;
    for (WordReader reader(line); !reader.AtEnd() && !(words.empty() && reader.AtComment());)
        words.push_back(reader.ReadWord());
    return words;
}
