#pragma once
#include "check/FileCheck.h"

#include <string>

class ReviewRun;
struct Step;

// Checks the file that `step` read, as `kind` (a control file with its models and the
// side files of `sideFiles`), and adds to the run's warnings what the plug-in made of it:
// one warning a finding, "STEP FILE: PLACE: MESSAGE; NOTE (PLACE: RELATED) [-WNAME]". Notes are
// left out, and so are findings of models, which the open reports from its own loading.
void AddCheckWarnings(ReviewRun& run, const Step& step, FileKind kind,
                      const SideFiles& sideFiles = {});
