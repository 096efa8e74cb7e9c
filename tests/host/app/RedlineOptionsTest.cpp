#include "app/RedlineOptions.h"
#include "ztplugin/ZtOpState.h"

#include <gtest/gtest.h>

namespace {

TEST(RedlineOptions, Colours) {
    struct Case {
        const char* text;
        ZtLColor3f color;
    };
    const Case good[] = {
        {"0,0.5,1", {0, 0.5, 1}}, {"1,1,1", {1, 1, 1}}, {"0.25,0,0", {0.25, 0, 0}}};
    for (const Case& c : good) {
        ZtLColor3f color;
        std::string error;
        EXPECT_TRUE(ParseRedlineColor(c.text, &color, &error)) << c.text;
        EXPECT_EQ(color, c.color) << c.text;
    }
    const char* const bad[] = {"",         "1,0",     "1,0,0,0", "1, 0, 0", "1,0,1.5",
                               "-0.1,0,0", "nan,0,0", "255,0,0", "a,b,c",   ",,"};
    for (const char* text : bad) {
        ZtLColor3f color(9, 9, 9);
        std::string error;
        EXPECT_FALSE(ParseRedlineColor(text, &color, &error)) << text;
        EXPECT_EQ(color, ZtLColor3f(9, 9, 9)) << text;
        EXPECT_NE(error.find("--redline-color"), std::string::npos) << text;
    }
}

TEST(RedlineOptions, Thicknesses) {
    struct Case {
        const char* text;
        bool ok;
    };
    const Case cases[] = {{"1", true},   {"3", true},           {"1000", true}, {"0", false},
                          {"-2", false}, {"1001", false},       {"2.5", false}, {"", false},
                          {" 3", false}, {"99999999999", false}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text);
        int thickness = -7;
        std::string error;
        EXPECT_EQ(ParseRedlineThickness(c.text, &thickness, &error), c.ok);
        EXPECT_EQ(thickness, c.ok ? std::stoi(c.text) : -7);
        EXPECT_EQ(error.empty(), c.ok);
    }
}

TEST(RedlineOptions, OnlyWhatIsGivenChanges) {
    ZtOpState state;
    ApplyRedlineOptions(state, std::nullopt, std::nullopt);
    EXPECT_EQ(state.GetRedlineTool()->GetCurLineColor(), ZtLColor3f(1, 0, 0));
    EXPECT_EQ(state.GetRedlineTool()->GetCurLineThickness(), 1);
    ApplyRedlineOptions(state, std::nullopt, 5);
    EXPECT_EQ(state.GetRedlineTool()->GetCurLineColor(), ZtLColor3f(1, 0, 0));
    EXPECT_EQ(state.GetRedlineTool()->GetCurLineThickness(), 5);
    ApplyRedlineOptions(state, ZtLColor3f(0, 1, 0), std::nullopt);
    EXPECT_EQ(state.GetRedlineTool()->GetCurLineColor(), ZtLColor3f(0, 1, 0));
    EXPECT_EQ(state.GetRedlineTool()->GetCurLineThickness(), 5);
}

} // namespace
