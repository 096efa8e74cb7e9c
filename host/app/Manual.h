#pragma once
#include "manual/ProgramManual.h"

// pdsreview's manual page and completion, from its tables of steps, options and exit
// statuses and the usage's examples.
ProgramManual PdsReviewManual();
