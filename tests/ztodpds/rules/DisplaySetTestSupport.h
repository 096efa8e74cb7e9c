#pragma once
#include "RulesTestSupport.h"
#include "readers/ZtOdPdsDstContext.h"
#include "rules/ZtOdPdsDisplaySet.h"
#include "rules/ZtOdPdsDisplaySetDict.h"
#include "ztplugin/ZtOpSavedItem.h"
#include "ztplugin/ZtOpSelectionSet.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <utility>
#include <vector>

// Feeds display sets line by line, holding each as the definition section does, and
// collects their selection sets. The dictionary goes at the end, as at the end of a
// section.
class DisplaySets : public ::testing::Test {
protected:
    DisplaySets() {
        context.names = &names;
        context.folder = &folder;
    }
    ~DisplaySets() override { ZtOdPdsDisplaySetDict::Destroy(); }

    // One set from its lines behind "<Display Set>"; the result of its End.
    int Read(const std::vector<std::wstring>& lines) {
        auto* set = new ZtOdPdsDisplaySet(&context);
        set->AddRef();
        set->Begin();
        for (const std::wstring& text : lines) {
            ZtUWideStringBuffer line(text.c_str());
            EXPECT_EQ(set->Line(line), 1);
        }
        const int result = set->End();
        set->Release();
        return result;
    }

    std::size_t Count() const { return folder.GetNumChildren(); }

    const ZtOpSelectionSet& Set(std::size_t index) const {
        return *static_cast<const ZtOpSelectionSet*>(folder.GetChild(index));
    }

    const ZtOpFindSpec& Spec(std::size_t index) const {
        return *Set(index).GetImplicitSelection().GetImplicitFindSpec();
    }

    // The conditions of set `index` in short: "L3", "*C2~7": value without its resource
    // word, "*" for a new alternative, "~op" for an operator other than 6, "+flags" for
    // flags other than 5 and 64.
    std::vector<std::string> Conditions(std::size_t index) const {
        std::vector<std::string> out = Each(Spec(index), Short);
        for (std::string& text : out)
            for (const auto& [word, letter] : {std::pair{"Level ", "L"}, {"Colour ", "C"}})
                if (const std::size_t at = text.find(word); at != std::string::npos)
                    text.replace(at, std::strlen(word), letter);
        return out;
    }

    std::string Name(std::size_t index) const { return Narrow(Set(index).GetName().Str()); }

    // Every set made so far as "name: conditions", the conditions as above.
    std::vector<std::string> Made() const {
        std::vector<std::string> out;
        for (std::size_t i = 0; i < Count(); ++i) {
            out.push_back(Name(i) + ":");
            for (const std::string& condition : Conditions(i))
                out.back() += " " + condition;
        }
        return out;
    }

    ZtUNameDict names;
    ZtOpFolderItem folder;
    ZtOdPdsDstContext context;
};
