#include "bcf/BcfSteps.h"

// Debian ships neither libzip nor libxml2 for MinGW, so the Windows build has no BCF.
namespace {

constexpr const char* kNoBcf = "this build reads and writes no BCF; the Windows build is made "
                               "without libzip and libxml2";

} // namespace

bool BcfAvailable() {
    return false;
}

StepOutcome ExportBcf(ReviewRun&, const Step& step, const BcfExportOptions&) {
    return {0, step.name + " " + step.argument + ": " + kNoBcf, {}, {}, {}};
}

StepOutcome ImportBcf(ReviewRun&, const Step& step, ZtOpProgress*) {
    return {0, step.name + " " + step.argument + ": " + kNoBcf, {}, {}, {}};
}
