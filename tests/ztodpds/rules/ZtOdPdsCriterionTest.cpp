#include "rules/ZtOdPdsCriterion.h"
#include "RulesTestSupport.h"
#include "readers/ZtOdPdsDstContext.h"
#include "rules/ZtOdPdsDisplaySetDict.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <type_traits>
#include <vector>

namespace {

// A criterion as "kind:" and what it parsed: "2:3,7" for levels, "1:[a.dgn],[b.dgn]" for
// names, "0:[attribute]comparison[value]" for data.
std::string Describe(const ZtOdPdsCriterion& criterion) {
    std::string out = std::to_string(criterion.GetKind()) + ":";
    auto list = [&out](const auto& items) {
        for (std::size_t i = 0; i < items.Size(); ++i) {
            if constexpr (std::is_same_v<std::decay_t<decltype(items)>, ZtUInt32Vector>)
                out += (i ? "," : "") + std::to_string(items[i]);
            else
                out += (i ? ",[" : "[") + Narrow(items[i]->Str()) + "]";
        }
    };
    if (const auto* data = dynamic_cast<const ZtOdPdsDataCriterion*>(&criterion))
        out += "[" + Narrow(data->GetAttribute().Str()) + "]" +
               std::to_string(data->GetComparison()) + "[" + Narrow(data->GetValue().Str()) + "]";
    else if (const auto* files = dynamic_cast<const ZtOdPdsFileCriterion*>(&criterion))
        list(files->GetFiles());
    else if (const auto* levels = dynamic_cast<const ZtOdPdsLevelCriterion*>(&criterion))
        list(levels->GetLevels());
    else if (const auto* colours = dynamic_cast<const ZtOdPdsColourCriterion*>(&criterion))
        list(colours->GetColours());
    else if (const auto* sets = dynamic_cast<const ZtOdPdsDisplaySetCriterion*>(&criterion))
        list(sets->GetSets());
    return out;
}

TEST(ZtOdPdsMakeCriterion, ParsesTheTextBehindTheWord) {
    struct Case {
        const wchar_t* text;
        std::string parsed;
    };
    const Case cases[] = {
        {L"Level 5", "2:5"},
        {L"Level 3, 7,9", "2:3,7,9"},
        {L"Level x", "2:0"},
        {L"Level 12abc,,-4", "2:12,-4"},
        {L"Level", "2:"},
        {L"Level 99999999999,-99999999999", "2:2147483647,-2147483648"},
        {L"Color 2,  3", "3:2,3"},
        {L"Colour 2", "5:"}, // the word is "Color"
        {L"File a.dgn , b.dgn", "1:[a.dgn],[b.dgn]"},
        {L"File ,, ", "1:[]"},
        {L"Display Set Main pipes, Other", "4:[Main pipes],[Other]"},
        {L"Display Setx", "4:"},
        {L"DisplaySet x", "5:"},
        {L"level 5", "5:"},
        {L"Frob 1", "5:"},
        {L"Levelled 5", "2:0"}, // any character behind the word is skipped
        // Data: two characters before the operator and one behind it are dropped.
        {L"Data line_id  = 4711", "0:[line_id]1[4711]"},
        {L"Data line_id = 4711", "0:[line_i]1[4711]"},
        {L"Data size  >= 2", "0:[size]3[2]"},
        {L"Data a  = b >= c", "0:[a  = ]3[c]"}, // ">=" wins wherever it stands
        {L"Data size  <= 2", "0:[size]5[2]"},
        {L"Data size  > 2", "0:[size]2[2]"},
        {L"Data size  < 2", "0:[size]4[2]"},
        {L"Data size  >= 2*", "0:[size]6[2*]"},
        {L"Data name  = P?01", "0:[name]6[P?01]"},
        {L"Data no operator", "0:[]0[]"},
        {L"Data =x", "0:[]1[]"},
        {L"Data x=", "0:[]1[]"},
        {L"Data ab  =", "0:[ab]1[]"},
    };
    for (const Case& c : cases) {
        std::unique_ptr<ZtOdPdsCriterion> criterion(ZtOdPdsMakeCriterion(c.text));
        ASSERT_NE(criterion, nullptr);
        EXPECT_EQ(Describe(*criterion), c.parsed) << Narrow(c.text);
    }
    EXPECT_EQ(ZtOdPdsMakeCriterion(L""), nullptr);
}

class CriterionEvaluation : public ::testing::Test {
protected:
    CriterionEvaluation() { context.names = &names; }
    ~CriterionEvaluation() override { ZtOdPdsDisplaySetDict::Destroy(); }

    // The tree of a criterion in infix ("null" for none) and, if it is complete, its
    // conditions in full.
    std::vector<std::string> Evaluate(const wchar_t* text) {
        std::unique_ptr<ZtOdPdsCriterion> criterion(ZtOdPdsMakeCriterion(text));
        ZtOdPdsNode* tree = criterion->Evaluate(&context);
        if (!tree)
            return {"null"};
        tree->AddRef();
        std::vector<std::string> out{Infix(tree)};
        if (tree->IsComplete()) {
            ZtOdPdsFindSpecBuilder builder(L"x");
            tree->Emit(builder);
            for (const std::string& condition : Each(builder.GetFindSpec(), Full))
                out.push_back(condition);
        }
        tree->Release();
        return out;
    }

    ZtUNameDict names;
    ZtOdPdsDstContext context;
};

TEST_F(CriterionEvaluation, ListsBecomeLeftDeepOrChainsAndDataOneConditionOnAPdsAttribute) {
    struct Case {
        const wchar_t* text;
        std::vector<std::string> tree; // infix, then the conditions
    };
    const std::string level = "-|ZtStdLevel/Level|";
    const std::string file = "-|ZtStdSourceFile/Source File|";
    const std::string pds = "ZtDgnPDSAttributes/PDS|ZtDgnPDSAttribute/";
    const Case cases[] = {
        {L"Level 3, 7,9",
         {"((L3 OR L7) OR L9)", level + "5|6|Level 3", level + "69|6|Level 7",
          level + "69|6|Level 9"}},
        {L"Color 2", {"C2", "-|ZtStdColour/Colour|5|6|Colour 2"}},
        {L"File a.dgn , b.dgn", {"(a.dgn OR b.dgn)", file + "5|6|a.dgn", file + "69|6|b.dgn"}},
        {L"Level", {"null"}},
        {L"Data line_id  >= 4*", {"line_id=4*", pds + "line_id|9|13|4*"}},
        {L"Data a  = 1", {"a=1", pds + "a|9|6|1"}},
        {L"Data a  > 1", {"a=1", pds + "a|9|11|1"}},
        {L"Data a  >= 1", {"a=1", pds + "a|9|10|1"}},
        {L"Data a  < 1", {"a=1", pds + "a|9|8|1"}},
        {L"Data a  <= 1", {"a=1", pds + "a|9|9|1"}},
        {L"Data a", {"=", pds + "|9|0|"}},
        // A reference to no known set is null; in a list, it leaves the tree incomplete.
        {L"Display Set nowhere", {"null"}},
        {L"Display Set a, b", {"(null OR null)"}},
    };
    for (const Case& c : cases)
        EXPECT_EQ(Evaluate(c.text), c.tree) << Narrow(c.text);
}

} // namespace
