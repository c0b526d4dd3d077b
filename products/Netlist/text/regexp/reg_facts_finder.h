/// Works out the facts of a program.
#pragma once

#include "reg_facts.h"
#include "reg_places.h"

/// The facts of a linked program.
RegFacts FindRegFacts(const RegCode& code);
