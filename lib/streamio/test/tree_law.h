// The laws of reading and writing, for tests and fuzz targets.
#pragma once

#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "block.h"
#include "block_dump.h"
#include "block_func.h"
#include "block_value.h"
#include "block_vec.h"
#include "char_class.h"
#include "raw_streambufs.h"
#include "token_istring.h"
#include "token_ostream.h"

namespace io::test {

/// A token stream over bytes in memory, as over a file.
struct Bytes_in {
    explicit Bytes_in(const std::string& bytes, unsigned flags = 0)
        : buffer(bytes), units(buffer), raw(&units),
          stream(raw, &CToken_grammar_default::Get(), flags, CToken_istream::Form::kAutodetect) {}
    std::stringbuf buffer;
    CByte_streambuf units;
    CRawIstream raw;
    CToken_istream stream;
};

/// All blocks that bytes hold, up to what is no block.
inline std::vector<CBlockPtr> ReadBlocks(const std::string& bytes) {
    Bytes_in in(bytes);
    std::vector<CBlockPtr> blocks;
    while (in.stream.IsBegin()) {
        blocks.emplace_back(new CBlock());
        blocks.back()->Read(in.stream);
    }
    return blocks;
}

/// One item as the bytes of a file.
inline std::string WriteBytes(const CBlock_item& item, unsigned flags) {
    std::stringbuf buffer;
    CByte_streambuf units(buffer);
    CRawOstream raw(&units);
    CToken_ostream stream(raw, &CToken_grammar_default::Get(), flags);
    stream.SetPrecision(17);
    item.Write(stream);
    stream.Close();
    return buffer.str();
}

/// Compares trees but for what writing may change: kinds of numbers and texts, CR in texts, white
/// space around CData, and block names that carry quotes.
class Tree_compare {
public:
    /// The first difference, or nothing.
    static std::optional<std::string> Differ(const CBlock_item& a, const CBlock_item& b) {
        const bool mayHaveCData = DumpItem(a).find('<') != std::string::npos;
        const Tree_compare exact(false), trimming(true);
        if (exact.Shape(a) == exact.Shape(b) ||
            (mayHaveCData && trimming.Shape(a) == trimming.Shape(b)))
            return std::nullopt;
        return exact.Shape(a) + "\n" + exact.Shape(b);
    }

private:
    explicit Tree_compare(bool isTrimming) : mIsTrimming(isTrimming) {}

    std::string Shape(const CBlock_item& item) const {
        if (item.IsBlock()) {
            std::string shape = "{" + BlockName(item.GetNameToken());
            for (const CBlockItemPtr& child : static_cast<const CBlock&>(item))
                shape += ";" + Shape(*child);
            return shape + "}";
        }
        if (item.IsFunc()) {
            std::string shape = "(" + NameShape(item.GetNameToken());
            const auto& func = static_cast<const CBlock_func&>(item);
            for (unsigned i = 0; i < func.GetSize(); ++i)
                shape += "," + Shape(*func.GetArg(i));
            return shape + ")";
        }
        const std::string name = item.IsNamed() ? NameShape(item.GetNameToken()) : std::string();
        if (!item.IsVec())
            return name + "=" + Shape(static_cast<const CBlock_value&>(item).GetValue());
        std::string shape = "[" + name;
        for (const CToken& element : static_cast<const CBlock_vec&>(item))
            shape += " " + Shape(element);
        return shape + "]";
    }

    /// A text that reads as a number is the name that this number is; true and false are their
    /// text.
    std::string NameShape(const CToken& name) const {
        TokenKind kind = name.GetKind();
        if ((kind == TokenKind::True || kind == TokenKind::False) && name.HasText())
            return Shape(CToken(TokenKind::Keyword, name.GetText()));
        const bool mayBeNumber =
            CToken_grammar_default::Get().IsOneToken(name.GetTextView(), kind) &&
            IsNumberKind(kind);
        return Shape(mayBeNumber ? CToken_istring(name.GetText()).PeekToken() : name);
    }

    std::string BlockName(const CToken& name) const {
        TokenKind kind;
        const CBase_grammar& grammar = CToken_grammar_default::Get();
        const bool isQuoted = grammar.IsOneToken(name.GetTextView(), kind) && IsQuotedKind(kind) &&
                              !grammar.IsOneToken(name.GetText() + u' ', kind);
        if (!name.IsText())
            return "<>";
        return Shape(isQuoted ? CToken_istring(name.GetText()).PeekToken() : name);
    }

    std::string Shape(const CToken& token) const {
        if (token.IsNumber()) // -0 and 0 are one, and so are all values that are no number
            return token.GetNumber() != token.GetNumber()
                       ? "<nan>"
                       : DumpToken(CToken(TokenKind::Double, token.GetNumber() + 0.0));
        if (!token.IsText())
            return DumpToken(token);
        std::u16string text;
        char16_t last = 0;
        for (const char16_t ch : token.GetTextView()) { // a CR and CR LF come back as LF
            if (ch != u'\n' || last != u'\r')
                text += ch == u'\r' ? u'\n' : ch;
            last = ch;
        }
        const auto isBlank = [](char16_t ch) { return chars::IsSpace(ch) || chars::IsCntrl(ch); };
        while (mIsTrimming && !text.empty() && isBlank(text.back()))
            text.pop_back();
        while (mIsTrimming && !text.empty() && isBlank(text.front()))
            text.erase(0, 1);
        return "<" + DumpToken(CToken(TokenKind::Keyword, text)) + ">";
    }

    bool mIsTrimming;
};

/// Checks a tree that was read: what is written of it reads back as the same tree without an error,
/// in both forms, and writing that again gives the same bytes. What was read back from text goes to
/// binary and back as the same text, but for the digits of numbers. Returns the broken law, or
/// nothing.
inline std::optional<std::string> FindBrokenLaw(const CBlock& tree) {
    for (const unsigned flags : {0u, unsigned{kBinary}}) {
        const std::string bytes = WriteBytes(tree, flags);
        const std::vector<CBlockPtr> read = ReadBlocks(bytes);
        if (read.size() != 1 || read[0]->HasErrors(true))
            return "does not read back: " + bytes;
        if (const auto difference = Tree_compare::Differ(tree, *read[0]))
            return "reads back as another: " + *difference;
        // The quotes of a block's name are lost once, then all is settled.
        const std::string again = WriteBytes(*read[0], flags);
        const std::vector<CBlockPtr> settled = ReadBlocks(again);
        if (settled.size() != 1 || WriteBytes(*settled[0], flags) != again)
            return "writes other bytes:\n" + again;
        const std::vector<CBlockPtr> other = ReadBlocks(WriteBytes(*settled[0], flags ^ kBinary));
        if (other.size() != 1 || other[0]->HasErrors(true))
            return "is lost in the other form: " + again;
        if (const auto difference = Tree_compare::Differ(*settled[0], *other[0]))
            return "is another in the other form: " + *difference;
    }
    return std::nullopt;
}

} // namespace io::test
