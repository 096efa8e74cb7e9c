#pragma once
#include "check/Finding.h"

#include <cstddef>
#include <string>
#include <vector>

class ReportStream;

// How many findings there are of each weight.
struct FindingCounts {
    std::size_t errors = 0;
    std::size_t warnings = 0;
    std::size_t notes = 0;
};
FindingCounts CountFindings(const std::vector<Finding>& findings);

// The findings as a compiler gives them: "FILE:LINE:COL: warning: MESSAGE [-Wname]", the
// source line with a caret under the column, then notes with what the system does
// instead and the places a finding refers to; a last line counts the findings.
void WriteFindingsText(ReportStream& out, const std::vector<Finding>& findings);

// The same facts as one JSON document: the files checked, each finding with its place,
// weight, name, message, note and related place, the counts and the exit status.
void WriteFindingsJson(ReportStream& out, const std::vector<Finding>& findings,
                       const std::vector<std::wstring>& files, int exitStatus);

// A path as a URI reference: relative paths stay relative, absolute ones become file:
// URIs; every byte but the unreserved ones and '/' is percent-encoded.
std::string PathUri(const std::wstring& path);
