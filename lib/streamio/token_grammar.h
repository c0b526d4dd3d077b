/// The grammar of persisted blocks.
#pragma once

#include "base_grammar.h"

namespace io {

/// Identifiers, numbers, quoted text, CData and comments. No character begins a comment until one
/// is added.
///
///     name    Keyword     letter or $, then letters, digits, $ and _ (of the codes below 256)
///     12 +5   Int         1.5 .5 1e3 -2.5e-3 Double     0x1f Hex (lower case only)
///     'a\'b'  SingleQuotedText, "..." DoubleQuotedText: a backslash takes the next character, with
///             a b f n r t v 0 as in C; an unescaped line end closes the text
///     $begin_cdata$...$end_cdata$   CData, everything between as it stands
///     ! ...   Comment up to the line end, if ! was added; any other character a Symbol
class QUOREL_API CToken_grammar : public CBase_grammar {
public:
    CToken_grammar();

    CharClass Classify(int ch, unsigned state) const override;

    /// Let characters begin or continue an identifier, or no longer; null does nothing. A character
    /// that is to stand anywhere in an identifier needs both.
    virtual void AddIdentStartChars(const char16_t* text);
    virtual void AddIdentChars(const char16_t* text);
    virtual void RemoveIdentStartChars(const char16_t* text);
    virtual void RemoveIdentChars(const char16_t* text);

protected:
    void InitCharClasses() override;
    void InitTransitions() override;
};

/// The shared grammar of all streams and block items that aren't told otherwise: comment character
/// `!`. It can't be changed: each changing operation is an assertion and does nothing.
class QUOREL_API CToken_grammar_default : public CToken_grammar {
public:
    /// The process's one, never destroyed.
    static CToken_grammar_default& Get();

    void AddCommentChars(const char16_t* text) override;
    void RemoveCommentChars(const char16_t* text) override;
    void AddIdentStartChars(const char16_t* text) override;
    void AddIdentChars(const char16_t* text) override;
    void RemoveIdentStartChars(const char16_t* text) override;
    void RemoveIdentChars(const char16_t* text) override;

private:
    CToken_grammar_default();
};

} // namespace io
