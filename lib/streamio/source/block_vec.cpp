#include "block_vec.h"

#include "block_reader.h"
#include "block_writer.h"

namespace io {

CBlock_vec::CBlock_vec(const CBlock_vec& other) : CBlock_getters(other), mName(other.mName) {
    *this = other;
}

CBlock_vec& CBlock_vec::operator=(const CBlock_vec& other) {
    if (this == &other)
        return *this;
    Clear();
    mName = other.mName;
    Reserve(other.GetSize());
    for (const CToken& element : other)
        Add(element);
    return *this;
}

void CBlock_vec::Add(const CToken& element) {
    mElements.push_back(element);
    mCursor = 0;
    mFound = 1;
}

bool CBlock_vec::Next(CToken& element) {
    mFound = mCursor < mElements.size();
    if (mFound)
        element = mElements[mCursor++];
    return mFound;
}

const CToken* CBlock_vec::GetLeadToken() const {
    return mElements.empty() ? nullptr : mElements.begin();
}

void CBlock_vec::Clear() {
    mElements.clear();
    mCursor = 0;
    mFound = 1;
}

void CBlock_vec::Read(CAbstract_istream& stream) {
    Block_reader(stream).Require(&Block_reader::ReadVec, *this);
}

void CBlock_vec::Write(CAbstract_ostream& stream) const {
    Block_writer(stream).WriteVec(*this);
}

bool CBlock_vec::ReadWhole(CAbstract_istream& stream) {
    return ReadItemAs(*this, stream);
}

void CBlock_vec::GetName(AString& name) const {
    name = mName.GetText();
}
void CBlock_vec::SetName(const AString& name) {
    mName = CToken(TokenKind::SingleQuotedText, name);
}

void CBlock_vec::AddStats(Block_stats& stats) const {
    stats.Add(Block_stats::kVectors, 1);
    stats.Add(Block_stats::kItemBytes, sizeof *this);
    stats.Add(Block_stats::kNameBytes, mName.GetHeldBytes());
    stats.Add(Block_stats::kListBytes, mElements.capacity() * sizeof(CToken));
    for (const CToken& element : mElements)
        stats.Add(Block_stats::kValueBytes, element.GetHeldBytes());
}

} // namespace io
