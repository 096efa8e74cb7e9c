#pragma once

// The usage text of `pdsreview --help`, made from the tables of steps, options and exit
// statuses.
const char* UsageText();
