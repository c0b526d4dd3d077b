/// Output of tokens and blocks.
#pragma once

#include <ostream>
#include <vector>

#include "abstract_stream.h"

namespace io {

/// A raw output stream. Only its buffer, its position and its flags are used.
using CRawOstream = std::basic_ostream<char16_t>;

/// Writes tokens and blocks. A failed write fails the stream; what follows is lost.
class QUOREL_API CAbstract_ostream : public CAbstract_stream {
public:
    /// The bits of SetFloatFlag.
    static constexpr unsigned kScientific = 0x1000;
    static constexpr unsigned kFixed = 0x2000;

    /// The text as it stands, and the end of the line.
    virtual void WriteRawLine(std::u16string_view text) = 0;
    /// Ends the line, even an empty one.
    virtual void NewLine() = 0;
    /// Ends the line if something stands on it.
    virtual void EndLine() = 0;
    /// A `*` as placeholder.
    virtual void Next() = 0;

    /// The begin word and the name on a line of their own, and one level of indent; without a name,
    /// the begin word alone on its line.
    virtual void BeginBlock(const CToken& name) = 0;
    virtual void BeginBlock(std::u16string_view name) = 0;
    virtual void BeginBlock() = 0;
    /// The end word and the name on a line of their own, one level out.
    virtual void EndBlock(const CToken& name) = 0;
    virtual void EndBlock(std::u16string_view name) = 0;
    virtual void EndBlock() = 0;

    /// The notation of numbers without source text: any of kScientific and kFixed, which together
    /// stand for hexadecimal. Returns the old one.
    virtual unsigned SetFloatFlag(unsigned flags) = 0;

    virtual void WriteKeyword(std::u16string_view text) = 0;
    virtual void WriteQuoted(const CToken& token) = 0;
    virtual void WriteQuoted(std::u16string_view text) = 0;
    virtual void WriteComment(std::u16string_view text) = 0;
    virtual void WriteSymbol(char16_t ch) = 0;

    /// Whether blanks and quotes are written where they are needed; null changes nothing. Returns
    /// the old value.
    virtual bool SetAutoBlank(const bool* isOn) = 0;
    /// A word with SetAutoBlank off.
    virtual void WriteRaw(std::u16string_view text) = 0;
    /// Calls the function with this stream.
    virtual CAbstract_ostream& Apply(CAbstract_ostream& (*manipulator)(CAbstract_ostream&)) = 0;

    virtual void Write(const CToken& token) = 0;
    /// A word: as it stands if it is one token, else in single quotes.
    virtual void Write(std::u16string_view text) = 0;
    virtual void Write(double value) = 0;
    virtual void Write(float value) = 0;
    virtual void Write(unsigned long value) = 0;
    virtual void Write(long value) = 0;
    virtual void Write(unsigned int value) = 0;
    virtual void Write(int value) = 0;
    virtual void Write(short value) = 0;
    virtual void Write(char16_t value) = 0;
    virtual void Write(const char16_t* text) = 0;
    virtual void Write(bool value) = 0;
    virtual AString GetIndent() const = 0;

protected:
    explicit CAbstract_ostream(CRawOstream& stream) : mStream(&stream) {}

    CRawOstream* mStream;
    bool mBuildIndex = false;
    std::vector<AString> mOpenBlocks; ///< paths of the open blocks while an index is built
};

} // namespace io
