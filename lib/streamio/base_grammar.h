/// The common part of grammars: how a run of 16-bit characters falls apart into tokens.
#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>

#include "astring.h"
#include "char_classes.h"
#include "quorel_export.h"
#include "token_kinds.h"

namespace io {

/// Rows of the transition tables. States below kFirstFinalState are working states; reaching
/// another one ends the token.
inline constexpr unsigned kStateCount = 49;
inline constexpr unsigned kFirstFinalState = 32;
/// The working states, by what has been read; final states have their kinds and handlers alone.
enum State : unsigned {
    kStateStart = 0,
    kStateComment = 1,
    kStateWhiteSpace = 2,
    kStateSymbol = 3,
    kStateLineEnd = 4,
    kStateWord = 5,
    kStateOpenSingle = 6, ///< an opening single quote
    kStateOpenDouble = 7,
    kStateFirstZero = 8,
    kStateSign = 9,
    kStateFirstPoint = 10,
    kStateInteger = 11,
    kStateCarriageReturn = 12,
    kStateInSingle = 13, ///< single-quoted text
    kStateInDouble = 14,
    kStateEscapeSingle = 15, ///< a backslash
    kStateEscapeDouble = 16,
    kStateEscapedCrSingle = 17,
    kStateEscapedCrDouble = 18,
    kStateEscapedSingle = 19,
    kStateEscapedDouble = 20,
    kStateClosedSingle = 21,
    kStateClosedDouble = 22,
    kStateCData = 23,
    kStateCDataEnd = 24, ///< part of the CData end word
    kStateSignAndPoint = 25,
    kStateHexMark = 26,
    kStateHexDigits = 27,
    kStateFraction = 28,
    kStateExponentLetter = 29,
    kStateExponent = 30,
    kStateExponentSign = 31
};

// clang-format off
/// What the text token buffer does on entering a state.
#define IO_STATE_HANDLERS(row)                                                                     \
    row(Nothing)                                                                                   \
    row(KeepIf)               /* appends the character unless comments or blanks are dropped */    \
    row(Skip)                                                                                      \
    row(Word)                 /* appends the character in the case mode's case */                  \
    row(Append)                                                                                    \
    row(Newline)              /* appends an LF for an escaped CR */                                \
    row(Escape)               /* appends what an escaped character stands for */                   \
    row(HexDigit)                                                                                  \
    row(EndMarker)            /* matches the CData end word */                                     \
    row(Invalid)              /* this one and the others end the token */                          \
    row(Eol)                                                                                       \
    row(Eof)                                                                                       \
    row(Symbol)                                                                                    \
    row(Keyword)                                                                                   \
    row(WordOrDelimiter)      /* Keyword, but for a lone character that is no letter or digit */   \
    row(Real)                                                                                      \
    row(Integer)                                                                                   \
    row(SingleQuoted)                                                                              \
    row(DoubleQuoted)                                                                              \
    row(CDataEnd)                                                                                  \
    row(Comment)                                                                                   \
    row(WhiteSpace)                                                                                \
    row(SymbolLessOne)        /* the last character goes back to the input */                      \
    row(RealLessOne)                                                                               \
    row(RealLessTwo)                                                                               \
    row(ShortLessOne)                                                                              \
    row(Hex)
// clang-format on

#define IO_STATE_HANDLER_ENUMERATOR(name) name,
enum class StateHandler : std::uint8_t { IO_STATE_HANDLERS(IO_STATE_HANDLER_ENUMERATOR) };
#undef IO_STATE_HANDLER_ENUMERATOR

struct FlagsOfClass;
struct FlagsOfChars;
struct TransitionRow;

/// Owns the class word of every character, the automaton over character classes and the literal
/// words of the format. Made once, then shared by any number of streams that only read it; the
/// operations that change it must not run while another thread uses it.
class QUOREL_API CBase_grammar {
public:
    virtual ~CBase_grammar();
    CBase_grammar(const CBase_grammar&) = delete;
    CBase_grammar& operator=(const CBase_grammar&) = delete;

    /// Lets each character of `text`, up to its NUL, begin a comment; null does nothing.
    virtual void AddCommentChars(const char16_t* text);
    /// Takes that back; a character that never had it is passed over.
    virtual void RemoveCommentChars(const char16_t* text);
    /// The class of a character, kEndOfInput or any other number in a state.
    virtual CharClass Classify(int ch, unsigned state) const = 0;

protected:
    CBase_grammar();
    /// Fill the tables; constructors call them for their own class.
    virtual void InitCharClasses();
    virtual void InitTransitions();

public:
    /// Which token the text begins with, read without any side effect, and in `stop` where it ends;
    /// the whole text is one token when `stop` is its length. The end of the text counts as a NUL.
    /// Word rules don't apply: "true" is a Keyword. The empty text is Eol. A text that ends inside
    /// an escape is no token: Error, with `stop` at its start. Allocates nothing.
    TokenKind Scan(std::u16string_view text, std::size_t& stop) const;
    /// The same on a text that ends at its NUL.
    TokenKind Scan(const char16_t* text, const char16_t*& stop) const;
    /// True, with the kind, when the whole text is one token.
    bool IsOneToken(std::u16string_view text, TokenKind& kind) const;
    /// True when the whole text reads as one Keyword: neither true, false nor the CData opener.
    bool IsKeyword(std::u16string_view text) const;
    /// True when the text reads as true or false.
    bool IsTrueOrFalse(std::u16string_view text) const;

    const AString& GetTrueWord() const noexcept { return mTrueWord; }
    const AString& GetFalseWord() const noexcept { return mFalseWord; }
    const AString& GetBeginCData() const noexcept { return mBeginCData; } ///< empty: no CData
    const AString& GetEndCData() const noexcept { return mEndCData; }
    const AString& GetHexPrefix() const noexcept { return mHexPrefix; }
    /// The first character that begins a comment, 0 if none does.
    char16_t GetCommentChar() const noexcept { return mCommentChar; }

    /// All flags of a character; 0 for one that never had any.
    std::uint32_t GetFlags(char16_t ch) const noexcept {
        const CharPage* page = mCharPage[ch >> 8].get();
        return page ? (*page)[ch & 0xFF] : 0;
    }
    unsigned GetTransition(unsigned state, CharClass charClass) const noexcept {
        return mTransition[state][static_cast<unsigned>(charClass)];
    }
    TokenKind GetFinalToken(unsigned state) const noexcept { return mFinalToken[state]; }
    StateHandler GetStateHandler(unsigned state) const noexcept { return mStateHandler[state]; }
    /// The state that a character leads to.
    unsigned NextState(unsigned state, char16_t ch) const {
        return ch < 0x100 ? GetFast().next[state][ch] : GetTransition(state, Classify(ch, state));
    }

    /// Classes and transitions worked out for the characters below 256, for loops that take no
    /// virtual call a character.
    struct FastTables {
        /// next[state][character] for working states.
        std::uint8_t next[kFirstFinalState][0x100];
        /// Bit s of stay[character] is set when the character keeps working state s as it is.
        std::uint32_t stay[0x100];
        /// What a token that begins with the character is.
        enum class First : std::uint8_t {
            kOther, ///< none of the usual
            kBlank,
            kComment,
            kSymbol,
            kLineEnd,
            kCarriageReturn,
            kWord,
            kLiteral, ///< a word that may turn out to be something else
            kSingleQuoted,
            kDoubleQuoted,
            kNumber
        };
        First first[0x100];
        /// What the character alone reads as, if that is one token; else Null.
        TokenKind alone[0x100];
        /// True when every state has one of the two usual handlers and numbers have their usual
        /// form, so that a token may be read at one go.
        bool isUsual;
    };
    /// The tables as they follow from flags and transitions; worked out at the first call after a
    /// change, by whichever thread comes first.
    const FastTables& GetFast() const {
        if (!mIsFastValid.load(std::memory_order_acquire))
            MakeFast();
        return *mFast;
    }

protected:
    using CharPage = std::array<std::uint32_t, 0x100>;

    /// Sets flags of a character. One at kCharMax or above is asserted and does nothing.
    void AddFlags(unsigned the_char, std::uint32_t flags);
    /// The same for each character of a text up to its NUL; null does nothing.
    void AddFlags(const char16_t* text, std::uint32_t flags);
    /// Sets flags of the characters below 256 by their class, then of single ones.
    void AddFlags(std::span<const FlagsOfClass> byClass, std::span<const FlagsOfChars> byChar);
    /// Clears flags of each character of a text; null does nothing.
    void RemoveFlags(const char16_t* text, std::uint32_t flags);
    /// Puts rows of transitions into the table; the other rows stay.
    void SetRows(std::span<const TransitionRow> rows);
    /// Finds mCommentChar anew.
    void FindCommentChar();
    /// Classify's rules that all grammars share. True with the class when one of them applies;
    /// otherwise false with the flags.
    bool ClassifyCommon(int ch, CharClass& charClass, std::uint32_t& flags) const noexcept;

    AString mTrueWord;
    AString mFalseWord;
    AString mBeginCData;
    AString mEndCData;
    AString mHexPrefix;
    std::array<StateHandler, kStateCount> mStateHandler{};
    std::array<std::unique_ptr<CharPage>, 0x100> mCharPage; ///< by the high byte of the character
    std::array<std::array<std::uint32_t, kCharClassCount>, kStateCount> mTransition{};
    std::array<TokenKind, kStateCount> mFinalToken{};
    std::array<std::uint8_t, kStateCount> mStateKind{};
    char16_t mCommentChar = 0;

private:
    void MakeFast() const;
    TokenKind Scan(const FastTables& fast, std::u16string_view text, std::size_t& stop) const;
    FastTables::First FindFirst(char16_t ch) const;

    mutable std::unique_ptr<FastTables> mFast;
    mutable std::atomic<bool> mIsFastValid = false;
};

} // namespace io
