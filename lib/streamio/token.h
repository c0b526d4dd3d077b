/// One token: the leaf of block streams and of the block tree.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <utility>

#include "astring.h"
#include "quorel_export.h"
#include "token_kinds.h"
#include "token_text_store.h"

namespace io {

/// A kind with a number (kinds 1 to 9) or a text (kinds 12 to 18). A number read from text may
/// carry its source text, and True and False the letters that they were written with; kinds of 19
/// and above have the empty text. 16 bytes; copying never allocates. A text of up to kInlineUnits
/// units and a plain number's source text of up to kInlineSource characters lie in the token
/// itself, longer ones in a block that copies share by a plain count.
class QUOREL_API CToken {
public:
    static constexpr std::size_t kInlineUnits = 7;
    static constexpr std::size_t kInlineSource = 12;

    /// A Null token.
    CToken() noexcept : CToken(TokenKind::Null) {}
    /// A token of any kind with no text and, for a number kind, the number 0.
    explicit CToken(TokenKind kind) noexcept : mRep{kind, 0, {}} {}
    /// A number without source text. A kind that carries no number drops it.
    CToken(TokenKind kind, double number) noexcept;
    /// A text. A kind that carries no text, True and False apart, drops it.
    CToken(TokenKind kind, std::u16string_view text) : CToken(kind, text, nullptr) {}
    /// A number with the text that it was written as, in ASCII.
    CToken(TokenKind kind, double number, std::string_view source)
        : CToken(kind, number, source, nullptr) {}
    /// The same two with longer texts in `store`, for readers of many tokens. The token may outlive
    /// the store. A null store allocates for this text alone.
    CToken(TokenKind kind, std::u16string_view text, CToken_text_store* store);
    CToken(TokenKind kind, double number, std::string_view source, CToken_text_store* store);
    CToken(const CToken& other) noexcept : mRep(other.mRep) { AddRef(); }
    CToken(CToken&& other) noexcept : mRep(other.mRep) { other.mRep.form = 0; }
    ~CToken() { Release(); }
    CToken& operator=(const CToken& other) noexcept {
        other.AddRef();
        Release();
        mRep = other.mRep;
        return *this;
    }
    CToken& operator=(CToken&& other) noexcept {
        std::swap(mRep, other.mRep);
        return *this;
    }

    // For readers of many tokens; each replaces this token at the cost of one store. But for Take,
    // this token must have no text outside of it, such as one that Take has emptied.

    /// A text kind with `length` units of `text`, at most kInlineUnits; kInlineUnits of them must
    /// be readable.
    void SetUnits(TokenKind kind, const char16_t* text, std::size_t length) noexcept {
        std::uint64_t head;
        std::uint64_t body;
        std::memcpy(&head, text, sizeof head);
        std::memcpy(&body, text + 3, sizeof body);
        Set(HeadOf(kind, length) | head << 16, body);
    }
    /// A text kind with a text of one unit.
    void SetUnit(TokenKind kind, char16_t unit) noexcept {
        Set(HeadOf(kind, 1) | std::uint64_t{unit} << 16, 0);
    }
    /// A number kind with a source text of `length` characters, at most kInlineSource, as
    /// packed_source.h makes it.
    void SetPacked(TokenKind kind, double number, std::uint64_t source,
                   std::size_t length) noexcept {
        Set(HeadOf(kind, length) | source << 16, std::bit_cast<std::uint64_t>(number));
    }
    /// A kind alone.
    void SetKind(TokenKind kind) noexcept { Set(HeadOf(kind, 0), 0); }
    /// What another token holds, which then has no text.
    void Take(CToken& other) noexcept {
        Release();
        mRep = other.mRep;
        other.mRep.form = 0;
    }
    /// Gives the text up; the kind stays.
    void DropText() noexcept {
        Release();
        mRep.form = 0;
    }

    TokenKind GetKind() const noexcept { return mRep.kind; }
    bool IsNumber() const noexcept { return IsNumberKind(mRep.kind); }
    bool IsText() const noexcept { return IsTextKind(mRep.kind); }

    /// The one unit of a Symbol; 0 for anything else.
    char16_t GetSymbol() const noexcept {
        return mRep.kind == TokenKind::Symbol && mRep.form == 1 ? mRep.units[0] : u'\0';
    }
    /// False if this can't be a token of that text kind with so many units; costs no look at them.
    bool MayBe(TokenKind kind, std::size_t length) const noexcept {
        return mRep.kind == kind && (mRep.form == length || IsShared());
    }

    /// The number; 0 for a kind without one.
    double GetNumber() const noexcept {
        if (!IsNumber())
            return 0;
        double number;
        std::memcpy(&number, IsShared() ? Shared() : reinterpret_cast<const char*>(&mRep.units[3]),
                    sizeof number);
        return number;
    }

    /// The text of a text kind, or the kept letters of True and False, valid while this token
    /// stays as it is; empty for all other kinds, numbers with source text included. The units
    /// behind it are not a terminator.
    std::u16string_view GetTextView() const noexcept {
        if (!MayHaveText(mRep.kind))
            return {};
        if (!IsShared())
            return {mRep.units, mRep.form};
        return {reinterpret_cast<const char16_t*>(Shared()), SharedLength()};
    }
    /// The text, or a number's source text, as a string of its own.
    AString GetText() const;
    /// The same at the end of a string.
    void AppendTextTo(std::u16string& out) const;
    /// Units of GetText.
    std::size_t GetTextLength() const noexcept { return IsShared() ? SharedLength() : mRep.form; }
    bool HasText() const noexcept { return GetTextLength() != 0; }
    /// Writes a number's source text to `out`, which has room for GetTextLength characters, and
    /// returns their number; 0 for other kinds.
    std::size_t CopySource(char16_t* out) const noexcept;

    /// Bytes that the token's text takes outside the token.
    std::size_t GetHeldBytes() const noexcept;

    /// Same kind, same number (0.0 and -0.0 differ, a NaN equals itself) and same text, source
    /// texts of numbers included.
    friend QUOREL_API bool operator==(const CToken& a, const CToken& b) noexcept;

private:
    /// The form is the length of a text in the token itself: units from 0 on, or for a number its
    /// packed source in units[0..2] and the double in units[3..6]. With kSharedForm instead,
    /// units[1..2] hold the length and units[3..6] the address of the text: 16-bit units, or for a
    /// number the double and then its source in bytes.
    static constexpr std::uint8_t kSharedForm = 0x80;
    struct alignas(8) Rep {
        TokenKind kind;
        std::uint8_t form;
        char16_t units[kInlineUnits];
    };

    static bool MayHaveText(TokenKind kind) noexcept {
        return IsTextKind(kind) || kind == TokenKind::True || kind == TokenKind::False;
    }
    /// The first eight bytes without units.
    static std::uint64_t HeadOf(TokenKind kind, std::size_t form) noexcept {
        static_assert(std::endian::native == std::endian::little);
        return static_cast<std::uint8_t>(kind) | std::uint64_t{form} << 8;
    }
    /// Stores all at once: a processor that has to gather a token from several stores, when it is
    /// copied soon after, waits for them.
    void Set(std::uint64_t head, std::uint64_t body) noexcept {
        using Both [[gnu::vector_size(16)]] = std::uint64_t;
        const Both both = {head, body};
        std::memcpy(static_cast<void*>(&mRep), &both, sizeof mRep);
    }

    bool IsShared() const noexcept { return mRep.form == kSharedForm; }
    void AddRef() const noexcept {
        if (IsShared())
            CToken_text_store::AddRef(Shared());
    }
    void Release() noexcept {
        if (IsShared())
            CToken_text_store::Release(Shared());
    }
    template <class T>
    T Load(std::size_t unit) const noexcept {
        T value;
        std::memcpy(&value, &mRep.units[unit], sizeof value);
        return value;
    }
    template <class T>
    void Store(std::size_t unit, T value) noexcept {
        std::memcpy(&mRep.units[unit], &value, sizeof value);
    }
    const char* Shared() const noexcept { return Load<const char*>(3); }
    std::uint32_t SharedLength() const noexcept { return Load<std::uint32_t>(1); }
    char* MakeShared(std::size_t bytes, std::size_t length, CToken_text_store* store);
    std::uint64_t LoadPacked() const noexcept {
        std::uint64_t head;
        std::memcpy(&head, static_cast<const void*>(&mRep), sizeof head);
        return head >> 16;
    }

    Rep mRep;
};

static_assert(sizeof(CToken) == 16);

} // namespace io
