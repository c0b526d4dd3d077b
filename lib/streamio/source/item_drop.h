/// Destruction of block trees of any depth.
#pragma once

#include "block_ptr.h"
#include "compact_array.h"

namespace io {

/// Empties a list of children. What nests deeper than some levels waits until the outermost list
/// has been emptied, so that the depth of a tree takes no stack.
void DropItems(Item_list& items) noexcept;

} // namespace io
