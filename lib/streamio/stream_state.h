/// Positions of block streams, and what a stream must restore to go on at one.
#pragma once

#include <array>
#include <cstdint>
#include <ios>
#include <string>
#include <vector>

#include "astring.h"
#include "quorel_export.h"
#include "refptr.h"
#include "token.h"

namespace io {

class CBlock_func;
class CAbstract_stream_pos;

/// The state of a stream at a position, shared by the copies of that position. The base knows the
/// block nesting alone; the stream fills it, the token buffers fill what the derived classes add.
class QUOREL_API CAbstract_stream_state {
public:
    CAbstract_stream_state() = default;
    /// Asserts that no position holds it.
    virtual ~CAbstract_stream_state();
    CAbstract_stream_state(const CAbstract_stream_state&) = delete;
    CAbstract_stream_state& operator=(const CAbstract_stream_state&) = delete;

    /// The line number; 0 for a state that has none.
    virtual int GetLine() const { return 0; }
    /// True when no token has been begun and not used up: reading at the position alone goes on
    /// as it would have done.
    virtual bool IsCleanPosition() const { return true; }
    /// True when the position is clean and outside all blocks.
    virtual bool IsTopLevel() const { return mLevel == 0; }
    /// Appends what an index entry keeps of the state, as named values: "lin" in a text stream,
    /// then "lvl".
    virtual void WriteTo(CBlock_func& func) const;
    /// Takes back what WriteTo appended; what is missing stays as it is.
    virtual void ReadFrom(CBlock_func& func);
    /// Moves the line by the difference of two positions' lines.
    virtual void Rebase(const CAbstract_stream_pos& from, const CAbstract_stream_pos& to);

    unsigned mLevel = 0;
    std::vector<AString> mOpenBlocks; ///< names of the blocks around the position
    int mRefCount = 0;                ///< the positions that hold it
};

/// A position: where the raw stream stands, and the state there. Copies share the state.
class QUOREL_API CAbstract_stream_pos {
public:
    CAbstract_stream_pos() = default;
    explicit CAbstract_stream_pos(std::streamoff pos) : mPos(pos) {}
    CAbstract_stream_pos(const CAbstract_stream_pos& other);
    CAbstract_stream_pos& operator=(const CAbstract_stream_pos& other);
    ~CAbstract_stream_pos() { SetState(nullptr); }

    /// False for the position of a stream that can't tell it.
    bool IsValid() const noexcept { return mPos >= 0; }
    CAbstract_stream_state* GetState() const noexcept { return mState; }
    /// Holds another state, made by new, or none; the former one goes with its last position.
    void SetState(CAbstract_stream_state* state);

    std::streamoff mPos = -1; ///< in raw units from the raw stream's start

private:
    CAbstract_stream_state* mState = nullptr;
};

/// A stack of fixed room for what a token buffer pushes back.
template <class T, int Capacity>
struct CPushBack {
    std::array<T, Capacity> mItems{};
    int mCount = 0;

    bool IsEmpty() const noexcept { return mCount == 0; }
    const T& Top() const noexcept { return mItems[static_cast<std::size_t>(mCount - 1)]; }
    void Pop() noexcept { --mCount; }
    /// False, and nothing pushed, when it is full.
    bool Push(const T& item) {
        if (mCount == Capacity)
            return false;
        mItems[static_cast<std::size_t>(mCount++)] = item;
        return true;
    }
};

inline constexpr int kMaxPushBack = 64;
inline constexpr int kMaxTokenPushBack = 10;
/// A character in the low 16 bits, and above them the raw units that it took.
using CCharPushBack = CPushBack<std::uint32_t, kMaxPushBack>;
using CTokenPushBack = CPushBack<CToken, kMaxTokenPushBack>;

/// What every token buffer restores.
class QUOREL_API CToken_stream_state : public CAbstract_stream_state {
public:
    int GetLine() const override { return mLine; }
    bool IsCleanPosition() const override;
    bool IsTopLevel() const override;
    void Rebase(const CAbstract_stream_pos& from, const CAbstract_stream_pos& to) override;

    bool mAtLineStart = true;
    CToken mToken;
    char16_t mLastChar = 0;
    TokenKind mLastKind = TokenKind::Eol;
    int mLine = 1;
    CCharPushBack mPushBack;
    CTokenPushBack mTokenPushBack;
    std::streamoff mTokenDistance = 0; ///< see CToken_streambuf::GetTokenDistance
};

/// The state of a text stream: the indent too, and the line in index entries.
class QUOREL_API CToken_textstream_state : public CToken_stream_state {
public:
    bool IsTopLevel() const override;
    void WriteTo(CBlock_func& func) const override;
    void ReadFrom(CBlock_func& func) override;

    std::vector<int> mIndentStack;
    AString mIndent;
};

} // namespace io
