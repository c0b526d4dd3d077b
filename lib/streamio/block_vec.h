/// A vector of tokens with a name.
#pragma once

#include "block_getters.h"
#include "compact_array.h"

namespace io {

/// An item such as `Size[3: 10, 20, 30]`. Elements are tokens, never items, and lie side by side.
class QUOREL_API CBlock_vec : public CBlock_getters {
public:
    CBlock_vec() = default;
    explicit CBlock_vec(CToken name) noexcept : mName(std::move(name)) {}
    CBlock_vec(const CBlock_vec& other);
    CBlock_vec& operator=(const CBlock_vec& other);

    /// Appends an element and sets the cursor to the first. The room doubles when it is full.
    void Add(const CToken& element);
    /// Makes room for `count` elements in all.
    void Reserve(unsigned count) { mElements.reserve(count); }

    /// The element at an index below GetSize.
    const CToken& GetElement(unsigned index) const { return mElements[index]; }
    const CToken* begin() const noexcept { return mElements.begin(); }
    const CToken* end() const noexcept { return mElements.end(); }
    /// Gives the element at the cursor and moves on. At the end false, and the cursor stays.
    bool Next(CToken& element);

    /// Reads from the `[` on; the name is taken to be read. The size in front of a `:` is a hint
    /// that takes no memory. Throws XStreamioError; the elements read so far stay.
    void Read(CAbstract_istream& stream) override;
    void Write(CAbstract_ostream& stream) const override;

    void GetName(AString& name) const override;
    void SetName(const AString& name) override;
    const CToken& GetNameToken() const override { return mName; }
    bool IsNamed() const override { return true; }
    bool IsEmpty() const override { return mElements.empty(); }
    unsigned GetSize() const override { return mElements.size(); }
    void Clear() override;
    bool IsVec() const override { return true; }

protected:
    void AddStats(Block_stats& stats) const override;
    bool ReadWhole(CAbstract_istream& stream) override;
    const CToken* GetLeadToken() const override;

private:
    friend class Block_reader;

    std::uint32_t mCursor : 31 = 0;
    std::uint32_t mFound : 1 = 1;
    CToken mName;
    Compact_array<CToken> mElements;
};

} // namespace io
