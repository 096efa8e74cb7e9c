#pragma once
#include "check/Finding.h"

#include <string>
#include <vector>

class ReportStream;

// The findings as a SARIF 2.1.0 log, for code-review tools: one run of the tool `tool` at
// `version`, whose rules are the kinds of finding it holds; one result a finding, located by line
// and column in UTF-16 units, with the note in its message and the related place among
// its related locations; every file checked among the artifacts.
void WriteFindingsSarif(ReportStream& out, const std::vector<Finding>& findings,
                        const std::vector<std::wstring>& files, const char* tool,
                        const char* version, int exitStatus);
