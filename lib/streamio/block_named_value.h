/// A value with a name.
#pragma once

#include "block_value.h"

namespace io {

/// An item such as `Version=3`. The value may be Null; then nothing stands behind the `=`.
class QUOREL_API CBlock_named_value : public CBlock_value {
public:
    CBlock_named_value() = default;
    /// A name as text is single-quoted; any further arguments make the value as CBlock_value does.
    template <class... Value>
    explicit CBlock_named_value(const AString& name, Value&&... value)
        : CBlock_named_value(CToken(TokenKind::SingleQuotedText, name),
                             std::forward<Value>(value)...) {}
    template <class... Value>
    explicit CBlock_named_value(CToken name, Value&&... value)
        : CBlock_value(std::forward<Value>(value)...), mName(std::move(name)) {}

    /// Reads a `=` and a value; the name is taken to be read. Throws XStreamioError.
    void Read(CAbstract_istream& stream) override;
    void Write(CAbstract_ostream& stream) const override;

    void GetName(AString& name) const override;
    void SetName(const AString& name) override;
    const CToken& GetNameToken() const override { return mName; }
    bool IsNamed() const override { return true; }
    bool IsNamedValue() const override { return true; }
    bool IsValue() const override { return false; }

protected:
    void AddStats(Block_stats& stats) const override;
    bool ReadWhole(CAbstract_istream& stream) override;

private:
    friend class Block_reader;

    CToken mName;
};

} // namespace io
