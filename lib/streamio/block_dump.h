/// Trees and tokens as text, for tests and for a look at what was read.
#pragma once

#include <string>

#include "block_item.h"

namespace io {

/// A token with its kind, in UTF-8: `word`, `'single'`, `"double"`, `<cdata>`, `true`, `false`, `~`
/// for Null, a number with the first letters of its kind as in `3i` `1.5d` `31x` `4us`, any other
/// kind by its name and text as in `Symbol +`.
QUOREL_API std::string DumpToken(const CToken& token);

/// An item and what is below it, with names as tokens: `A{x=3i; f(1i, 'a'); v[1i 2i]; B{}}`. A
/// block with errors has them behind it, code and line each: `A{}!7@2`.
QUOREL_API std::string DumpItem(const CBlock_item& item);

} // namespace io
