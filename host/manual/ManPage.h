#pragma once
#include "manual/ProgramManual.h"

#include <string>

// The manual page of a program, in man(7) roff, for section 1. The same manual gives the
// same bytes: the page carries no date.
std::string ManPage(const ProgramManual& manual);
