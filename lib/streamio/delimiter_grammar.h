/// A loose grammar for splitting free text.
#pragma once

#include "base_grammar.h"

namespace io {

/// Anything that is not a blank, a quote, a comment or a delimiter is part of a word; a word that
/// is a number as a whole is a number: 1.5kg is one Keyword, 1.5 a Double, a lone delimiter a
/// Symbol.
class QUOREL_API CDelimiter_grammar : public CBase_grammar {
public:
    /// No delimiters, no comment character.
    CDelimiter_grammar();
    /// Delimiters up to the text's NUL; null for none.
    explicit CDelimiter_grammar(const char16_t* delimiters);

    CharClass Classify(int ch, unsigned state) const override;

    /// Makes each character of `text` a delimiter; null does nothing.
    virtual void AddDelimiters(const char16_t* text);

protected:
    void InitCharClasses() override;
    void InitTransitions() override;
};

/// The shared one: comment character `!`, delimiters `(),=`. It can't be changed: each changing
/// operation is an assertion and does nothing.
class QUOREL_API CDelimiter_grammar_default : public CDelimiter_grammar {
public:
    /// The process's one, never destroyed.
    static CDelimiter_grammar_default& Get();

    void AddCommentChars(const char16_t* text) override;
    void RemoveCommentChars(const char16_t* text) override;
    void AddDelimiters(const char16_t* text) override;

private:
    CDelimiter_grammar_default();
};

} // namespace io
