#include "displaysets/ZtOdPdsDisplaySetFile.h"

#include "displaysets/ZtOdPdsDefinitionSection.h"
#include "readers/ZtOdPdsLineTests.h"
#include "ztutil/ZtUWideString.h"

ZtOdPdsDisplaySetFile::~ZtOdPdsDisplaySetFile() = default;

void ZtOdPdsDisplaySetFile::CloseSection() {
    if (!section_)
        return;
    section_->End();
    section_.reset();
}

int ZtOdPdsDisplaySetFile::Line(ZtUWideStringBuffer& line) {
    if (ZtOdPdsIsSectionLine(line)) {
        CloseSection();
        if (line == L"[DEFINITION SECTION]") {
            section_ = std::make_unique<ZtOdPdsDefinitionSection>(GetContext(), total_, progress_);
            section_->Begin();
        }
    } else if (section_) {
        section_->Line(line);
    }
    return 1;
}

int ZtOdPdsDisplaySetFile::End() {
    CloseSection();
    return 1;
}
