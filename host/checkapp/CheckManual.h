#pragma once
#include "manual/ProgramManual.h"

// pdscheck's manual page and completion, from its table of options.
ProgramManual PdsCheckManual();
