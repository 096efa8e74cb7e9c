#include "displaysets/ZtOdPdsDisplaySetFile.h"

#include "displaysets/ZtOdPdsDefinitionSection.h"
#include "readers/ZtOdPdsDstContext.h"
#include "readers/ZtOdPdsLineTests.h"
#include "rules/ZtOdPdsRuleReporter.h"
#include "ztutil/ZtUWideString.h"

ZtOdPdsDisplaySetFile::~ZtOdPdsDisplaySetFile() = default;

void ZtOdPdsDisplaySetFile::CloseSection() {
    if (!section_)
        return;
    section_->End();
    section_.reset();
}

int ZtOdPdsDisplaySetFile::Line(ZtUWideStringBuffer& line) {
    if (ZtOdPdsRuleReporter* reporter = GetContext() ? GetContext()->reporter : nullptr)
        ReportLine(*reporter, line);
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

void ZtOdPdsDisplaySetFile::ReportLine(ZtOdPdsRuleReporter& reporter,
                                       const ZtUWideStringBuffer& line) const {
    reporter.NearMiss(line, L"[DEFINITION SECTION]", ZtOdPdsCheck::kSection);
    if (ZtOdPdsIsSectionLine(line))
        reporter.Report(ZtOdPdsCheck::kFactSection, reporter.At(), line.Str());
    else if (!section_ && ZtOdPdsLineStartsWith(line, L"<Display Set>", nullptr))
        reporter.Report(ZtOdPdsCheck::kSetOutsideSection, reporter.At(), line.Str());
    else if (!section_)
        reporter.OutsideSection(line);
}

int ZtOdPdsDisplaySetFile::End() {
    CloseSection();
    return 1;
}
