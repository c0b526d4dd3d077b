/// Tokens and blocks as JSON.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "block.h"

/// JSON that grows piece by piece, without a tree of it in memory.
class BlocksJson {
public:
    enum class Target {
        kKept,          ///< the answer of a batch: GetText has all of it
        kStandardOutput ///< handed on as it grows; each element of a list on a line of its own
    };
    explicit BlocksJson(Target target) : m_Target(target) {}

    const std::string& GetText() const { return m_Text; }

    /// Appends JSON as it stands.
    BlocksJson& operator<<(std::string_view json) {
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
    /// The shortest number that reads as this double; null for an infinity and for no number.
    void AppendNumber(double number);
    void AppendStrings(const std::vector<AString>& texts);

    /// `"kind": ...` with the token's number and text, as members without braces. A number kind has
    /// a number and, if it was kept, its source text; a text kind has a text.
    void AppendTokenMembers(const io::CToken& token);
    void AppendToken(const io::CToken& token);
    /// A block and all that is in it. Nesting takes no stack of calls.
    void AppendBlock(const io::CBlock& block);

private:
    class Walk;

    void AppendItemHead(const char* member, const io::CToken& name, std::u16string_view text);
    void AppendNamed(const char* member, const io::CToken& name);
    void AppendErrors(const io::CBlock& block);
    void AppendElements(const io::CBlock_item& vec);
    void Spill();

    Target m_Target;
    std::string m_Text;
    std::string m_Utf8; ///< scratch for strings
};
