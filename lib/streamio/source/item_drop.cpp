#include "item_drop.h"

#include <vector>

namespace io {

namespace {

constexpr unsigned kMaxDepth = 64;

/// Lists taken from items that were destroyed too deep inside others. Made by the outermost call.
struct Waiting {
    unsigned depth = 0;
    std::vector<Item_list> lists;
};

thread_local Waiting* tWaiting = nullptr;

} // namespace

void DropItems(Item_list& items) noexcept {
    if (items.empty())
        return;
    if (tWaiting) {
        if (tWaiting->depth == kMaxDepth) {
            tWaiting->lists.push_back(std::move(items));
            return;
        }
        ++tWaiting->depth;
        items.clear();
        --tWaiting->depth;
        return;
    }
    Waiting waiting;
    tWaiting = &waiting;
    items.clear();
    while (!waiting.lists.empty()) {
        Item_list list = std::move(waiting.lists.back());
        waiting.lists.pop_back();
        list.clear();
    }
    tWaiting = nullptr;
}

} // namespace io
