/// The one translation of the system's file status.
#pragma once

#include <sys/stat.h>

#include "file_status.h"

namespace sys {

FileStatus FileStatusFrom(const struct stat& from);

} // namespace sys
