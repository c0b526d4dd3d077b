/// Where the files that come with the system are.
#pragma once

#include <string>

#include "quorel_export.h"
#include "status.h"

/// The folder that holds config/ and samples/, with a closing slash; empty when none is found. The
/// first that holds config/NetlistEditor.cfg of:
///
/// 1. the environment variable "QUOREL_DATA_DIR", if it is set
/// 2. ../share/quorel beside the folder of the running program: an installed tree
/// 3. the folders above that of the running program, four at most: a build tree in its source tree
QUOREL_API std::string FindDataDirectory();

/// The folder of the running program, with a closing slash; empty when the system can't tell.
QUOREL_API std::string ProgramDirectory();

/// The loadable module: "Netlist.so" beside the running program, else the file registered for the
/// factory's class id. On failure `path` is empty and the reason names both places.
QUOREL_API sys::Status FindModule(std::string& path);
