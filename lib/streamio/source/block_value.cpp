#include "block_value.h"

#include "block_named_value.h"
#include "block_reader.h"
#include "block_writer.h"
#include "token_binarystreambuf.h"

namespace io {

CBlock_value::CBlock_value(const AString& text) : mValue(TokenKind::SingleQuotedText, text) {}
CBlock_value::CBlock_value(double value) noexcept : mValue(TokenKind::Double, value) {}
CBlock_value::CBlock_value(int value) noexcept : mValue(TokenKind::Int, value) {}
CBlock_value::CBlock_value(long value) noexcept
    : mValue(TokenKind::Long, static_cast<double>(value)) {}
CBlock_value::CBlock_value(unsigned int value) noexcept : mValue(TokenKind::UnsignedInt, value) {}
CBlock_value::CBlock_value(unsigned long value) noexcept
    : mValue(TokenKind::UnsignedLong, static_cast<double>(value)) {}

void CBlock_value::Read(CAbstract_istream& stream) {
    Block_reader(stream).Require(&Block_reader::ReadValue, *this);
}

void CBlock_value::Write(CAbstract_ostream& stream) const {
    Block_writer(stream).WriteValue(mValue);
}

unsigned CBlock_value::GetBinarySize(CAbstract_ostream&) const {
    return CToken_binarystreambuf::GetBinarySize(mValue);
}

bool CBlock_value::ReadWhole(CAbstract_istream& stream) {
    CBlock_value::Read(stream);
    return true;
}

void CBlock_value::AddStats(Block_stats& stats) const {
    stats.Add(Block_stats::kValues, 1);
    stats.Add(Block_stats::kItemBytes, sizeof *this);
    stats.Add(Block_stats::kValueBytes, mValue.GetHeldBytes());
}

void CBlock_named_value::Read(CAbstract_istream& stream) {
    Block_reader(stream).Require(&Block_reader::ReadNamedValue, *this);
}

void CBlock_named_value::Write(CAbstract_ostream& stream) const {
    Block_writer(stream).WriteNamedValue(*this);
}

bool CBlock_named_value::ReadWhole(CAbstract_istream& stream) {
    return ReadItemAs(*this, stream);
}

void CBlock_named_value::GetName(AString& name) const {
    name = mName.GetText();
}
void CBlock_named_value::SetName(const AString& name) {
    mName = CToken(TokenKind::SingleQuotedText, name);
}

void CBlock_named_value::AddStats(Block_stats& stats) const {
    stats.Add(Block_stats::kNamedValues, 1);
    stats.Add(Block_stats::kItemBytes, sizeof *this);
    stats.Add(Block_stats::kNameBytes, mName.GetHeldBytes());
    stats.Add(Block_stats::kValueBytes, GetValue().GetHeldBytes());
}

} // namespace io
