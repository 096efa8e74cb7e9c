#pragma once
#include "bcf/BcfTopic.h"
#include "review/Actions.h"

#include <optional>
#include <string>

class ZtOpProgress;

struct BcfExportOptions {
    BcfVersion version = BcfVersion::k21;
    std::string author; // empty: the user's name
};

// Whether this build reads and writes BCF at all.
bool BcfAvailable();

// Writes the document's review tags as a BCF archive, a topic a tag. Its dates are
// SOURCE_DATE_EPOCH's time where that is set, so that the same document gives the same
// bytes, else the present time.
StepOutcome ExportBcf(ReviewRun& run, const Step& step, const BcfExportOptions& options);
// Brings the topics of a BCF archive into the document as saved views with their tags
// and comments, through the library's tag import.
StepOutcome ImportBcf(ReviewRun& run, const Step& step, ZtOpProgress* progress);
