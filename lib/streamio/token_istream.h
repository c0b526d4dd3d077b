/// Input of tokens and blocks through a token buffer.
#pragma once

#include <locale>
#include <memory>

#include "abstract_istream.h"
#include "token_grammar.h"
#include "token_streambuf.h"

namespace io {

/// Reads any standard stream of 16-bit units: text in UTF-8, a byte a unit, or the binary form. The
/// raw stream is neither owned nor closed; it stands behind the tokens that have been read, one
/// ahead.
class QUOREL_API CToken_istream : public CAbstract_istream {
public:
    /// How the form is found out.
    enum class Form {
        kGiven,     ///< binary without a grammar or with kBinary, else text
        kAutodetect ///< binary if the first unit is 0, text if it is another one
    };

    /// A grammar must outlive the stream. With a locale, text is read a character a unit. With
    /// kReadIndex an index at the stream's start is read first; one that can't be read is as good
    /// as none; with kCheckIndex it fails the stream, as does one that doesn't fit the blocks.
    explicit CToken_istream(CRawIstream& stream,
                            CBase_grammar* grammar = &CToken_grammar_default::Get(),
                            unsigned flags = 0, Form form = Form::kGiven,
                            const std::locale* locale = nullptr);
    ~CToken_istream() override;

    void Close() override;
    bool IsBinary() const override;
    /// Replaces the index by one of the blocks from the current token on, which stays current.
    /// False if anything there is no sound block; the entries made stay.
    bool BuildIndex(unsigned flags) override;

    bool ReadLine(AString& line) override;
    void SkipLine() override;
    bool ReadEol() override;
    void Next() override;
    void PopLevel() override;
    void PushLevel(int width) override;
    bool ReadBegin(CToken& name) override;
    bool ReadBegin(AString& name) override;
    bool ReadBegin(std::u16string_view text) override;
    bool ReadBegin() override;
    bool ReadEnd(CToken& name) override;
    bool ReadEnd(AString& name) override;
    bool ReadEnd(std::u16string_view text) override;
    bool ReadEnd() override;
    unsigned SetFloatFlag(unsigned flags) override;
    bool ReadKeyword(AString& word) override;
    bool ReadKeyword(std::u16string_view text) override;
    bool ReadValue(CToken& value) override;
    bool ReadValue(AString& text) override;
    bool ReadValue(std::u16string_view text) override;
    bool ReadComment(AString& comment) override;
    bool ReadComment(std::u16string_view text) override;
    bool ReadSymbol(char16_t ch) override;
    bool SetBeginWord(std::u16string_view word) override;
    bool SetEndWord(std::u16string_view word) override;
    void NewState(CAbstract_stream_pos& pos) const override;
    void SaveState(CAbstract_stream_pos& pos) const override;
    void RestoreState(const CAbstract_stream_pos& pos) override;
    bool Good() const override { return mGood; }
    bool Eof() const override;
    bool Fail() const override { return !mGood; }
    bool Bad() const override;
    int SetCaseMode(int mode) override;
    const CToken& PeekToken() override { return mTokenStreamBuf->PeekToken(); }
    int GetLine() const override { return mTokenStreamBuf->GetLine(); }
    bool IsKeyword() override;
    bool IsKeyword(std::u16string_view text) override;
    bool IsBegin(std::u16string_view text) override;
    bool IsBegin() override { return AtBegin(); }
    bool IsEnd(std::u16string_view text) override;
    bool IsEnd() override { return AtEnd(); }
    bool IsValue() override { return AtValue(); }
    bool IsValue(std::u16string_view text) override;
    bool IsComment() override;
    bool IsComment(std::u16string_view text) override;
    bool IsSymbol() override;
    bool IsSymbol(char16_t ch) override { return AtSymbol(ch); }
    bool IsEol() override;
    bool IsAtEof() override { return AtEof(); }
    bool IsNumber() override;
    bool IsNumber(double number) override;
    bool FindKeyword(std::u16string_view text) override;
    bool FindSymbol(char16_t ch) override;
    bool FindValue(std::u16string_view text) override;
    bool FindBegin(std::u16string_view text) override;
    bool FindEnd(std::u16string_view text) override;
    bool FindKeywordAtLineStart(std::u16string_view text) override;
    bool FindSymbolAtLineStart(char16_t ch) override;
    bool FindValueAtLineStart(std::u16string_view text) override;
    bool SetSkipOnFail(bool isOn) override { return std::exchange(mSkipOnFail, isOn); }
    bool ClearSkipOnFail() override { return SetSkipOnFail(false); }
    bool SetStopOnFail(bool isOn) override { return std::exchange(mStopOnFail, isOn); }
    bool ClearStopOnFail() override { return SetStopOnFail(false); }
    void Clear() override { mGood = true; }
    void SetFail() override { mGood = false; }
    bool SetSkipEol(bool isOn) override { return std::exchange(mSkipEol, isOn); }
    bool ClearSkipEol() override { return SetSkipEol(false); }
    CAbstract_istream& Apply(CAbstract_istream& (*manipulator)(CAbstract_istream&)) override;
    bool Read(AString& text) override;
    bool Read(CToken& token) override;
    bool Read(double& value) override;
    bool Read(float& value) override;
    bool Read(unsigned long& value) override;
    bool Read(long& value) override;
    bool Read(unsigned int& value) override;
    bool Read(int& value) override;
    bool Read(unsigned short& value) override;
    bool Read(short& value) override;
    bool Read(bool& value) override;
    void PushBack(const CToken& token) override { mTokenStreamBuf->PushBackToken(token); }

    CToken_streambuf& GetTokenStreambuf() const noexcept { return *mTokenStreamBuf; }
    CBase_grammar* GetGrammar() const noexcept { return mGrammar; }
    /// The line of the current token; of a line end, the line that it ends.
    int GetTokenLine() const noexcept { return mTokenStreamBuf->GetTokenLine(); }

protected:
    /// Whether the raw stream is a string, so that a unit is a character.
    enum class Raw { kBytes, kString };
    CToken_istream(CRawIstream& stream, std::unique_ptr<CBase_grammar> owned,
                   CBase_grammar* grammar, unsigned flags, Form form, const std::locale* locale,
                   Raw raw);

    std::streamoff TellRaw() const override;
    bool SeekRaw(std::streamoff pos) override;

private:
    friend class Block_reader;

    // The tests themselves, for callers that have no time for virtual calls.

    /// What all tests and reads begin with: false if the stream has failed and stops there;
    /// otherwise it is good, and on a token behind any line ends.
    bool Prepare() {
        return PrepareRaw() && (!mSkipEol || Peek().GetKind() != TokenKind::Eol || SkipEols());
    }
    bool PrepareRaw() {
        if (mStopOnFail && !mGood)
            return false;
        mGood = true;
        return Peek().GetKind() != TokenKind::Null || ReadFirst();
    }
    bool ReadFirst();
    bool SkipEols();
    void SkipEolsIfSet() {
        if (mSkipEol)
            SkipEols();
    }
    const CToken& Peek() const { return mTokenStreamBuf->PeekToken(); }
    void Step() { mTokenStreamBuf->NextToken(); }
    void TakeToken(CToken& token) { mTokenStreamBuf->TakeToken(token); }
    std::span<CToken_batch::Entry> PeekAhead() const { return mTokenStreamBuf->PeekAhead(); }
    void StepOver(std::size_t count) { mTokenStreamBuf->StepOver(count); }
    bool AtSymbol(char16_t ch) { return Prepare() && Peek().GetSymbol() == ch && ch != 0; }
    bool AtEof() { return Prepare() && Peek().GetKind() == TokenKind::Eof; }
    bool AtValue() { return Prepare() && IsValueToken(Peek()); }
    bool AtBegin() {
        return Prepare() &&
               (mBeginWord.empty() ? IsValueToken(Peek())
                                   : IsWord(mBeginKind, mBeginWord) && IsValueBehind());
    }
    bool AtEnd() { return Prepare() && IsEndHere(); }
    // The same behind Prepare, for a reader that takes the word at once.
    bool IsBeginHere() {
        return mBeginWord.empty() ? IsValueToken(Peek())
                                  : IsWord(mBeginKind, mBeginWord) && IsValueAhead();
    }
    bool IsEndHere() const {
        return mEndWord.empty() ? IsValueToken(Peek()) : IsWord(mEndKind, mEndWord);
    }
    static bool IsValueToken(const CToken& token);
    /// True when the current token is that word.
    bool IsWord(TokenKind kind, const AString& word) const {
        return Peek().MayBe(kind, word.size()) && IsWordHere(word);
    }
    bool IsWordHere(const AString& word) const;
    bool IsSameWord(std::u16string_view a, std::u16string_view b) const {
        return mTokenStreamBuf->IsSameWord(a, b);
    }
    /// True when the token behind the current one is a value, of that text if it is given. The
    /// current one is pushed back.
    bool IsValueBehind(const std::u16string_view* text = nullptr);
    /// The same, mostly without pushing back.
    bool IsValueAhead();
    bool IsOfKind(TokenKind kind);
    bool IsThisText(std::u16string_view text) const;

    bool Accept(bool isMatch);
    bool AcceptText(bool isMatch, AString& text);
    template <class T>
    bool ReadNumber(T& value);
    void TakeBegin(CToken& name);
    template <class Search>
    bool Find(Search search);
    bool FindInBlock(std::u16string_view text, bool isBegin);
    void SkipBlock();

    friend class Index_scan;
    CAbstract_stream_pos TokenPos() const;
    bool GoToStart();
    bool ReadStoredIndex();
    bool LoadStoredIndex();
    bool BeginsWithIndex();
    bool IsBeginOfPath(std::u16string_view path);
    bool CheckIndex(bool isWhole);
    bool CheckEntries(bool isWhole);

    CBase_grammar* mGrammar;
    std::unique_ptr<CBase_grammar> mOwnedGrammar;
    std::unique_ptr<CToken_streambuf> mTokenStreamBuf;
    bool mSkipOnFail = false;
    bool mStopOnFail = true;
    bool mSkipEol = true;
    TokenKind mBeginKind = TokenKind::Keyword;
    TokenKind mEndKind = TokenKind::Keyword;
};

} // namespace io
