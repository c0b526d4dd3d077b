/// Reading of an open directory.
#pragma once

#include <string>
#include <vector>

namespace sys {

/// Appends the names in an open directory without "." and "..", in no order; 0 or the error number.
int ReadNames(int directory, std::vector<std::string>& names);

} // namespace sys
