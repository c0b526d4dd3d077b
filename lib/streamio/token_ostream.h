/// Output of tokens and blocks through a token buffer.
#pragma once

#include <locale>
#include <memory>

#include "abstract_ostream.h"
#include "token_grammar.h"
#include "token_streambuf.h"

namespace io {

/// Writes to any standard stream of 16-bit units: text in UTF-8, a byte a unit, or the binary form.
/// Closes when it is destroyed; the raw stream is neither owned nor closed.
class QUOREL_API CToken_ostream : public CAbstract_ostream {
public:
    /// A null grammar stands for the binary form, as does kBinary. A grammar must outlive the
    /// stream. With a locale, text is written a character a unit.
    explicit CToken_ostream(CRawOstream& stream,
                            CBase_grammar* grammar = &CToken_grammar_default::Get(),
                            unsigned flags = 0, const std::locale* locale = nullptr);
    ~CToken_ostream() override;

    void Close() override;
    bool IsBinary() const override;
    /// Only at the start of the raw stream, which must be able to tell and to seek; true again
    /// while an index is being built.
    bool BuildIndex(unsigned flags) override;

    void WriteRawLine(std::u16string_view text) override;
    void NewLine() override;
    void EndLine() override;
    void Next() override;
    void PopLevel() override;
    void PushLevel(int width) override;
    void BeginBlock(const CToken& name) override;
    void BeginBlock(std::u16string_view name) override;
    void BeginBlock() override;
    void EndBlock(const CToken& name) override;
    void EndBlock(std::u16string_view name) override;
    void EndBlock() override;
    unsigned SetFloatFlag(unsigned flags) override;
    void WriteKeyword(std::u16string_view text) override;
    void WriteQuoted(const CToken& token) override;
    void WriteQuoted(std::u16string_view text) override;
    void WriteComment(std::u16string_view text) override;
    void WriteSymbol(char16_t ch) override;
    int SetPrecision(int precision) override;
    int SetWidth(int width) override;
    bool SetHex(bool isHex) override;
    char16_t SetFill(char16_t fill) override;
    void NewState(CAbstract_stream_pos& pos) const override;
    void SaveState(CAbstract_stream_pos& pos) const override;
    void RestoreState(const CAbstract_stream_pos& pos) override;
    bool Good() const override;
    bool Eof() const override;
    bool Fail() const override;
    bool Bad() const override;
    int GetLine() const override;
    bool SetAutoBlank(const bool* isOn) override;
    void WriteRaw(std::u16string_view text) override;
    CAbstract_ostream& Apply(CAbstract_ostream& (*manipulator)(CAbstract_ostream&)) override;
    void Write(const CToken& token) override;
    void Write(std::u16string_view text) override;
    void Write(double value) override;
    void Write(float value) override;
    void Write(unsigned long value) override;
    void Write(long value) override;
    void Write(unsigned int value) override;
    void Write(int value) override;
    void Write(short value) override;
    void Write(char16_t value) override;
    void Write(const char16_t* text) override;
    void Write(bool value) override;
    AString GetIndent() const override;

    std::ios_base::fmtflags GetFormatFlags() const { return mStream->flags(); }
    CToken_streambuf& GetTokenStreambuf() const noexcept { return *mTokenStreamBuf; }
    /// The grammar of a text stream; null for a binary one.
    CBase_grammar* GetGrammar() const noexcept { return mGrammar; }
    /// Whether block names go out quoted, or as words; returns the old value.
    bool SetQuoteBlockNames(bool isOn) noexcept { return std::exchange(mQuoteBlockNames, isOn); }
    /// True for the begin and the end word, in any mix of cases.
    bool IsBlockWord(std::u16string_view text) const noexcept;

protected:
    /// Whether the raw stream is a string, so that a unit is a character.
    enum class Raw { kBytes, kString };
    CToken_ostream(CRawOstream& stream, CBase_grammar* grammar, unsigned flags,
                   const std::locale* locale, Raw raw);

    std::streamoff TellRaw() const override;
    bool SeekRaw(std::streamoff pos) override;

private:
    void WriteBlockWord(const AString& word, std::u16string_view name, bool isNamed);
    void WriteBlockName(std::u16string_view name);
    bool HasOpenQuote(std::u16string_view text) const;
    void EnterBlock(std::u16string_view name, bool isNamed);
    void LeaveBlock(std::u16string_view name, bool isNamed);
    AString GetNameReadBack(std::u16string_view name) const;
    void NoteBlockBegin(std::u16string_view name);
    CAbstract_stream_pos BeginPos() const;
    void WriteBaseIndex(const CAbstract_stream_pos& index);
    void FinishIndex();
    std::streamoff GetStartPos() const { return IsBinary() ? 1 : 0; }

    CBase_grammar* mGrammar;
    std::unique_ptr<CToken_streambuf> mTokenStreamBuf;
    bool mQuoteBlockNames = true;
    /// As they were when the base index was written first: they decide its size.
    AString mIndexBeginWord, mIndexEndWord;
    char16_t mIndexIndentChar = u'\t';
    bool mIndexCrLf = false;
};

} // namespace io
