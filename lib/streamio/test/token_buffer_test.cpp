// What both forms share: current token, pushback, lines, search, states and positions.
#include <gtest/gtest.h>

#include "block_func.h"
#include "token_binarystreambuf.h"
#include "token_dump.h"

namespace io::test {
namespace {

/// A text buffer over a string.
struct Text {
    explicit Text(std::u16string_view text)
        : raw(std::u16string(text)), buffer(&raw, CToken_grammar_default::Get()) {
        buffer.SetEncoding(StreamEncoding::Utf16);
        buffer.SetKeepText(true);
    }
    std::string Next() { return Show(buffer.NextToken()); }
    std::string Peek() const { return Show(buffer.PeekToken()); }
    /// The raw position at which the current token begins.
    std::streamoff Start() { return buffer.TellRaw() - buffer.GetTokenDistance(); }
    CString_streambuf raw;
    CToken_textstreambuf buffer;
};

TEST(TokenBuffer, PushesBackTokens) {
    Text text(u"a b\nc");
    EXPECT_EQ(text.Peek(), "Null");
    EXPECT_EQ(text.Next(), "Keyword(a)");
    EXPECT_TRUE(text.buffer.IsAtLineStart());
    const CToken a = text.buffer.PeekToken();
    EXPECT_EQ(text.Next(), "Keyword(b)");
    EXPECT_FALSE(text.buffer.IsAtLineStart());
    text.buffer.PushBackToken(CToken(TokenKind::Eol));
    text.buffer.PushBackToken(a);
    EXPECT_EQ(text.Peek(), "Keyword(a)");
    EXPECT_EQ(text.Next(), "Eol");
    EXPECT_FALSE(text.buffer.IsAtLineStart());
    EXPECT_EQ(text.Next(), "Keyword(b)");
    EXPECT_TRUE(text.buffer.IsAtLineStart());
    for (int i = 0; i < kMaxTokenPushBack + 3; ++i)
        text.buffer.PushBackToken(a); // those beyond the stack are dropped
    for (int i = 0; i < kMaxTokenPushBack - 1; ++i)
        EXPECT_EQ(text.Next(), "Keyword(a)");
    EXPECT_EQ(text.Next(), "Keyword(b)");
    EXPECT_EQ(text.Next(), "Eol");
    EXPECT_EQ(text.Next(), "Keyword(c)");
    EXPECT_EQ(text.Next(), "Eof");
    EXPECT_EQ(text.Next(), "Eof");
}

TEST(TokenBuffer, KnowsLineAndPlaceOfTheCurrentToken) {
    Text text(u"a 'b\\\nc'\n\n  ! note\n 1e $begin x\n");
    const struct {
        std::string_view token;
        int line;
        std::streamoff start;
    } rows[] = {{"Keyword(a)", 1, 0},  {"SingleQuotedText(b{a}c)", 1, 2},
                {"Eol", 1, 8},         {"Eol", 2, 9},
                {"Eol", 3, 18},        {"Double(1|1)", 4, 20},
                {"Keyword(e)", 4, 21}, {"Keyword($begin)", 4, 23},
                {"Keyword(x)", 4, 30}, {"Eol", 4, 31},
                {"Eof", 5, 32}};
    std::vector<CToken> read;
    for (const auto& row : rows) {
        EXPECT_EQ(text.Next(), row.token);
        EXPECT_EQ(text.buffer.GetTokenLine(), row.line) << row.token;
        EXPECT_EQ(text.Start(), row.start) << row.token;
        read.push_back(text.buffer.PeekToken());
    }
    for (std::size_t i = read.size() - 1; i > 4; --i) {
        text.buffer.PushBackToken(read[i - 1]);
        EXPECT_EQ(text.buffer.GetTokenLine(), rows[i - 1].line) << rows[i - 1].token;
        EXPECT_EQ(text.Start(), rows[i - 1].start) << rows[i - 1].token;
    }
}

TEST(TokenBuffer, SkipsLines) {
    Text text(u"a b 'c\nd\r\ne\rf\ng");
    text.Next();
    AString line;
    text.buffer.NewLine(line);
    EXPECT_EQ(Show(line), " b 'c");
    EXPECT_EQ(text.Peek(), "Keyword(d)");
    EXPECT_TRUE(text.buffer.IsAtLineStart());
    EXPECT_EQ(text.buffer.GetTokenLine(), 2);
    text.buffer.NewLine();
    line.clear();
    text.buffer.NewLine(line); // a lone CR doesn't end it
    EXPECT_EQ(Show(line), "{d}f");
    EXPECT_EQ(text.Peek(), "Keyword(g)");
    EXPECT_EQ(text.buffer.GetTokenLine(), 4);
    text.buffer.NewLine();
    EXPECT_EQ(text.Peek(), "Eof");
}

/// Tokens pushed back belong to the line that is skipped.
TEST(TokenBuffer, SkipsWhatWasPushedBack) {
    Text text(u"a b c\nd e\nf\ng");
    const CToken a = text.buffer.NextToken();
    text.Next();
    text.buffer.PushBackToken(a);
    AString line;
    text.buffer.NewLine(line);
    EXPECT_EQ(Show(line), "b c");
    EXPECT_EQ(text.Peek(), "Keyword(d)");
    const CToken d = text.buffer.PeekToken(), e = text.buffer.NextToken();
    text.Next();
    text.buffer.PushBackToken(e);
    text.buffer.PushBackToken(d);
    text.buffer.NewLine(); // the line end has been read
    EXPECT_EQ(text.Peek(), "Keyword(f)");
    const CToken f = text.buffer.PeekToken(), eol = text.buffer.NextToken();
    text.Next();
    text.buffer.PushBackToken(eol);
    text.buffer.PushBackToken(f);
    text.buffer.NewLine();
    EXPECT_EQ(text.Peek(), "Keyword(g)");
    EXPECT_TRUE(text.buffer.IsAtLineStart());
}

TEST(TokenBuffer, GoesBackToAPosition) {
    Text text(u"a b\n\"c\" d e");
    text.Next();
    const CToken a = text.buffer.PeekToken();
    text.Next();
    text.Next();
    text.Next();
    text.buffer.PushBackToken(a);
    CAbstract_stream_pos pos(text.buffer.TellRaw());
    text.buffer.SaveState(pos);
    const CAbstract_stream_pos copy = pos;
    EXPECT_EQ(copy.GetState()->GetLine(), 2);
    EXPECT_FALSE(copy.GetState()->IsCleanPosition());
    EXPECT_EQ(text.Next(), "DoubleQuotedText(c)");
    EXPECT_EQ(text.Next(), "Keyword(d)");
    text.buffer.GetRaw().pubseekpos(copy.mPos, std::ios_base::in);
    text.buffer.RestoreState(copy);
    EXPECT_EQ(text.Peek(), "Keyword(a)");
    EXPECT_EQ(text.buffer.GetLine(), 2);
    EXPECT_EQ(text.Next(), "DoubleQuotedText(c)");
    EXPECT_EQ(text.Next(), "Keyword(d)");

    text.buffer.GetRaw().pubseekpos(0, std::ios_base::in);
    text.buffer.RestoreState(CAbstract_stream_pos(0));
    EXPECT_EQ(text.Next(), "Keyword(a)");
    EXPECT_EQ(text.buffer.GetTokenLine(), 1);
}

/// Output states keep the indent; what index entries hold of a state comes back.
TEST(TokenBuffer, StatesGoIntoIndexEntries) {
    Text text(u"");
    text.buffer.PushIndent(2, u' ');
    text.buffer.EndLine(true);
    CAbstract_stream_pos pos(0), other(0);
    text.buffer.SaveState(pos);
    EXPECT_TRUE(pos.GetState()->IsCleanPosition());
    EXPECT_FALSE(pos.GetState()->IsTopLevel()); // an indent is open
    pos.GetState()->mLevel = 3;
    CBlock_func entry;
    pos.GetState()->WriteTo(entry);
    ASSERT_EQ(entry.GetSize(), 2U);
    text.buffer.NewState(other);
    EXPECT_TRUE(other.GetState()->IsTopLevel());
    other.GetState()->Rebase(other, pos);
    EXPECT_EQ(other.GetState()->GetLine(), 2);
    other.GetState()->ReadFrom(entry);
    EXPECT_EQ(other.GetState()->mLevel, 3U);
    EXPECT_EQ(other.GetState()->GetLine(), 2);
    text.buffer.PopIndent();
    text.buffer.RestoreState(pos);
    EXPECT_EQ(text.buffer.GetIndentDepth(), 1);

    CToken_binarystreambuf binary(&text.raw);
    binary.SaveState(pos);
    CBlock_func binaryEntry;
    pos.GetState()->WriteTo(binaryEntry);
    EXPECT_EQ(binaryEntry.GetSize(), 1U); // the level alone
}

} // namespace
} // namespace io::test
