/// Input of tokens and blocks.
#pragma once

#include <istream>

#include "abstract_stream.h"

namespace io {

/// A raw input stream. Only its buffer, its position and its state are used.
using CRawIstream = std::basic_istream<char16_t>;

/// Reads with a vocabulary of three questions: is the next thing an X, read an X, find the next X.
///
/// Tests look at the current token and consume nothing. Reads consume what the matching test
/// accepts; on anything else they fail the stream and return false. While the stream has failed,
/// tests and reads return false at once and do nothing, until Clear. Tests and reads step over line
/// ends, IsEol apart. Words compare without case, but for case mode Sensitive.
class QUOREL_API CAbstract_istream : public CAbstract_stream {
public:
    /// The current token's text and the rest of its line.
    virtual bool ReadLine(AString& line) = 0;
    /// On to the first token of the next line; on a line end, over that alone.
    virtual void SkipLine() = 0;
    /// Expects a line end.
    virtual bool ReadEol() = 0;
    /// Steps over line ends and then over one token.
    virtual void Next() = 0;

    /// Read the begin word and the block's name, which must be `text` if that is given.
    virtual bool ReadBegin(CToken& name) = 0;
    virtual bool ReadBegin(AString& name) = 0;
    virtual bool ReadBegin(std::u16string_view text) = 0;
    virtual bool ReadBegin() = 0;
    /// Read the end word and the name; without arguments the end word alone.
    virtual bool ReadEnd(CToken& name) = 0;
    virtual bool ReadEnd(AString& name) = 0;
    virtual bool ReadEnd(std::u16string_view text) = 0;
    virtual bool ReadEnd() = 0;
    /// The raw stream's format flags as kScientific and kFixed of an output stream.
    virtual unsigned SetFloatFlag(unsigned flags) = 0;
    virtual bool ReadKeyword(AString& word) = 0;
    virtual bool ReadKeyword(std::u16string_view text) = 0;
    /// Any token that IsValue accepts.
    virtual bool ReadValue(CToken& value) = 0;
    virtual bool ReadValue(AString& text) = 0;
    virtual bool ReadValue(std::u16string_view text) = 0;
    virtual bool ReadComment(AString& comment) = 0;
    virtual bool ReadComment(std::u16string_view text) = 0;
    virtual bool ReadSymbol(char16_t ch) = 0;

    /// Returns the old mode, see CaseMode.
    virtual int SetCaseMode(int mode) = 0;
    /// The current token; Null while none has been read.
    virtual const CToken& PeekToken() = 0;

    virtual bool IsKeyword() = 0;
    virtual bool IsKeyword(std::u16string_view text) = 0;
    /// The begin word with a value behind it, which must be `text` if that is given.
    virtual bool IsBegin(std::u16string_view text) = 0;
    virtual bool IsBegin() = 0;
    /// The end word; with a value behind it that is `text`, if that is given.
    virtual bool IsEnd(std::u16string_view text) = 0;
    virtual bool IsEnd() = 0;
    /// A number, true, false, quoted text, or another text that is not empty, symbols included.
    virtual bool IsValue() = 0;
    virtual bool IsValue(std::u16string_view text) = 0;
    virtual bool IsComment() = 0;
    virtual bool IsComment(std::u16string_view text) = 0;
    virtual bool IsSymbol() = 0;
    virtual bool IsSymbol(char16_t ch) = 0;
    virtual bool IsEol() = 0;
    virtual bool IsAtEof() = 0;
    virtual bool IsNumber() = 0;
    virtual bool IsNumber(double number) = 0;

    /// Go forward to the first match, which stays current. At the end of the input false, the
    /// stream failed and, unless skipping on failure, back where the search began.
    virtual bool FindKeyword(std::u16string_view text) = 0;
    virtual bool FindSymbol(char16_t ch) = 0;
    virtual bool FindValue(std::u16string_view text) = 0;
    /// A begin of that name at this level: nested blocks are skipped, a stray end ends the search.
    virtual bool FindBegin(std::u16string_view text) = 0;
    /// The end of the current block, which must have that name.
    virtual bool FindEnd(std::u16string_view text) = 0;
    virtual bool FindKeywordAtLineStart(std::u16string_view text) = 0;
    virtual bool FindSymbolAtLineStart(char16_t ch) = 0;
    virtual bool FindValueAtLineStart(std::u16string_view text) = 0;

    /// A read that fails steps over the token too. Setters return the old value.
    virtual bool SetSkipOnFail(bool isOn) = 0;
    virtual bool ClearSkipOnFail() = 0;
    /// While the stream has failed nothing works.
    virtual bool SetStopOnFail(bool isOn) = 0;
    virtual bool ClearStopOnFail() = 0;
    /// Makes the stream good again.
    virtual void Clear() = 0;
    virtual void SetFail() = 0;
    /// Tests and reads step over line ends.
    virtual bool SetSkipEol(bool isOn) = 0;
    virtual bool ClearSkipEol() = 0;
    /// Calls the function with this stream.
    virtual CAbstract_istream& Apply(CAbstract_istream& (*manipulator)(CAbstract_istream&)) = 0;

    /// Numbers of any kind convert within the ranges of CBlock_value's getters. A text is any
    /// value's text that is not empty, and quoted text. A token is any token at all, whether or not
    /// the stream has failed.
    virtual bool Read(AString& text) = 0;
    virtual bool Read(CToken& token) = 0;
    virtual bool Read(double& value) = 0;
    virtual bool Read(float& value) = 0;
    virtual bool Read(unsigned long& value) = 0;
    virtual bool Read(long& value) = 0;
    virtual bool Read(unsigned int& value) = 0;
    virtual bool Read(int& value) = 0;
    virtual bool Read(unsigned short& value) = 0;
    virtual bool Read(short& value) = 0;
    virtual bool Read(bool& value) = 0;

    /// Puts a token in front of the current one.
    virtual void PushBack(const CToken& token) = 0;

protected:
    explicit CAbstract_istream(CRawIstream& stream) : mStream(&stream) {}

    bool mGood = true;
    CRawIstream* mStream;
};

} // namespace io
