#pragma once
#include "support/ZtTestRecordingProgress.h"
#include "tools/ZtTestFiles.h"
#include "ztplugin/ZtOpFindSpec.h"
#include "ztplugin/ZtOpSavedItem.h"
#include "ztplugin/ZtOpSelectionSet.h"
#include "ztutil/ZtUSysString.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

inline std::wstring Fixture(const char* name) {
    return ZtTestWide(std::string(ZT_TEST_DIR "/fixtures/") + name);
}

// A file of two sets whose second comment is larger than any stream buffer, so that the
// read goes back to the file after the first set has finished; `progress` breaks the file
// at that moment, its first report.
inline std::wstring BreakingDst(ZtTestTempDir& dir, ZtTestRecordingProgress& progress) {
    std::string text = "[DEFINITION SECTION]\n<Display Set>\n1 early\n<Definition>\nFIND Level 1\n"
                       "<Display Set>\n2 late\n";
    for (int i = 0; i < 100000; ++i)
        text += "a comment line of the second set\n";
    EXPECT_TRUE(ZtTestWriteBytes(dir.File("broken.dst"), text + "<Definition>\nFIND Level 2\n"));
    progress.onReport = [path = dir.File("broken.dst"), broken = false]() mutable {
        if (!broken)
            broken = ZtTestBreakOpenFile(path);
    };
    return dir.WideFile("broken.dst");
}

// The selection sets of a folder as "name (comment): value op flags, ..." lines, every
// condition with its operator and flags; the comment only where there is one.
inline std::vector<std::string> DescribeSets(const ZtOpGroupItem& folder) {
    std::vector<std::string> out;
    for (std::size_t i = 0; i < folder.GetNumChildren(); ++i) {
        const auto* set = static_cast<const ZtOpSelectionSet*>(folder.GetChild(i));
        std::string line = ZtUSysString::WideToUtf8(set->GetName().Str());
        for (std::size_t k = 0; k < set->GetComments().Size(); ++k)
            line += " (" + ZtUSysString::WideToUtf8(set->GetComments()[k]->GetBody().Str()) + ")";
        line += ":";
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
