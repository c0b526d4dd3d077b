#include "block_index.h"

#include <charconv>
#include <cstdio>

#include "abstract_stream.h"
#include "block_func.h"
#include "block_named_value.h"
#include "block_reader.h"
#include "block_time_func.h"
#include "names.h"

namespace io {

namespace {

constexpr char16_t kProperties[] = u"properties";
constexpr char16_t kAllLevelsName[] = u"all_levels";
constexpr char16_t kTimeName[] = u"time";
constexpr char16_t kVersionName[] = u"version";
constexpr char16_t kPosName[] = u"pos";

/// Digits of every number in the base index.
constexpr int kPosDigits = 12;

/// A position as a token. Kind Long goes out in its 32 bits; a greater one keeps all its digits as
/// source text.
CToken PosToken(std::streamoff pos) {
    const auto number = static_cast<double>(pos);
    if (number <= GetIntegerRange(TokenKind::Long).highest)
        return CToken(TokenKind::Long, number);
    char digits[32];
    const int length =
        std::snprintf(digits, sizeof digits, "%0*lld", kPosDigits, static_cast<long long>(pos));
    return CToken(TokenKind::Long, number,
                  std::string_view(digits, static_cast<std::size_t>(length)));
}

/// The longest position that a double holds exactly.
constexpr double kMaxPos = 9007199254740992.0;

} // namespace

CBlock_index::CBlock_index() : mTime(std::time(nullptr)) {}

CBlock_index::CBlock_index(const AString& name) : CBlock_index() {
    mIndexBlock = CBlock_ptr<CBlock>(new CBlock(name));
    USE_ASSERT_TEXT(mIndexBlock.get() != nullptr, "mIndexBlock != 0");
}

void CBlock_index::Clear() {
    if (mIndexBlock)
        mIndexBlock->Clear();
    mPathUnits = 0;
}

bool CBlock_index::IsEmpty() const {
    return !mIndexBlock || mIndexBlock->IsEmpty();
}

void CBlock_index::TakeSettings(const CBlock_index& other) noexcept {
    mAllLevels = other.mAllLevels;
    mTime = other.mTime;
    mVersion = other.mVersion;
}

bool CBlock_index::AddEntry(const AString& path, const CAbstract_stream_pos& pos) {
    constexpr std::size_t kFreeUnits = 0x10000;
    constexpr std::size_t kUnitsPerUnit = 16;
    USE_ASSERT_TEXT(mIndexBlock.get() != nullptr, "mIndexBlock != 0");
    if (!mIndexBlock || !pos.IsValid())
        return false;
    if (!mAllLevels && pos.GetState() && pos.GetState()->mLevel != 0)
        return true;
    if (mPathUnits + path.size() > kFreeUnits + kUnitsPerUnit * static_cast<std::size_t>(pos.mPos))
        return false;
    mPathUnits += path.size();
    mIndexBlock->Remove(mIndexBlock->Find(path));
    CBlock_func entry(path);
    entry << CBlock_named_value(AString(kPosName), PosToken(pos.mPos));
    if (pos.GetState())
        pos.GetState()->WriteTo(entry);
    mIndexBlock->Add(entry);
    return true;
}

bool CBlock_index::FillFrom(const CBlock_item& item, CAbstract_stream_pos& pos) {
    if (!item.IsFunc())
        return false;
    CBlock_func entry(static_cast<const CBlock_func&>(item));
    CBlock_named_value number{AString(kPosName)};
    double raw = -1;
    if (!entry.Get(number) || !number.Get(raw) || !(raw >= 0 && raw <= kMaxPos))
        return false;
    pos.mPos = static_cast<std::streamoff>(raw);
    if (pos.GetState())
        pos.GetState()->ReadFrom(entry);
    return true;
}

bool CBlock_index::FindEntry(const AString& path, CAbstract_stream_pos& pos) const {
    if (IsEmpty())
        return false;
    const CBlock::Position found = mIndexBlock->Find(path);
    return found != mIndexBlock->end() && FillFrom(*found.operator->(), pos);
}

bool CBlock_index::Seek(const AString& path, CAbstract_stream& stream) const {
    CAbstract_stream_pos pos;
    stream.NewState(pos);
    return FindEntry(path, pos) && stream.Seek(pos);
}

void CBlock_index::Read(CAbstract_istream& stream) {
    USE_ASSERT_TEXT(mIndexBlock.get() != nullptr, "mIndexBlock != 0");
    if (!mIndexBlock)
        return;
    AString name;
    mIndexBlock->GetName(name);
    Clear();
    if (!stream.IsBegin(name)) {
        stream.SetFail();
        return;
    }
    const CBlock_ptr<CBlock> table(new CBlock());
    table->Read(stream);
    CBlock properties{AString(kProperties)};
    if (table->Get(properties)) {
        CBlock_named_value allLevels{AString(kAllLevelsName)};
        CBlock_named_value version{AString(kVersionName)};
        CBlock_func time{AString(kTimeName)};
        if (properties.Get(allLevels))
            allLevels.Get(mAllLevels);
        if (properties.Get(version))
            version.Get(mVersion);
        if (properties.Get(time))
            mTime = CBlock_time_func::GetTime(time);
    }
    mIndexBlock = table;
}

void CBlock_index::Write(CAbstract_ostream& stream) const {
    AString name;
    if (mIndexBlock)
        mIndexBlock->GetName(name);
    CBlock block(name);
    if (name == kBaseIndexName) {
        CBlock properties{AString(kProperties)};
        properties.Add(CBlock_named_value(AString(kAllLevelsName), mAllLevels));
        properties.Add(CBlock_time_func(AString(kTimeName), std::time(nullptr)));
        properties.Add(CBlock_named_value(AString(kVersionName), mVersion));
        block.Add(properties);
    }
    if (mIndexBlock)
        block.Append(*mIndexBlock);
    block.Write(stream);
}

} // namespace io
