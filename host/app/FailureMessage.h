#pragma once
#include "ztutil/ZtUFileScope.h"

#include <string>
#include <vector>

class ZtOpState;
struct Step;

// What went wrong in a step whose status is `status`, for the user: the status code
// covers several causes, so the host looks at the step's file and the document to say
// which one applies, with the operating system's reason where there is one. `writes`
// are the failures of the host's write streams during the step.
std::string ExplainFailure(const Step& step, int status,
                           const std::vector<ZtUFileScope::Failure>& writes,
                           const ZtOpState& state);
