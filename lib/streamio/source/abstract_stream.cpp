#include "abstract_stream.h"

#include "assertion.h"
#include "block_index.h"
#include "stream_operators.h"

namespace io {

CAbstract_stream::CAbstract_stream() = default;
CAbstract_stream::~CAbstract_stream() = default;

bool CAbstract_stream::SeekBlock(const AString& path) {
    return mIndex && !mIndex->IsEmpty() && mIndex->Seek(path, *this);
}

bool CAbstract_stream::SetBeginWord(std::u16string_view word) {
    mBeginWord = word;
    return true;
}

bool CAbstract_stream::SetEndWord(std::u16string_view word) {
    mEndWord = word;
    return true;
}

CAbstract_stream_pos CAbstract_stream::Tell() const {
    CAbstract_stream_pos pos(TellRaw());
    SaveState(pos);
    return pos;
}

bool CAbstract_stream::Seek(const CAbstract_stream_pos& pos) {
    if (!pos.IsValid())
        return false;
    const std::streamoff old = TellRaw();
    const bool isThere = SeekRaw(pos.mPos);
    USE_ASSERT_TEXT(isThere, "(ACharStreamOff)new_pos == (ACharStreamOff)pos.mPos");
    if (isThere)
        RestoreState(pos);
    else if (old >= 0)
        SeekRaw(old);
    return isThere;
}

CAbstract_ostream& EndLine(CAbstract_ostream& stream) {
    stream.EndLine();
    return stream;
}
CAbstract_ostream& NewLine(CAbstract_ostream& stream) {
    stream.NewLine();
    return stream;
}
CAbstract_istream& SkipLine(CAbstract_istream& stream) {
    stream.SkipLine();
    return stream;
}
CAbstract_istream& ReadEol(CAbstract_istream& stream) {
    stream.ReadEol();
    return stream;
}

} // namespace io
