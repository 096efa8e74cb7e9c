#pragma once
#include "app/ExitStatus.h"

#include <span>
#include <string>

// The usage text of `pdsreview --help`, made from the tables of steps, options and exit
// statuses.
const char* UsageText();

// What an exit status means, with the steps that can end with it: "(from open, ...)" on a
// line of its own.
std::string ExitStatusMeaning(const ExitStatusKind& status);

// The usage's examples, command lines run from the source folder.
std::span<const char* const> UsageExamples();
