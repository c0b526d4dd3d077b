/// A bare value.
#pragma once

#include <concepts>

#include "block_getters.h"

namespace io {

/// One token: a number, a text, true or false, or Null for no value. It stands as an argument of a
/// function; as an item of a block it can be built and written, but not read back.
class QUOREL_API CBlock_value : public CBlock_getters {
public:
    CBlock_value() = default;
    explicit CBlock_value(CToken value) noexcept : mValue(std::move(value)) {}
    /// Single-quoted text.
    explicit CBlock_value(const AString& text);
    explicit CBlock_value(const char16_t* text) : CBlock_value(AString(text)) {}
    explicit CBlock_value(const char* text) : CBlock_value(AString(text)) {}
    explicit CBlock_value(double value) noexcept;
    explicit CBlock_value(int value) noexcept;
    explicit CBlock_value(long value) noexcept;
    explicit CBlock_value(unsigned int value) noexcept;
    explicit CBlock_value(unsigned long value) noexcept;
    explicit CBlock_value(std::same_as<bool> auto value) noexcept
        : mValue(value ? TokenKind::True : TokenKind::False) {}

    const CToken& GetValue() const noexcept { return mValue; }
    void SetValue(CToken value) noexcept { mValue = std::move(value); }

    /// Reads a number, text, true or false. Throws XStreamioError (kValue) on anything else.
    void Read(CAbstract_istream& stream) override;
    void Write(CAbstract_ostream& stream) const override;
    unsigned GetBinarySize(CAbstract_ostream& stream) const override;

    bool IsEmpty() const override { return mValue.GetKind() == TokenKind::Null; }
    unsigned GetSize() const override { return IsEmpty() ? 0 : 1; }
    void Clear() override { mValue = CToken(); }
    bool IsValue() const override { return true; }

protected:
    void AddStats(Block_stats& stats) const override;
    bool ReadWhole(CAbstract_istream& stream) override;
    const CToken* GetLeadToken() const override { return &mValue; }

private:
    friend class Block_reader;

    CToken mValue;
};

} // namespace io
