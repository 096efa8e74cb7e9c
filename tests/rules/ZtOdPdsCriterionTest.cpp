#include "rules/ZtOdPdsCriterion.h"
#include "RulesTestSupport.h"
#include "readers/ZtOdPdsDstContext.h"
#include "rules/ZtOdPdsDisplaySetDict.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace {

std::string Describe(const ZtOdPdsCriterion& criterion) {
    std::string out = std::to_string(criterion.GetKind()) + ":";
    auto strings = [&](const ZtUOwnPtrVector<ZtUWideString>& list) {
        for (std::size_t i = 0; i < list.Size(); ++i)
            out += (i ? "," : "") + ("[" + Narrow(list[i]->Str()) + "]");
    };
    auto numbers = [&](const ZtUInt32Vector& list) {
        for (std::size_t i = 0; i < list.Size(); ++i)
            out += (i ? "," : "") + std::to_string(list[i]);
    };
    switch (criterion.GetKind()) {
    case ZtOdPdsCriterion::kData: {
        const auto& data = static_cast<const ZtOdPdsDataCriterion&>(criterion);
        out += "[" + Narrow(data.GetAttribute().Str()) + "]" +
               std::to_string(data.GetComparison()) + "[" + Narrow(data.GetValue().Str()) + "]";
        break;
    }
    case ZtOdPdsCriterion::kFile:
        strings(static_cast<const ZtOdPdsFileCriterion&>(criterion).GetFiles());
        break;
    case ZtOdPdsCriterion::kLevel:
        numbers(static_cast<const ZtOdPdsLevelCriterion&>(criterion).GetLevels());
        break;
    case ZtOdPdsCriterion::kColour:
        numbers(static_cast<const ZtOdPdsColourCriterion&>(criterion).GetColours());
        break;
    case ZtOdPdsCriterion::kDisplaySet:
        strings(static_cast<const ZtOdPdsDisplaySetCriterion&>(criterion).GetSets());
        break;
    default:
        break;
    }
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

    // The statement names of the tree and its conditions in full.
    std::pair<std::string, std::vector<std::string>> Evaluate(const wchar_t* text) {
        std::unique_ptr<ZtOdPdsCriterion> criterion(ZtOdPdsMakeCriterion(text));
        ZtOdPdsNode* tree = criterion->Evaluate(&context);
        if (!tree)
            return {"null", {}};
        tree->AddRef();
        const std::string infix = Infix(tree);
        ZtOdPdsFindSpecBuilder builder(L"x");
        tree->Emit(builder);
        tree->Release();
        return {infix, Fulls(builder.GetFindSpec())};
    }

    ZtUNameDict names;
    ZtOdPdsDstContext context;
};

TEST_F(CriterionEvaluation, ListsBecomeLeftDeepOrChainsOfConditions) {
    const auto levels = Evaluate(L"Level 3, 7,9");
    EXPECT_EQ(levels.first, "((L3 OR L7) OR L9)");
    EXPECT_EQ(levels.second, (std::vector<std::string>{
                                 "-|ZtStdLevel/Level|5|6|Level 3",
                                 "-|ZtStdLevel/Level|69|6|Level 7",
                                 "-|ZtStdLevel/Level|69|6|Level 9",
                             }));
    EXPECT_EQ(Evaluate(L"Color 2").second,
              (std::vector<std::string>{"-|ZtStdColour/Colour|5|6|Colour 2"}));
    const auto files = Evaluate(L"File a.dgn , b.dgn");
    EXPECT_EQ(files.first, "(a.dgn OR b.dgn)");
    EXPECT_EQ(files.second, (std::vector<std::string>{
                                "-|ZtStdSourceFile/Source File|5|6|a.dgn",
                                "-|ZtStdSourceFile/Source File|69|6|b.dgn",
                            }));
    EXPECT_EQ(Evaluate(L"Level").first, "null");
}

TEST_F(CriterionEvaluation, DataBecomesOneConditionOnAPdsAttribute) {
    const auto data = Evaluate(L"Data line_id  >= 4*");
    EXPECT_EQ(data.first, "line_id=4*");
    EXPECT_EQ(data.second, (std::vector<std::string>{
                               "ZtDgnPDSAttributes/PDS|ZtDgnPDSAttribute/line_id|9|13|4*"}));
    const std::pair<const wchar_t*, int> operators[] = {
        {L"Data a  = 1", 6}, {L"Data a  > 1", 11}, {L"Data a  >= 1", 10},
        {L"Data a  < 1", 8}, {L"Data a  <= 1", 9}, {L"Data a", 0},
    };
    for (const auto& [text, op] : operators) {
        std::unique_ptr<ZtOdPdsCriterion> criterion(ZtOdPdsMakeCriterion(text));
        ZtOdPdsNode* tree = criterion->Evaluate(&context);
        tree->AddRef();
        EXPECT_EQ(static_cast<ZtOdPdsStatement*>(tree)->GetCondition().GetCondition(), op)
            << Narrow(text);
        tree->Release();
    }
}

TEST_F(CriterionEvaluation, UnknownDisplaySetsGiveNullOrANullOperand) {
    EXPECT_EQ(Evaluate(L"Display Set nowhere").first, "null");
    std::unique_ptr<ZtOdPdsCriterion> criterion(ZtOdPdsMakeCriterion(L"Display Set a, b"));
    ZtOdPdsNode* tree = criterion->Evaluate(&context);
    ASSERT_NE(tree, nullptr);
    tree->AddRef();
    EXPECT_EQ(Infix(tree), "(null OR null)");
    EXPECT_EQ(tree->IsComplete(), 0);
    tree->Release();
}

TEST(ZtOdPdsCriterionComponent, StartsAndEndsItsOwnComponent) {
    EXPECT_EQ(ZtOdPdsCriterion::StartComponent(), 1);
    EXPECT_TRUE(ZtOdPdsCriterion::GetComponent().IsLive());
    EXPECT_EQ(ZtOdPdsCriterion::GetComponent().GetName().Str(), "ZtOdPdsCriterion");
    EXPECT_EQ(ZtOdPdsCriterion::EndComponent(), 1);
    EXPECT_EQ(ZtOdPdsCriterion::EndComponent(), 0);
}

} // namespace
