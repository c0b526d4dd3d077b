#include "block.h"

#include <algorithm>
#include <iterator>

#include "block_func.h"
#include "block_named_value.h"
#include "block_reader.h"
#include "block_writer.h"
#include "item_drop.h"
#include "item_walk.h"
#include "name_index.h"
#include "names.h"

namespace io {

namespace {

/// Below so many items a look-up passes over the list.
constexpr std::uint32_t kIndexedSize = 24;

/// An error and the block that met it.
struct Found_error {
    XStreamioError error;
    const CBlock_item* block;
};

bool IsOnSameLine(const Found_error& a, const Found_error& b) {
    return a.error.GetLine() == b.error.GetLine();
}

AString ToText(const Found_error& found) {
    AString name, text;
    found.block->GetName(name);
    text.Format(u"%s:%d: %s", name, found.error.GetLine(), found.error.GetMessage());
    return text;
}

} // namespace

CBlock::CBlock() = default;
CBlock::CBlock(const AString& name) : CBlock(CToken(TokenKind::SingleQuotedText, name)) {}
CBlock::CBlock(CToken name) : mName(std::move(name)) {}
CBlock::CBlock(const CBlock& other) : CBlock_item(other), mName(other.mName) {
    Append(other);
}
CBlock::~CBlock() {
    DropItems(mItems);
}

CBlock& CBlock::operator=(const CBlock& other) {
    if (this == &other)
        return *this;
    CBlock copy(other); // what is assigned may hang below this block
    Clear();
    mName = std::move(copy.mName);
    mItems = std::move(copy.mItems);
    return *this;
}

void CBlock::AddItem(const CBlockItemPtr& item) {
    if (!item)
        return;
    mItems.push_back(Block_hold<CBlock_item>(item.get()));
    if (mNameIndex)
        mNameIndex->Add(mItems, mItems.size() - 1);
    mCursor = 0;
}

void CBlock::Add(const CBlock& block) {
    AddItem(new CBlock(block));
}
void CBlock::Add(const CBlock_func& func) {
    AddItem(new CBlock_func(func));
}
void CBlock::Add(const CBlock_named_value& value) {
    AddItem(new CBlock_named_value(value));
}

void CBlock::Append(const CBlock& a_block) {
    USE_ASSERT(this != &a_block);
    if (this == &a_block)
        return;
    const std::size_t size = std::size_t{mItems.size()} + a_block.GetSize();
    if (size > mItems.capacity()) // many small ones cost no more than one large one
        mItems.reserve(std::max(size, std::size_t{mItems.size()} * 2));
    for (const CBlockItemPtr& item : a_block)
        AddItem(item);
}

std::uint32_t CBlock::NextSlot(std::uint32_t slot) const noexcept {
    while (slot < mItems.size() && !mItems[slot].get())
        ++slot;
    return slot;
}

std::uint32_t CBlock::FindSlot(std::u16string_view name) const {
    const auto isNamed = [&](std::uint32_t slot) {
        const CBlock_item* item = mItems[slot].get();
        return item && item->IsNamed() && IsItemNamed(*item, name);
    };
    if (!mNameIndex && mItems.size() > kIndexedSize)
        mNameIndex = std::make_unique<Name_index>(mItems);
    if (mNameIndex) {
        if (mCursor < mItems.size() && mNameIndex->IsFirst(mCursor) && isNamed(mCursor))
            return mCursor;
        const std::uint32_t slot = mNameIndex->Find(name);
        return slot == Name_index::kNone ? mItems.size() : slot;
    }
    std::uint32_t slot = 0;
    while (slot < mItems.size() && !isNamed(slot))
        ++slot;
    return slot;
}

CBlock::Position CBlock::FindName(std::u16string_view name) const {
    const std::uint32_t slot = FindSlot(name);
    mFound = slot < mItems.size();
    if (mFound)
        mCursor = (slot + 1) & 0x7FFFFFFF;
    return Position(*this, slot);
}

CBlock::Position CBlock::Find(const AString& name) const {
    return FindName(name);
}

const CBlock_item* CBlock::FindOfClass(const CBlock_item& target,
                                       bool (CBlock_item::*isOfClass)() const) const {
    const Position found = FindName(Name_text(NameTextToken(target)));
    mFound = mFound && (found.operator->()->*isOfClass)();
    return mFound ? found.operator->() : nullptr;
}

bool CBlock::Get(CBlock_named_value& value) const {
    if (const CBlock_item* item = FindOfClass(value, &CBlock_item::IsNamedValue))
        value.SetValue(static_cast<const CBlock_named_value*>(item)->GetValue());
    return mFound;
}

bool CBlock::Get(CBlock& block) const {
    if (const CBlock_item* item = FindOfClass(block, &CBlock_item::IsBlock))
        block = *static_cast<const CBlock*>(item);
    return mFound;
}

bool CBlock::Get(CBlock_func& func) const {
    if (const CBlock_item* item = FindOfClass(func, &CBlock_item::IsFunc))
        func = *static_cast<const CBlock_func*>(item);
    return mFound;
}

void CBlock::Remove(Position position) {
    const std::uint32_t slot = position.mSlot;
    if (slot >= mItems.size())
        return;
    const CBlock_item* block_item = mItems[slot].get();
    USE_ASSERT(block_item != 0);
    if (!block_item)
        return;
    mCursor = 0;
    if (!mNameIndex) {
        mItems.erase(slot);
        return;
    }
    // Slots must stay while the index lasts.
    mNameIndex->Remove(slot);
    mItems[slot] = Block_hold<CBlock_item>();
    if (mNameIndex->GetRemovedCount() > mItems.size() / 2)
        DropEmptySlots();
}

/// Without an index nobody knows of empty slots.
void CBlock::ForgetNames() {
    if (mNameIndex && mNameIndex->GetRemovedCount() != 0)
        DropEmptySlots();
    mNameIndex.reset();
}

void CBlock::DropEmptySlots() {
    Item_list items;
    items.reserve(GetSize());
    for (Block_hold<CBlock_item>& item : mItems)
        if (item.get())
            items.push_back(std::move(item));
    mItems = std::move(items);
    mNameIndex.reset();
}

unsigned CBlock::GetSize() const {
    return mItems.size() - (mNameIndex ? mNameIndex->GetRemovedCount() : 0);
}

void CBlock::Clear() {
    mNameIndex.reset();
    DropItems(mItems);
    mErrors.clear();
    mCursor = 0;
}

bool CBlock::HasErrors(bool recursive) const {
    if (!recursive)
        return !mErrors.empty();
    Item_walk walk(*this);
    while (const CBlock_item* item = walk.NextItem())
        if (item->IsBlock() && static_cast<const CBlock*>(item)->HasErrors(false))
            return true;
    return false;
}

bool CBlock::GetErrors(std::vector<AString>& errors, bool recursive) const {
    std::vector<Found_error> found;
    Item_walk walk(*this);
    while (const CBlock_item* item = walk.NextItem()) {
        if (item->IsBlock())
            for (const XStreamioError& error : static_cast<const CBlock*>(item)->mErrors)
                found.push_back({error, item});
        if (!recursive)
            break;
    }
    std::stable_sort(found.begin(), found.end(), [](const Found_error& a, const Found_error& b) {
        return a.error.GetLine() < b.error.GetLine();
    });
    const auto last = std::unique(found.begin(), found.end(), IsOnSameLine);
    std::transform(found.begin(), last, std::back_inserter(errors), ToText);
    return !found.empty();
}

void CBlock::Read(CAbstract_istream& stream) {
    Block_reader(stream).ReadBlock(*this);
}

void CBlock::Write(CAbstract_ostream& stream) const {
    Block_writer(stream).Write(*this);
}

bool CBlock::ReadWhole(CAbstract_istream& stream) {
    Read(stream);
    return !HasErrors(true);
}

void CBlock::GetName(AString& name) const {
    name = BlockName(mName);
}
void CBlock::SetName(const AString& name) {
    mName = CToken(TokenKind::SingleQuotedText, name);
}

void CBlock::AddStats(Block_stats& stats) const {
    stats.Add(Block_stats::kBlocks, 1);
    stats.Add(Block_stats::kItemBytes, sizeof *this);
    stats.Add(Block_stats::kNameBytes, mName.GetHeldBytes());
    stats.Add(Block_stats::kListBytes, mItems.capacity() * sizeof *mItems.begin() +
                                           mErrors.capacity() * sizeof *mErrors.begin());
    if (mNameIndex)
        stats.Add(Block_stats::kIndexBytes, mNameIndex->GetHeldBytes());
}

} // namespace io
