// The index of CToken_istream: making one, reading a stored one, checking it.

#include <algorithm>

#include "block_index.h"
#include "block_reader.h"
#include "names.h"
#include "token_istream.h"

namespace io {

/// Where the current token begins, to read it anew from there.
CAbstract_stream_pos CToken_istream::TokenPos() const {
    const std::streamoff raw = TellRaw();
    CAbstract_stream_pos pos(raw < 0 ? raw : raw - mTokenStreamBuf->GetTokenDistance());
    NewState(pos);
    pos.GetState()->mLevel = mLevel;
    if (auto* state = dynamic_cast<CToken_stream_state*>(pos.GetState()))
        state->mLine = GetTokenLine();
    return pos;
}

// --- Making an index ---

/// Walks over blocks and enters each. Nesting takes no stack of calls.
class Index_scan {
public:
    Index_scan(CToken_istream& stream, CBlock_index& index, bool isFast)
        : mStream(stream), mIndex(index), mIsFast(isFast) {}

    /// All blocks from the current token on; true if all are sound.
    bool Run() {
        for (auto pos = TokenPosOfBegin(); mStream.AtBegin(); pos = TokenPosOfBegin()) {
            EnterBlock(pos);
            while (!mOpen.empty() && Step()) {
            }
            mOpen.clear();
            mPath.clear();
            if (!mStream.mGood)
                return false;
        }
        return mIsSound && mStream.mGood;
    }

private:
    struct Open {
        std::size_t pathLength; ///< of the parent
        AString name;
    };

    /// Taken before AtBegin looks further ahead; not valid if no block can begin here.
    CAbstract_stream_pos TokenPosOfBegin() {
        const bool mayBegin =
            mStream.Prepare() &&
            (mStream.mBeginWord.empty() || mStream.IsWord(mStream.mBeginKind, mStream.mBeginWord));
        return mayBegin ? mStream.TokenPos() : CAbstract_stream_pos();
    }

    void EnterBlock(const CAbstract_stream_pos& pos) {
        CToken name;
        mStream.TakeBegin(name);
        const std::u16string_view text = BlockName(name);
        mOpen.push_back({mPath.size(), AString(text)});
        if (text.empty())
            return;
        if (!mPath.empty())
            mPath += u'\t';
        mPath += text;
        if (!mIndex.AddEntry(mPath, pos))
            mIsSound = false;
    }

    /// One step inside the innermost open block; false at the end of the input.
    bool Step() {
        if (mStream.AtEnd()) {
            LeaveBlock();
        } else if (mStream.AtEof()) {
            mIsSound = false;
            return false;
        } else {
            const CAbstract_stream_pos pos = TokenPosOfBegin();
            if (mStream.AtBegin())
                EnterBlock(pos);
            else
                SkipItem();
        }
        Recover();
        return true;
    }

    void SkipItem() {
        if (mIsFast) {
            mStream.Next();
            return;
        }
        Block_hold<CBlock_item> item;
        if (Block_reader(mStream).ReadItem(item) != ReadError::kOk)
            mStream.SetFail();
    }

    void LeaveBlock() {
        mStream.ReadEnd();
        if (mStream.Peek().GetKind() == TokenKind::Null)
            mStream.SetFail(); // an ill-formed text
        else if (!mStream.IsEol() && !mStream.AtEof())
            mStream.ReadValue(std::u16string_view(mOpen.back().name));
        mPath.resize(mOpen.back().pathLength);
        mOpen.pop_back();
    }

    void Recover() {
        if (mStream.mGood)
            return;
        mStream.Clear();
        mStream.SkipLine();
        mIsSound = false;
    }

    CToken_istream& mStream;
    CBlock_index& mIndex;
    bool mIsFast;
    bool mIsSound = true;
    AString mPath;
    std::vector<Open> mOpen;
};

bool CToken_istream::BuildIndex(unsigned flags) {
    const CAbstract_stream_pos start = Tell();
    mIndex = std::make_unique<CBlock_index>(AString(CBlock_index::kIndexName));
    mIndex->SetAllLevels((flags & kAllLevels) != 0);
    const bool isSound = Index_scan(*this, *mIndex, (flags & kFastScan) != 0).Run();
    Seek(start);
    return isSound;
}

// --- A stored index ---

bool CToken_istream::GoToStart() {
    CAbstract_stream_pos start(IsBinary() ? 1 : 0); // behind the header
    NewState(start);
    return Seek(start);
}

bool CToken_istream::ReadStoredIndex() {
    const CAbstract_stream_pos here = Tell();
    if (!here.IsValid())
        return false;
    const bool isRead = LoadStoredIndex();
    if (!isRead)
        mIndex.reset();
    Clear();
    Seek(here);
    return isRead;
}

bool CToken_istream::BeginsWithIndex() {
    const CAbstract_stream_pos here = Tell();
    const bool isThere = here.IsValid() && GoToStart() && IsBegin(CBlock_index::kBaseIndexName);
    Clear();
    if (here.IsValid())
        Seek(here);
    return isThere;
}

bool CToken_istream::LoadStoredIndex() {
    if (!GoToStart() || !IsBegin(CBlock_index::kBaseIndexName))
        return false;
    CBlock_index base((AString(CBlock_index::kBaseIndexName)));
    base.Read(*this);
    if (!mGood || !base.Seek(CBlock_index::kIndexName, *this) || !IsBegin(CBlock_index::kIndexName))
        return false;
    mIndex = std::make_unique<CBlock_index>(AString(CBlock_index::kIndexName));
    mIndex->TakeSettings(base);
    mIndex->Read(*this);
    return mGood && !mIndex->GetTable()->HasErrors(true);
}

namespace {

/// An entry that a check looks at.
struct Checked_entry {
    AString path;
    CAbstract_stream_pos pos;

    /// By its path and its level: a top-level block's name may have tabs, and an entry may lie.
    bool IsNested() const {
        return path.find(u'\t') != AString::npos && pos.GetState() && pos.GetState()->mLevel != 0;
    }
};

/// True for the paths of the index blocks and those under them.
bool IsOwnPath(const AString& path) {
    const std::u16string_view top = std::u16string_view(path).substr(0, path.find(u'\t'));
    return IsSameNoCase(top, CBlock_index::kIndexName) ||
           IsSameNoCase(top, CBlock_index::kBaseIndexName);
}

} // namespace

bool CToken_istream::CheckIndex(bool isWhole) {
    const CAbstract_stream_pos here = Tell();
    const bool isSound = CheckEntries(isWhole);
    Clear();
    Seek(here);
    return isSound;
}

/// True at a block whose name ends the path. A name may have tabs of its own.
bool CToken_istream::IsBeginOfPath(std::u16string_view path) {
    for (;;) {
        if (IsBegin(path))
            return true;
        const std::size_t tab = path.find(u'\t');
        if (tab == std::u16string_view::npos)
            return false;
        path.remove_prefix(tab + 1);
    }
}

/// Each entry must stand at a block of its name. When blocks are read whole, those at the top in
/// the order of their positions, and none may begin inside another: so no crafted index makes the
/// stream be read more than twice. Errors of nested blocks are found in the one that holds them.
bool CToken_istream::CheckEntries(bool isWhole) {
    std::vector<Checked_entry> entries;
    for (const CBlockItemPtr& item : *mIndex->GetTable()) {
        Checked_entry entry;
        NewState(entry.pos);
        item->GetName(entry.path);
        if (IsOwnPath(entry.path))
            continue;
        if (!mIndex->FillFrom(*item, entry.pos))
            return false;
        entries.push_back(std::move(entry));
    }
    std::sort(entries.begin(), entries.end(), [](const Checked_entry& a, const Checked_entry& b) {
        return a.pos.mPos < b.pos.mPos;
    });
    std::streamoff end = 0;
    for (const Checked_entry& entry : entries) {
        if (!Seek(entry.pos) || !IsBeginOfPath(entry.path))
            return false;
        if (!isWhole || entry.IsNested())
            continue;
        CBlock block;
        block.Read(*this);
        if (entry.pos.mPos < end || Fail() || block.HasErrors(mIndex->GetAllLevels()))
            return false;
        end = TokenPos().mPos;
    }
    return true;
}

} // namespace io
