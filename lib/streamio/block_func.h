/// A function-style item.
#pragma once

#include <iterator>

#include "block_getters.h"
#include "block_ptr.h"
#include "compact_array.h"

namespace io {

class CBlock_named_value;

/// An item such as `Note(1.5, 'x', Level=2)`: a name and arguments, shared by pointers that are
/// never null. Reading named arguments in their stored order costs one comparison each.
class QUOREL_API CBlock_func : public CBlock_getters {
public:
    CBlock_func() = default;
    explicit CBlock_func(CToken name) noexcept : mName(std::move(name)) {}
    /// A single-quoted name.
    explicit CBlock_func(const AString& name);
    /// Shares the arguments; the cursor of the copy stands at the first.
    CBlock_func(const CBlock_func& other);
    CBlock_func& operator=(const CBlock_func& other);
    ~CBlock_func() override;

    /// Append an argument and set the cursor to the first: a value made as CBlock_value makes it, a
    /// copy of a named value, or a shared item. A null pointer is ignored.
    CBlock_func& operator<<(const AString& text);
    CBlock_func& operator<<(const char16_t* text) { return *this << AString(text); }
    CBlock_func& operator<<(double value);
    CBlock_func& operator<<(int value);
    CBlock_func& operator<<(long value);
    CBlock_func& operator<<(unsigned int value);
    CBlock_func& operator<<(unsigned long value);
    CBlock_func& operator<<(std::same_as<bool> auto value) {
        return *this << CToken(value ? TokenKind::True : TokenKind::False);
    }
    CBlock_func& operator<<(CToken value);
    CBlock_func& operator<<(const CBlock_named_value& value);
    template <class T>
    CBlock_func& operator<<(const CBlock_ptr<T>& arg) {
        return Add(arg);
    }
    CBlock_func& Add(const CBlock_ptr<CBlock_func_arg>& arg);

    /// The first argument of that name from the cursor on and then from the first one, the names
    /// compared without regard to case; arguments whose name has no text are passed over. Moves the
    /// cursor to it. Null if there is none; the cursor stays.
    CBlock_ptr<CBlock_func_arg> Find(const AString& name) const;
    /// Finds a named value by the name of `value` and copies its value. Anything else: false.
    bool Get(CBlock_named_value& value) const;
    using CBlock_getters::Get;
    /// Whether the last Find or Get succeeded; true after a change.
    bool WasFound() const noexcept { return mFound; }

    /// The argument at an index below GetSize.
    CBlock_ptr<CBlock_func_arg> GetArg(unsigned index) const {
        return static_cast<CBlock_func_arg*>(mArgs[index].get());
    }

    /// Reads from the `(` on; the name is taken to be read. Throws XStreamioError; the arguments
    /// read so far stay.
    void Read(CAbstract_istream& stream) override;
    void Write(CAbstract_ostream& stream) const override;

    void GetName(AString& name) const override;
    void SetName(const AString& name) override;
    const CToken& GetNameToken() const override { return mName; }
    bool IsNamed() const override { return true; }
    bool IsEmpty() const override { return mArgs.empty(); }
    unsigned GetSize() const override { return mArgs.size(); }
    void Clear() override;
    bool IsFunc() const override { return true; }

protected:
    const Item_list* GetChildren() const override { return &mArgs; }
    void AddStats(Block_stats& stats) const override;
    bool ReadWhole(CAbstract_istream& stream) override;
    const CToken* GetLeadToken() const override;

private:
    friend class Block_reader;

    void ResetCursor() const noexcept;

    // Lookups move these alone.
    mutable std::uint32_t mCursor : 31 = 0;
    mutable std::uint32_t mFound : 1 = 1;
    CToken mName;
    Item_list mArgs; ///< each a CBlock_func_arg
};

} // namespace io
