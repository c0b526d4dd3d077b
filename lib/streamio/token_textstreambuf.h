/// The text form of a token stream.
#pragma once

#include <string>
#include <vector>

#include "base_grammar.h"
#include "token_streambuf.h"

namespace io {

class Text_runs;

/// Reads text by the automaton of a grammar, and writes tokens as text that the same grammar reads
/// back. See CToken_grammar for the tokens of persisted blocks.
///
/// On input a comment or a run of blanks is no token unless it is kept, a line end is always one.
/// UTF-8 is strict: an ill-formed sequence reads as the character 0, a character beyond 16 bits as
/// its two units, U+FFFF, which stands for the end of input, as U+FFFD. A surrogate without the
/// other one in the same write goes out as U+FFFD.
class QUOREL_API CToken_textstreambuf : public CToken_streambuf {
public:
    /// The grammar is not owned and must outlive the buffer. It is fit for encoding Utf8 at first.
    CToken_textstreambuf(CRawStreambuf* a_streambuf, CBase_grammar& grammar);

    void AddCommentChars(const char16_t* text) override;
    void RemoveCommentChars(const char16_t* text) override;
    void NewLine() override;
    void NewLine(AString& line) override;
    /// The grammar's comment character, a blank, the text as it stands, and the end of the line;
    /// only that end when the grammar has no comments.
    void WriteComment(std::u16string_view text) override;
    /// The text as it stands if it is one quoted token already, else in single quotes.
    void WriteQuoted(std::u16string_view text) override;
    void WriteKeyword(std::u16string_view text) override;
    void WriteSymbol(char16_t ch) override;
    void WriteDouble(const double* number, std::ios_base::fmtflags flags) override;
    void WriteFloat(const float* number, std::ios_base::fmtflags flags) override;
    void WriteUnsignedLong(const unsigned long* number, std::ios_base::fmtflags flags) override;
    void WriteLong(const long* number, std::ios_base::fmtflags flags) override;
    void WriteUnsignedInt(const unsigned* number, std::ios_base::fmtflags flags) override;
    void WriteInt(const int* number, std::ios_base::fmtflags flags) override;
    void WriteShort(const short* number, std::ios_base::fmtflags flags) override;
    /// Numbers with source text, and Keyword, WhiteSpace, Comment and Symbol go out as their text
    /// stands, quoted kinds in their quotes, other numbers formatted. Numbers without source that
    /// don't fit their kind go out as doubles; an infinity as 1e999, which reads back as one.
    void WriteToken(const CToken& token, std::ios_base::fmtflags flags) override;
    void WriteBool(const bool* value) override;
    void WriteChar(char16_t ch) override;
    /// The text as it stands if it is one token, else in single quotes.
    void WriteWord(std::u16string_view text) override;
    void PushIndent(int count, char16_t fill) override;
    void PopIndent() override;
    int GetIndentDepth() const override { return static_cast<int>(mIndentStack.size()); }
    AString GetIndent() const override { return mIndent; }
    void EndLine(bool force) override;
    int SetPrecision(int precision) override { return std::exchange(mPrecision, precision); }
    int SetWidth(int width) override { return std::exchange(mWidth, width); }
    bool SetHex(bool isHex) override { return std::exchange(mHex, isHex); }
    char16_t SetFill(char16_t fill) override { return std::exchange(mFill, fill); }
    void NewState(CAbstract_stream_pos& pos) const override;
    void SaveState(CAbstract_stream_pos& pos) const override;
    void RestoreState(const CAbstract_stream_pos& pos) override;
    const CToken* ReadToken() override;
    void WriteUnsignedShort(const unsigned short* number, std::ios_base::fmtflags flags) override;

    CBase_grammar& GetGrammar() const noexcept { return *mGrammar; }
    /// Input: number, true and false tokens keep the text that they were written as.
    bool SetKeepText(bool isKept) { return SetForReading(mKeepText, isKept); }
    bool GetKeepText() const noexcept { return mKeepText; }

private:
    friend class Text_runs;

    // --- Input of characters ---

    std::uint32_t Peek();
    void Advance();
    std::uint32_t PeekSequence();
    void ConsumeUnit();
    std::streamoff CountPushedBack() const noexcept;
    void SkipLine(AString* line);

    // --- Input of tokens. The automaton reads any token, a handler for each state entered; true
    // ends the token. ReadAhead is a faster way for the usual tokens, as many as the raw stream has
    // buffered; false leaves the next token to the automaton. ---

    bool ReadAhead();
    CToken MakeNumber(TokenKind kind, std::u16string_view text);

    void ReadByStates();
    /// True when what a state reads is to be dropped.
    bool IsDropped(unsigned state) const noexcept {
        return (state == kStateComment && !mKeepComments) ||
               (state == kStateWhiteSpace && !mKeepWhiteSpace);
    }
    void AppendRun();
    template <bool isUtf8>
    void AppendRunOf();
    std::uint32_t FoldCase(std::uint32_t ch) const;
    bool IsFolding() const noexcept { return mCaseMode <= CaseMode::Lower; }
    TokenKind GetWordKind(std::u16string_view word) const;
    bool IsBeginCData(std::u16string_view word) const;
    bool AppendAndAdvance(std::uint32_t ch);
    bool Finish(TokenKind kind);
    bool FinishNumber(TokenKind kind);
    bool DropToken();
    bool ReturnToCData();
    void PushBackLast(std::size_t count);

#define IO_STATE_HANDLER_MEMBER(name) bool Handle##name();
    IO_STATE_HANDLERS(IO_STATE_HANDLER_MEMBER)
#undef IO_STATE_HANDLER_MEMBER
    static bool (CToken_textstreambuf::*const kHandlers[])(); ///< by StateHandler

    // --- Output ---

    bool NeedsBlank(TokenKind previousKind, char16_t lastChar, TokenKind newKind,
                    char16_t firstChar) const;
    void Separate(TokenKind previousKind, char16_t lastChar, TokenKind newKind, char16_t firstChar);
    bool TakeRoom(std::size_t count, char16_t allBits, char16_t last);
    void PutUtf8(std::u16string_view text);
    void PutSlowly(std::u16string_view text);
    void Put(std::u16string_view text);
    void Put(char16_t ch);
    void PutToken(std::u16string_view text, TokenKind kind);
    bool PutPlainQuoted(std::u16string_view text, char16_t quote);
    void PutQuoted(std::u16string_view text, char16_t quote, TokenKind kind);
    bool CanBeCData(std::u16string_view text) const;
    void PutCData(std::u16string_view text);
    void PutSource(const CToken& token);
    void PutNumberToken(const CToken& token, std::ios_base::fmtflags flags);
    template <class Number>
    void PutNumber(Number number, TokenKind kind, std::ios_base::fmtflags flags);

    CBase_grammar* mGrammar;
    bool mKeepText = false;
    std::uint32_t mChar = 0; ///< the current input character
    AString mText;           ///< the text of the token being built
    unsigned mState = 0;
    unsigned mNextState = 0;
    std::size_t mCDataCursor = 0; ///< characters of mEndCData that match so far
    AString mNumberText;          ///< scratch for numbers written
    std::string mSource;          ///< scratch for numbers read
    int mPrecision = -1;
    int mWidth = -1;
    char16_t mFill = u' ';
    bool mHex = false;
    std::vector<int> mIndentStack;
    AString mIndent;
};

} // namespace io
