/// The binary form of a token stream.
#pragma once

#include <string>

#include "token_streambuf.h"

namespace io {

/// Stores each token as a tag unit and a body; a unit holds one byte whatever its width.
///
///     tag          token                              body
///     0            Null; the first unit of a stream   -
///     10, 11       True, False                        -
///     12 to 17     Keyword to Comment                 length of one unit, text in UTF-8
///     18           Symbol below 128                   the character
///     19           Eol                                -
///     20           ends reading                       -
///     21           Error                              -
///     60 + n       unsigned integer                   n bytes, the low one first, 1 <= n <= 8
///     69 + n       signed integer                     the same
///     78 + n       real                               the n high bytes of a double, low one first
///     12-18 + 128  the same kinds                     length of four units, low first, and text
///
/// Numbers leave out high bytes (integers) or low bytes (reals) that are zero, but one:
/// 0 is 61 0, 256 as an int 71 0 1, 1.0 is 80 F0 3F, 0.0 is 79 0, 'a' is 13 1 61, '' is 13 0.
///
/// Reading is robust against any bytes: an unknown tag is an Error token, a text that isn't UTF-8 a
/// Null token, units that are missing at the end read as 0xFF, an integer of more than four bytes
/// is 0. Memory is taken for what is there, never for a length alone. U+FFFF in a text reads as
/// U+FFFD. Eol tokens count lines.
class QUOREL_API CToken_binarystreambuf : public CToken_streambuf {
public:
    explicit CToken_binarystreambuf(CRawStreambuf* a_streambuf);

    void AddCommentChars(const char16_t*) override {}
    void RemoveCommentChars(const char16_t*) override {}
    void NewLine() override;
    /// Asserted as not implemented: `line` becomes empty and NewLine() runs.
    void NewLine(AString& line) override;
    void WriteComment(std::u16string_view text) override;
    void WriteQuoted(std::u16string_view text) override;
    void WriteKeyword(std::u16string_view text) override;
    void WriteSymbol(char16_t ch) override;
    void WriteDouble(const double* number, std::ios_base::fmtflags flags) override;
    /// Four bytes of a float under the tag of a real: reads back as another number.
    void WriteFloat(const float* number, std::ios_base::fmtflags flags) override;
    void WriteUnsignedLong(const unsigned long* number, std::ios_base::fmtflags flags) override;
    void WriteLong(const long* number, std::ios_base::fmtflags flags) override;
    void WriteUnsignedInt(const unsigned* number, std::ios_base::fmtflags flags) override;
    void WriteInt(const int* number, std::ios_base::fmtflags flags) override;
    /// Two bytes; a negative number reads back as a positive one.
    void WriteShort(const short* number, std::ios_base::fmtflags flags) override;
    /// Null, Eof and Error write nothing; every number goes out as a double.
    void WriteToken(const CToken& token, std::ios_base::fmtflags flags) override;
    void WriteBool(const bool* value) override;
    void WriteChar(char16_t ch) override;
    /// A view of null data writes nothing; a text of blanks alone is WhiteSpace and written only if
    /// that is kept; any other text, the empty one too, is SingleQuotedText.
    void WriteWord(std::u16string_view text) override;
    void PushIndent(int count, char16_t fill) override;
    void PopIndent() override;
    int GetIndentDepth() const override { return mIndentDepth; }
    AString GetIndent() const override { return AString(); }
    void EndLine(bool force) override;
    int SetPrecision(int precision) override { return std::exchange(mPrecision, precision); }
    /// A width above 0 makes numbers go out with all their bytes.
    int SetWidth(int width) override;
    bool SetHex(bool isHex) override { return std::exchange(mHex, isHex); }
    char16_t SetFill(char16_t fill) override { return std::exchange(mFill, fill); }
    const CToken* ReadToken() override;
    void WriteUnsignedShort(const unsigned short* number, std::ios_base::fmtflags flags) override;

    /// The unit 0 that a binary output begins with, written at the end of the raw stream. It tells
    /// a binary input from a text.
    void WriteHeader();
    /// Units that a value takes: 1 for True and False, 1 + n for a number, for a text that is not
    /// empty its bytes and 2, or 5 from 256 bytes on; 1 for anything else.
    static unsigned GetBinarySize(const CToken& token);

private:
    bool Take(std::uint32_t& unit);
    std::uint64_t TakeBytes(unsigned count);
    bool TakeUtf8(std::size_t length);
    void Skip(std::size_t count);
    bool ReadOne();
    void ReadNumber(std::uint32_t tag);
    void ReadText(TokenKind kind, bool isLong);

    char16_t* GetRoom(std::size_t count);
    void TakeRoom(TokenKind kind, std::size_t count);
    void Put(TokenKind kind, std::u16string_view units);
    void PutTag(TokenKind kind);
    bool PutPlainText(TokenKind kind, std::u16string_view text);
    void PutText(TokenKind kind, std::u16string_view text);
    void PutBytes(TokenKind kind, unsigned tagBase, std::uint64_t bytes, unsigned length);
    template <class Integer>
    void PutInteger(TokenKind kind, Integer number);
    template <class Integer>
    void PutLong(TokenKind kind, Integer number, std::ios_base::fmtflags flags);
    void PutReal(TokenKind kind, std::uint64_t bits, unsigned width);

    int mIndentDepth = 0;
    int mPrecision = -1, mWidth = -1;
    bool mKeepZeros = false;
    char16_t mFill = u' ';
    bool mHex = false;
    std::string mReadBytes, mWriteBytes;   ///< the UTF-8 form of texts, one for each direction
    std::u16string mReadText, mWriteUnits; ///< a text read, and the units of one to write
};

} // namespace io
