/// JSON that grows piece by piece.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

/// Writes JSON text without a tree of it in memory.
class JsonWriter {
public:
    enum class Target {
        kKept,           ///< the answer of a batch: GetText has all of it
        kStandardOutput, ///< handed on as it grows; each element of a list on a line of its own
        kOneLine,        ///< to standard output as it grows, without line ends in it
    };
    explicit JsonWriter(Target target) : m_Target(target) {}

    const std::string& GetText() const { return m_Text; }

    /// Appends JSON as it stands.
    JsonWriter& operator<<(std::string_view json) {
        m_Text += json;
        return *this;
    }
    /// What separates the elements of an outer list, in front of each of them.
    void NextElement(bool isFirst);
    /// What goes behind the last of them.
    void EndList();
    /// Hands the rest on, with a line end.
    void End();

    /// A string with its quotes. A lone surrogate becomes U+FFFD.
    void AppendString(std::u16string_view text);
    /// The same from UTF-8.
    void AppendString(std::string_view utf8);
    /// 8-bit text: a character U+0000 to U+00FF for each byte.
    void AppendBytes(std::string_view bytes);
    void AppendInteger(std::int64_t number);
    /// A list of numbers, behind a comma unless it is the first element of a list.
    void AppendIntegers(std::initializer_list<std::int64_t> numbers);

private:
    void Spill();

    Target m_Target;
    std::string m_Text;
    std::string m_Utf8; ///< scratch for strings
};
