// The index that CToken_ostream builds while it writes.

#include "assertion.h"
#include "block_index.h"
#include "code_page.h"
#include "token_istring.h"
#include "token_ostring.h"

namespace io {

namespace {

/// The base index goes out with numbers of one width, so that it can be written again in place.
constexpr int kNumberWidth = 12;
constexpr int kBaseIndentWidth = 2;

/// While it lasts numbers go out plainly and names in quotes, whatever a stream has been set to.
class Plain_scope {
public:
    Plain_scope(CToken_ostream& stream, CRawOstream& raw)
        : mStream(stream), mRaw(raw), mFlags(raw.flags(std::ios_base::dec)),
          mWidth(stream.SetWidth(-1)), mIsHex(stream.SetHex(false)), mIsBlank(SetBlank(true)),
          mIsQuoted(stream.SetQuoteBlockNames(true)) {}
    ~Plain_scope() {
        mStream.SetQuoteBlockNames(mIsQuoted);
        SetBlank(mIsBlank);
        mStream.SetHex(mIsHex);
        mStream.SetWidth(mWidth);
        mRaw.flags(mFlags);
    }
    Plain_scope(const Plain_scope&) = delete;
    Plain_scope& operator=(const Plain_scope&) = delete;

private:
    bool SetBlank(bool isOn) { return mStream.SetAutoBlank(&isOn); }

    CToken_ostream& mStream;
    CRawOstream& mRaw;
    std::ios_base::fmtflags mFlags;
    int mWidth;
    bool mIsHex, mIsBlank, mIsQuoted;
};

} // namespace

bool CToken_ostream::BuildIndex(unsigned flags) {
    if (mBuildIndex)
        return true;
    if (TellRaw() != GetStartPos())
        return false;
    mIndex = std::make_unique<CBlock_index>(AString(CBlock_index::kIndexName));
    mIndex->SetAllLevels((flags & kAllLevels) != 0);
    mIndexBeginWord = mBeginWord;
    mIndexEndWord = mEndWord;
    mIndexIndentChar = mIndentChar;
    mIndexCrLf = mTokenStreamBuf->GetCrLf();
    const Plain_scope plain(*this, *mStream);
    WriteBaseIndex(BeginPos());
    mBuildIndex = true;
    return true;
}

/// Where the begin word that is written next will stand, with a state for an index entry.
CAbstract_stream_pos CToken_ostream::BeginPos() const {
    CAbstract_stream_pos pos(TellRaw());
    NewState(pos);
    pos.GetState()->mLevel = mLevel;
    if (auto* state = dynamic_cast<CToken_stream_state*>(pos.GetState()))
        state->mLine = GetLine();
    if (!IsBinary() && pos.IsValid()) {
        const AString indent = GetIndent();
        const bool isUtf8 = mTokenStreamBuf->GetEncoding() == StreamEncoding::Utf8;
        pos.mPos += static_cast<std::streamoff>(isUtf8 ? codepage::Utf16ToUtf8Length(indent)
                                                       : indent.size());
    }
    return pos;
}

/// The name that a block will be read with: one with quotes of its own goes out as it stands, and a
/// CR comes back as LF.
AString CToken_ostream::GetNameReadBack(std::u16string_view name) const {
    if (IsBinary() || name.find_first_of(u"'\"\r") == std::u16string_view::npos)
        return AString(name);
    CToken_ostring written(mGrammar);
    written.SetQuoteBlockNames(mQuoteBlockNames);
    static_cast<CToken_ostream&>(written).WriteBlockName(name);
    return CToken_istring(AString(written.GetView()), mGrammar).PeekToken().GetText();
}

void CToken_ostream::NoteBlockBegin(std::u16string_view name) {
    AString path = mOpenBlocks.empty() ? AString() : mOpenBlocks.back() + u'\t';
    path += GetNameReadBack(name);
    mIndex->AddEntry(path, BeginPos());
    mOpenBlocks.push_back(std::move(path));
}

/// Writes the block in front that tells where the index stands. It has the same size each time.
void CToken_ostream::WriteBaseIndex(const CAbstract_stream_pos& index) {
    CBlock_index base{AString(CBlock_index::kBaseIndexName)};
    base.TakeSettings(*mIndex);
    base.AddEntry(CBlock_index::kIndexName, index);
    const int oldWidth = SetWidth(kNumberWidth);
    const char16_t oldFill = SetFill(u'0');
    const int oldIndentWidth = SetIndentWidth(kBaseIndentWidth);
    const bool oldCrLf = mTokenStreamBuf->SetCrLf(mIndexCrLf);
    base.Write(*this);
    mTokenStreamBuf->SetCrLf(oldCrLf);
    SetIndentWidth(oldIndentWidth);
    SetFill(oldFill);
    SetWidth(oldWidth);
}

void CToken_ostream::FinishIndex() {
    mBuildIndex = false;
    while (mLevel != 0)
        PopLevel();
    EndLine();
    const CAbstract_stream_pos end = Tell();
    // In binary a position of more than 31 bits takes other room: the index then stays unused.
    constexpr std::streamoff kMaxBinaryPos = 0x7FFFFFFF;
    if (!end.IsValid() || (IsBinary() && end.mPos > kMaxBinaryPos))
        return;
    CAbstract_stream_pos start(GetStartPos());
    NewState(start);
    if (!Seek(start))
        return;
    mBeginWord = mIndexBeginWord;
    mEndWord = mIndexEndWord;
    mIndentChar = mIndexIndentChar;
    const Plain_scope plain(*this, *mStream);
    WriteBaseIndex(end);
    if (Seek(end))
        mIndex->Write(*this);
}

} // namespace io
