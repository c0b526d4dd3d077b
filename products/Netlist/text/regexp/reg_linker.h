/// Prepares a program for the matcher.
#pragma once

#include "reg_program.h"

/// Finds the ways that a match takes through the nodes, and the bytes with which it can go on from
/// each. Linear in the nodes.
void LinkRegCode(RegCode& code);
