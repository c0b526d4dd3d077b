/// The common part of token buffers, which sit between a raw character stream and a token stream.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <ios>
#include <locale>
#include <span>
#include <streambuf>
#include <string_view>
#include <utility>

#include "astring.h"
#include "char_classes.h"
#include "quorel_export.h"
#include "stream_state.h"
#include "token.h"
#include "token_text_store.h"

namespace io {

/// A raw stream: 16-bit units, each a character or a byte.
using CRawStreambuf = std::basic_streambuf<char16_t>;

/// How raw units stand for text.
enum class StreamEncoding : int {
    Locale = 0,      ///< a unit is a character; the locale of the buffer holds while reading
    Utf8 = 1,        ///< UTF-8, a byte a unit
    Utf16 = 2,       ///< a unit is a 16-bit character
    BinaryBytes = 3, ///< the binary form, a byte a unit
    BinaryString = 4 ///< the same over a 16-bit string
};

/// How identifiers and hexadecimal numbers are read and words are compared.
enum class CaseMode : int {
    Upper = 0,     ///< folded to upper case on input; compared without case
    Lower = 1,     ///< folded to lower case on input; compared without case
    Sensitive = 2, ///< kept, and compared with case
    Ignore = 3     ///< kept, and compared without case
};

/// A batch of tokens, read at one go from units that the raw stream has not moved past yet.
struct CToken_batch {
    static constexpr unsigned kMost = 64;
    static constexpr unsigned kFirst = 16;
    struct Entry {
        CToken token;
        const char16_t* start; ///< the units that it was read from
        const char16_t* stop;
    };
    Entry entries[kMost];
    const char16_t* begin = nullptr; ///< where the raw stream stands
    unsigned next = 0;               ///< the entry in front of it is the current token
    unsigned count = 0;
    int lines = 0;           ///< line ends among all of them
    std::uint64_t texts = 0; ///< bit i is set when entry i was read with a text outside of it
    unsigned most = kFirst;  ///< to read next time; doubles as long as none is read in vain
    bool startsLine = false; ///< whether the first entry does
};
static_assert(CToken_batch::kMost <= 64); // bits of texts

/// Turns a raw stream into tokens and back. Owns the current token, the pushback stacks and the
/// line number; neither the raw stream nor anything else. One thread at a time.
///
/// Reading: `PeekToken` is the current token, `NextToken` goes on to the next one; a fresh buffer
/// stands on a Null token in front of the first. At the end of the input tokens are Eof for ever.
/// Tokens may be read ahead; nobody can tell, but for where the raw stream stands: ask TellRaw
/// for that, and use GetRaw to read or move it. The grammar must be changed through the buffer.
/// Writing: each operation writes one token. A raw stream that fails or ends while writing loses
/// what is written, and HasFailed tells so.
class QUOREL_API CToken_streambuf {
public:
    /// A null pointer is asserted; the buffer is then one over an empty stream that takes nothing.
    CToken_streambuf(CRawStreambuf* a_streambuf, StreamEncoding encoding);

    // --- Virtual operations, in slot order ---

    virtual ~CToken_streambuf();

    /// Forwarded to the grammar; nothing in the binary form.
    virtual void AddCommentChars(const char16_t* text) = 0;
    virtual void RemoveCommentChars(const char16_t* text) = 0;

    /// Skips the rest of the line that the current token stands on, tokens pushed back included,
    /// and reads the first token of the next one. On a line end that is the last token read, the
    /// text form skips the line behind it, the binary form that line end alone.
    virtual void NewLine() = 0;
    /// The same, and appends the characters skipped to `line`.
    virtual void NewLine(AString& line) = 0;

    virtual void WriteComment(std::u16string_view text) = 0;
    virtual void WriteQuoted(std::u16string_view text) = 0;
    virtual void WriteKeyword(std::u16string_view text) = 0;
    virtual void WriteSymbol(char16_t ch) = 0;

    /// Write the number pointed at. Of the flags the text form heeds the float, base and adjust
    /// fields, showpos, showbase, showpoint and uppercase, as a standard stream does.
    virtual void WriteDouble(const double* number, std::ios_base::fmtflags flags) = 0;
    virtual void WriteFloat(const float* number, std::ios_base::fmtflags flags) = 0;
    virtual void WriteUnsignedLong(const unsigned long* number, std::ios_base::fmtflags flags) = 0;
    virtual void WriteLong(const long* number, std::ios_base::fmtflags flags) = 0;
    virtual void WriteUnsignedInt(const unsigned* number, std::ios_base::fmtflags flags) = 0;
    virtual void WriteInt(const int* number, std::ios_base::fmtflags flags) = 0;
    virtual void WriteShort(const short* number, std::ios_base::fmtflags flags) = 0;

    virtual void WriteToken(const CToken& token, std::ios_base::fmtflags flags) = 0;
    virtual void WriteBool(const bool* value) = 0;
    virtual void WriteChar(char16_t ch) = 0;
    virtual void WriteWord(std::u16string_view text) = 0;

    /// One more level of indent, `count` times `fill`. A negative count is none.
    virtual void PushIndent(int count, char16_t fill) = 0;
    /// One level less; nothing when there is none.
    virtual void PopIndent() = 0;
    virtual int GetIndentDepth() const = 0;
    virtual AString GetIndent() const = 0;

    /// Ends the line; unless `force`, only if something stands on it.
    virtual void EndLine(bool force) = 0;

    /// Format of the numbers that follow; each returns the old value. A negative precision or width
    /// leaves the stream's default of 6 significant digits, or no least width.
    virtual int SetPrecision(int precision) = 0;
    virtual int SetWidth(int width) = 0;
    virtual bool SetHex(bool isHex) = 0;
    virtual char16_t SetFill(char16_t fill) = 0;

    /// Gives `pos` a fresh state of this buffer's class, that of a stream's start.
    virtual void NewState(CAbstract_stream_pos& pos) const;
    /// Gives `pos` a fresh state and copies this buffer's fields into it.
    virtual void SaveState(CAbstract_stream_pos& pos) const;
    /// Takes the fields back. Without a state, or with one of another class: those of a stream's
    /// start.
    virtual void RestoreState(const CAbstract_stream_pos& pos);

    /// Reads one token, makes it the current one but for those pushed back, and returns it.
    virtual const CToken* ReadToken() = 0;

    virtual void WriteUnsignedShort(const unsigned short* number,
                                    std::ios_base::fmtflags flags) = 0;

    // --- The current token ---

    /// The current token: the one pushed back last, else the one read last.
    const CToken& PeekToken() const noexcept {
        return mTokenPushBack.IsEmpty() ? *mCurrent : mTokenPushBack.Top();
    }
    /// Goes on to the next token and returns it.
    const CToken& NextToken() {
        if (!mTokenPushBack.IsEmpty())
            return PopToken();
        return mBatch.next != mBatch.count ? TakeFromBatch() : ReadNext();
    }
    /// Moves the current token into `token` and goes on to the next one.
    void TakeToken(CToken& token) {
        if (mTokenPushBack.IsEmpty())
            token.Take(*mCurrent);
        else
            token = mTokenPushBack.Top();
        NextToken();
    }
    /// The current token and those behind it, as far as they have been read side by side; often
    /// none. They may be moved from, and stay until anything else is asked of the buffer.
    std::span<CToken_batch::Entry> PeekAhead() noexcept {
        if (mCurrent == &mToken || !mTokenPushBack.IsEmpty())
            return {};
        return {mBatch.entries + mBatch.next - 1, mBatch.entries + mBatch.count};
    }
    /// Goes on by so many tokens, fewer than PeekAhead gives.
    void StepOver(std::size_t count) noexcept {
        mBatch.next += static_cast<unsigned>(count) - 1;
        TakeFromBatch();
    }
    /// Puts a token in front of the current one. More than kMaxTokenPushBack are asserted and
    /// dropped.
    void PushBackToken(const CToken& token);

    /// True when the current token is the first of its line.
    bool IsAtLineStart() const noexcept;
    /// The line at which reading or writing stands: behind the last token read.
    int GetLine() const noexcept { return mLine + CountBatchLines(); }
    void SetLine(int line) noexcept { mLine = line - CountBatchLines(); }
    /// The line of the current token; of a line end, the line that it closes.
    int GetTokenLine() const noexcept;
    /// Raw units from the first unit of the current token to where the raw stream stands; the raw
    /// position less this is where reading that token anew begins. 0 while nothing has been read,
    /// and for tokens pushed back that weren't the last ones read.
    std::streamoff GetTokenDistance() const noexcept;

    // --- Search: from the current token on until one matches and is the current one. False at Eof.
    // Words compare as the case mode says; an empty text equals an empty text. ---

    bool FindToken(TokenKind kind, std::u16string_view text);
    bool FindTokenAtLineStart(TokenKind kind, std::u16string_view text);
    bool FindText(std::u16string_view text);
    bool FindTextAtLineStart(std::u16string_view text);
    /// True when two words are equal under the case mode.
    bool IsSameWord(std::u16string_view a, std::u16string_view b) const noexcept {
        return mCaseMode == CaseMode::Sensitive ? a == b : IsNoCaseWord(a, b);
    }
    static bool IsNoCaseWord(std::u16string_view a, std::u16string_view b) noexcept {
        return a.size() == b.size() && IsNoCaseUnits(a, b);
    }

    // --- Settings; setters return the old value ---

    bool SetKeepComments(bool isKept) { return SetForReading(mKeepComments, isKept); }
    bool SetKeepWhiteSpace(bool isKept) { return SetForReading(mKeepWhiteSpace, isKept); }
    CaseMode GetCaseMode() const noexcept { return mCaseMode; }
    CaseMode SetCaseMode(CaseMode mode) { return SetForReading(mCaseMode, mode); }
    bool GetAutoBlank() const noexcept { return mAutoBlank; }
    /// Output: blanks between tokens, and quotes around quoted text.
    bool SetAutoBlank(bool isOn) noexcept { return std::exchange(mAutoBlank, isOn); }
    StreamEncoding GetEncoding() const noexcept { return mEncoding; }
    void SetEncoding(StreamEncoding encoding) { SetForReading(mEncoding, encoding); }
    /// Sets a locale for reading, and encoding Locale.
    void SetLocale(const std::locale& locale);
    bool GetCrLf() const noexcept { return mCrLf; }
    /// Output: lines end with CR LF.
    bool SetCrLf(bool isCrLf) noexcept { return std::exchange(mCrLf, isCrLf); }

    /// The raw stream, standing behind the last token read.
    CRawStreambuf& GetRaw() {
        Settle();
        return *mTokenStreamBuf;
    }
    /// Where it stands then, without losing what was read ahead; -1 if it can't tell.
    std::streamoff TellRaw();
    /// Characters written so far, UTF-8 sequences counting as the units that they stand for.
    std::uint64_t GetWriteCount() const noexcept { return mWriteCount; }
    /// True when the raw stream has refused a unit.
    bool HasFailed() const noexcept { return mHasFailed; }

protected:
    /// Forgets what was read ahead and moves the raw stream behind the last token read.
    void Settle() {
        if (mBatch.count != 0)
            LeaveBatch();
    }
    /// Makes the next token of the batch the current one.
    const CToken& TakeFromBatch() noexcept {
        mLineStart = LineStart::kAsInBatch;
        mCurrent = &mBatch.entries[mBatch.next++].token;
        return *mCurrent;
    }
    /// Changes a setting that reading depends on, and returns the old value.
    template <class T>
    T SetForReading(T& setting, T value) {
        Settle();
        return std::exchange(setting, value);
    }
    /// Notes that a token begins: all of it lies in raw units not yet consumed, but for `ahead`
    /// units that stand in the character pushback.
    void MarkTokenStart(std::streamoff ahead = 0) noexcept {
        mTokenStart[mTokenCount++ % mTokenStart.size()] = mConsumed - ahead;
    }
    /// Moves the last mark to where reading stands now.
    void RemarkTokenStart(std::streamoff ahead = 0) noexcept {
        --mTokenCount;
        MarkTokenStart(ahead);
    }
    /// Puts a character back that took so many raw units; more than kMaxPushBack are asserted and
    /// dropped.
    void PushBackChar(char16_t ch, std::size_t rawUnits);
    /// Writes raw units.
    void PutUnits(std::u16string_view units);
    /// Drops the tokens pushed back up to a line end, for NewLine; appends the text of those behind
    /// the current one to `line`, if that isn't null. False when a line end was among the tokens
    /// read already: then the current token is the first of the next line.
    bool DropPushedBackLine(AString* line);

    bool mKeepComments = false;
    bool mKeepWhiteSpace = false;
    CaseMode mCaseMode = CaseMode::Ignore;
    bool mAutoBlank = true;
    StreamEncoding mEncoding;
    std::locale mLocale, mSavedLocale;
    bool mCrLf = false;
    CToken mToken;              ///< the last one read, unless it is in the batch
    CToken* mCurrent = &mToken; ///< the last one read
    char16_t mLastChar = 0;
    TokenKind mLastKind = TokenKind::Eol;
    int mLine = 1; ///< without the lines of the batch
    CRawStreambuf* mTokenStreamBuf;
    CCharPushBack mPushBack;
    CTokenPushBack mTokenPushBack;
    std::uint64_t mWriteCount = 0;
    bool mHasFailed = false;

    CToken_text_store mTexts;     ///< the longer texts of tokens read
    std::streamoff mConsumed = 0; ///< raw units that the raw stream has moved past
    CToken_batch mBatch;

private:
    enum class LineStart : std::uint8_t { kNo, kYes, kAsInBatch };

    const CToken& PopToken();
    const CToken& ReadNext();
    void MarkBatchStarts() noexcept;
    void LeaveBatch();
    void ClearBatch();
    /// Line ends among the tokens taken from the batch.
    int CountBatchLines() const noexcept;
    /// Raw units, from where the raw stream stands, to behind the last token read.
    std::streamoff GetAhead() const noexcept {
        return mBatch.next == 0 ? 0 : mBatch.entries[mBatch.next - 1].stop - mBatch.begin;
    }
    LineStart mLineStart = LineStart::kYes; ///< whether the current token is the first of its line
    static bool IsNoCaseUnits(std::u16string_view a, std::u16string_view b) noexcept;
    template <class Matches>
    bool Find(Matches matches);
    bool IsSameText(const CToken& token, std::u16string_view text) const;

    /// mConsumed at the start of the last tokens read in front of the batch: as many as can be
    /// pushed back, and one.
    std::array<std::streamoff, 16> mTokenStart{};
    std::size_t mTokenCount = 0;
};

} // namespace io
