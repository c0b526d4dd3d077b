#include "netlist_edit_cmd.h"

NetlistEditCmd::~NetlistEditCmd() = default;
