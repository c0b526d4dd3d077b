/// Tokens and blocks as JSON.
#pragma once

#include <string_view>
#include <vector>

#include "block.h"
#include "json_writer.h"

/// JSON of tokens and blocks.
class BlocksJson : public JsonWriter {
public:
    using JsonWriter::JsonWriter;

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
};
