#include "displaysets/ZtOdPdsDefinitionSection.h"

#include "readers/ZtOdPdsLineTests.h"
#include "rules/ZtOdPdsDisplaySet.h"
#include "rules/ZtOdPdsDisplaySetDict.h"
#include "ztplugin/ZtOpProgress.h"
#include "ztutil/ZtUWideString.h"

ZtOdPdsDefinitionSection::~ZtOdPdsDefinitionSection() {
    if (current_)
        current_->Release();
    // A section cut short (memory ran out on the way) never reached End: its sets must not
    // stay in the dictionary for the next import to find. After End there is none.
    ZtOdPdsDisplaySetDict::Destroy();
}

int ZtOdPdsDefinitionSection::Line(ZtUWideStringBuffer& line) {
    if (ZtOdPdsIsAngleLine(line) && line == L"<Display Set>") {
        if (current_)
            FinishSet();
        current_ = new ZtOdPdsDisplaySet(GetContext());
        current_->AddRef();
        current_->Begin();
    } else if (current_) {
        current_->Line(line);
    }
    return 1;
}

void ZtOdPdsDefinitionSection::FinishSet() {
    current_->End();
    current_->Release();
    current_ = nullptr;
    ++done_;
    // A file that changed between the passes can have more sets than were counted.
    if (progress_ && total_ > 0)
        progress_->SetProgress(static_cast<double>(done_) / static_cast<double>(total_));
}

int ZtOdPdsDefinitionSection::End() {
    if (current_)
        FinishSet();
    ZtOdPdsDisplaySetDict::Destroy();
    return 1;
}
