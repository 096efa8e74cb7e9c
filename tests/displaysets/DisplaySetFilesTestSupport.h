#pragma once
#include "support/ZtTestFiles.h"
#include "ztplugin/ZtOpFindSpec.h"
#include "ztplugin/ZtOpProgress.h"
#include "ztplugin/ZtOpSavedItem.h"
#include "ztplugin/ZtOpSelectionSet.h"
#include "ztutil/ZtUSysString.h"

#include <functional>
#include <string>
#include <vector>

inline std::wstring Fixture(const char* name) {
    return ZtTestWide(std::string(ZT_TEST_DIR "/fixtures/") + name);
}

// Records every fraction reported, and can act when one is.
class RecordingProgress : public ZtOpProgress {
public:
    std::vector<double> fractions;
    std::function<void()> onReport;

protected:
    void OnProgress(double overall) override {
        fractions.push_back(overall);
        if (onReport)
            onReport();
    }
};

// The selection sets of a folder as "name: value op flags, ..." lines, every condition
// with its operator and flags.
inline std::vector<std::string> DescribeSets(const ZtOpGroupItem& folder) {
    std::vector<std::string> out;
    for (std::size_t i = 0; i < folder.GetNumChildren(); ++i) {
        const auto* set = static_cast<const ZtOpSelectionSet*>(folder.GetChild(i));
        std::string line = ZtUSysString::WideToUtf8(set->GetName().Str()) + ":";
        const ZtOpFindSpec* spec = set->GetImplicitSelection().GetImplicitFindSpec();
        for (std::size_t k = 0; spec && k < spec->GetNumConditions(); ++k) {
            const ZtOpFindCondition& c = spec->GetCondition(k);
            line += " " + ZtUSysString::WideToUtf8(c.GetValue().GetWideString()) + " " +
                    std::to_string(c.GetCondition()) + " " + std::to_string(c.GetFlags()) + ",";
        }
        out.push_back(line);
    }
    return out;
}
