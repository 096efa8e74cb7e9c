#pragma once
#include "readers/ZtOdPdsDstInputConsumer.h"

class ZtOdPdsDisplaySet;
class ZtOpProgress;

// The lines of one "[DEFINITION SECTION]": hands the lines from each "<Display Set>" line
// to a display set of their own, and finishes each set when the next begins or the
// section ends. Display sets refer only to sets of their own section: the dictionary of
// display sets goes at the section's end.
class ZtOdPdsDefinitionSection : public ZtOdPdsDstInputConsumer {
public:
    // `total` is the count of the first pass; `progress` may be null.
    ZtOdPdsDefinitionSection(ZtOdPdsDstContext* context, int total, ZtOpProgress* progress)
        : ZtOdPdsDstInputConsumer(context), total_(total), progress_(progress) {}
    ~ZtOdPdsDefinitionSection() override;

    int Begin() override { return 1; }
    int End() override;
    int Line(ZtUWideStringBuffer& line) override;

    // Ends the open set, which makes its selection set, and reports the progress.
    void FinishSet();

    int GetDone() const { return done_; }

private:
    int total_;
    int done_ = 0;
    ZtOpProgress* progress_;
    ZtOdPdsDisplaySet* current_ = nullptr;
};
