#pragma once
#include "readers/ZtOdPdsDstInputConsumer.h"

#include <memory>

class ZtOdPdsRuleReporter;
class ZtOpProgress;

// The second pass over a display-set file: finds the section lines and hands the lines of
// each "[DEFINITION SECTION]" to a ZtOdPdsDefinitionSection of its own. Every other section
// is skipped.
class ZtOdPdsDisplaySetFile : public ZtOdPdsDstInputConsumer {
public:
    // `total` is the count of the first pass; `progress` may be null.
    ZtOdPdsDisplaySetFile(ZtOdPdsDstContext* context, int total, ZtOpProgress* progress)
        : ZtOdPdsDstInputConsumer(context), total_(total), progress_(progress) {}
    ~ZtOdPdsDisplaySetFile() override;

    int Begin() override { return 1; }
    int End() override;
    int Line(ZtUWideStringBuffer& line) override;

private:
    // Ends and destroys the open section, if one is read.
    void CloseSection();
    // What a reporting read says of a line before it is read.
    void ReportLine(ZtOdPdsRuleReporter& reporter, const ZtUWideStringBuffer& line) const;

    int total_;
    ZtOpProgress* progress_;
    std::unique_ptr<ZtOdPdsDstInputConsumer> section_;
};
