#pragma once
#include "manual/ProgramManual.h"

#include <string>

// A bash completion script for a program: after the program's name it offers the steps
// and, after a dash, the options; after a step or option that takes an argument, the
// files (of its pattern) or choices the argument may be, and nothing for a free value.
std::string BashCompletion(const ProgramManual& manual);
