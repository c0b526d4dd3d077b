/// Where the files that come with the system are.
#pragma once

#include <string>

#include "quorel_export.h"
#include "status.h"

/// The folder that holds config/ and samples/, with a closing slash; empty when none is found. The
/// first that holds config/NetlistEditor.cfg of:
///
/// 1. the folder that the environment variable "QUOREL_DATA_DIR" names
/// 2. ../share/quorel beside the folder of the running program: an installed tree
/// 3. the folders above that of the running program, four at most: a build tree in its source tree
QUOREL_API std::string FindDataDirectory();

/// The syntax configuration that came with the system; empty when it isn't found.
QUOREL_API std::string FindConfigFile();
/// Its folder, with a closing slash, for the directories of a desktop; empty likewise.
QUOREL_API std::string FindConfigDirectory();

/// The folder of the running program, with a closing slash; empty when the system can't tell.
QUOREL_API std::string ProgramDirectory();

/// The loadable module: "Netlist.so" beside the running program, else the file registered for the
/// factory's class id. On failure `path` is empty and the reason names both places.
QUOREL_API sys::Status FindModule(std::string& path);
