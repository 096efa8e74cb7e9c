#include "displaysets/ZtOdPdsDefinitionSection.h"

#include "readers/ZtOdPdsDstContext.h"
#include "readers/ZtOdPdsLineTests.h"
#include "rules/ZtOdPdsDisplaySet.h"
#include "rules/ZtOdPdsDisplaySetDict.h"
#include "rules/ZtOdPdsRuleReporter.h"
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
    ZtOdPdsRuleReporter* reporter = GetContext() ? GetContext()->reporter : nullptr;
    if (ZtOdPdsIsAngleLine(line) && line == L"<Display Set>") {
        if (current_)
            FinishSet();
        current_ = new ZtOdPdsDisplaySet(GetContext());
        current_->AddRef();
        if (reporter)
            reporter->SetBegins(current_);
        current_->Begin();
        return 1;
    }
    if (reporter)
        reporter->NearMiss(line, L"<Display Set>", ZtOdPdsCheck::kMarkerLine);
    if (current_)
        current_->Line(line);
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
    // References that found no set when their own set ended are judged now that the
    // section's every set is known.
    if (ZtOdPdsRuleReporter* reporter = GetContext() ? GetContext()->reporter : nullptr)
        reporter->EndSection(
            [](const wchar_t* name) { return ZtOdPdsDisplaySetDict::Instance()->Find(name); });
    ZtOdPdsDisplaySetDict::Destroy();
    return 1;
}
