#include "block_func.h"

#include "block_named_value.h"
#include "block_reader.h"
#include "block_writer.h"
#include "item_drop.h"
#include "names.h"

namespace io {

CBlock_func::CBlock_func(const AString& name)
    : CBlock_func(CToken(TokenKind::SingleQuotedText, name)) {}

CBlock_func::CBlock_func(const CBlock_func& other) : CBlock_getters(other), mName(other.mName) {
    mArgs.reserve(other.mArgs.size());
    for (const Block_hold<CBlock_item>& arg : other.mArgs)
        mArgs.push_back(arg);
}

CBlock_func& CBlock_func::operator=(const CBlock_func& other) {
    if (this == &other)
        return *this;
    CBlock_func copy(other); // what is assigned may hang below this function
    Clear();
    mName = std::move(copy.mName);
    mArgs = std::move(copy.mArgs);
    return *this;
}

CBlock_func::~CBlock_func() {
    DropItems(mArgs);
}

CBlock_func& CBlock_func::Add(const CBlock_ptr<CBlock_func_arg>& arg) {
    if (!arg)
        return *this;
    mArgs.push_back(Block_hold<CBlock_item>(arg.get()));
    ResetCursor();
    return *this;
}

CBlock_func& CBlock_func::operator<<(CToken value) {
    return Add(new CBlock_value(std::move(value)));
}
CBlock_func& CBlock_func::operator<<(const AString& text) {
    return Add(new CBlock_value(text));
}
CBlock_func& CBlock_func::operator<<(double value) {
    return Add(new CBlock_value(value));
}
CBlock_func& CBlock_func::operator<<(int value) {
    return Add(new CBlock_value(value));
}
CBlock_func& CBlock_func::operator<<(long value) {
    return Add(new CBlock_value(value));
}
CBlock_func& CBlock_func::operator<<(unsigned int value) {
    return Add(new CBlock_value(value));
}
CBlock_func& CBlock_func::operator<<(unsigned long value) {
    return Add(new CBlock_value(value));
}
CBlock_func& CBlock_func::operator<<(const CBlock_named_value& value) {
    return Add(new CBlock_named_value(value));
}

void CBlock_func::ResetCursor() const noexcept {
    mCursor = 0;
    mFound = 1;
}

CBlock_ptr<CBlock_func_arg> CBlock_func::Find(const AString& name) const {
    const std::uint32_t count = mArgs.size();
    for (std::uint32_t i = 0; i < count; ++i) {
        const std::uint32_t index = (mCursor + i) % count;
        const CBlock_item& arg = *mArgs[index].get();
        if (IsItemNamed(arg, name) && (!name.empty() || arg.GetNameToken().IsText())) {
            mCursor = index & 0x7FFFFFFF;
            mFound = 1;
            return GetArg(index);
        }
    }
    mFound = 0;
    return {};
}

bool CBlock_func::Get(CBlock_named_value& value) const {
    AString name;
    value.GetName(name);
    const CBlock_ptr<CBlock_func_arg> found = Find(name);
    mFound = found && found->IsNamedValue();
    if (mFound)
        value.SetValue(static_cast<const CBlock_named_value&>(*found).GetValue());
    return mFound;
}

const CToken* CBlock_func::GetLeadToken() const {
    const CBlock_func* func = this;
    while (!func->mArgs.empty()) {
        const CBlock_item* first = func->mArgs[0].get();
        if (!first->IsFunc()) {
            const auto* value = dynamic_cast<const CBlock_getters*>(first);
            return value ? value->GetLeadToken() : nullptr;
        }
        func = static_cast<const CBlock_func*>(first);
    }
    return nullptr;
}

void CBlock_func::Clear() {
    DropItems(mArgs);
    ResetCursor();
}

void CBlock_func::Read(CAbstract_istream& stream) {
    Block_reader(stream).Require(&Block_reader::ReadFunc, *this);
}

void CBlock_func::Write(CAbstract_ostream& stream) const {
    Block_writer(stream).Write(*this);
}

bool CBlock_func::ReadWhole(CAbstract_istream& stream) {
    return ReadItemAs(*this, stream);
}

void CBlock_func::GetName(AString& name) const {
    name = mName.GetText();
}
void CBlock_func::SetName(const AString& name) {
    mName = CToken(TokenKind::SingleQuotedText, name);
}

void CBlock_func::AddStats(Block_stats& stats) const {
    stats.Add(Block_stats::kFunctions, 1);
    stats.Add(Block_stats::kItemBytes, sizeof *this);
    stats.Add(Block_stats::kNameBytes, mName.GetHeldBytes());
    stats.Add(Block_stats::kListBytes, mArgs.capacity() * sizeof *mArgs.begin());
}

} // namespace io
