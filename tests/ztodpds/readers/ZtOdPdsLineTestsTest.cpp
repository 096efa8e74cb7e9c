#include "readers/ZtOdPdsLineTests.h"
#include "ztutil/ZtUWideString.h"

#include <gtest/gtest.h>

namespace {

TEST(ZtOdPdsLineTests, SectionAndAngleLines) {
    struct Case {
        const wchar_t* line;
        bool section;
        bool angle;
    };
    const Case cases[] = {
        {L"[DEFINITION SECTION]", true, false},
        {L"[]", true, false},
        {L"[x", false, false},
        {L"x]", false, false},
        {L"[", false, false},
        // Lines are looked at untrimmed.
        {L" [a]", false, false},
        {L"[a] ", false, false},
        {L"<Display Set>", false, true},
        {L"<>", false, true},
        {L"<a]", false, false},
        {L"", false, false},
    };
    for (const Case& c : cases) {
        const ZtUWideStringBuffer line(c.line);
        EXPECT_EQ(ZtOdPdsIsSectionLine(line), c.section) << c.line;
        EXPECT_EQ(ZtOdPdsIsAngleLine(line), c.angle) << c.line;
    }
}

TEST(ZtOdPdsLineTests, StartsWith) {
    struct Case {
        const wchar_t* line;
        const wchar_t* keyword;
        bool starts;
        unsigned length;
    };
    constexpr unsigned kUntouched = 99;
    const Case cases[] = {
        {L"FIND Level 1", L"FIND", true, 4},
        // Nothing behind the keyword is looked at.
        {L"FINDALL", L"FIND", true, 4},
        {L"FIND", L"FIND", true, 4},
        {L"FIN", L"FIND", false, kUntouched},
        {L"find x", L"FIND", false, kUntouched},
        {L" FIND", L"FIND", false, kUntouched},
        {L"FIND ALL BUT x", L"FIND ALL BUT", true, 12},
        {L"x", L"", true, 0},
    };
    for (const Case& c : cases) {
        unsigned length = kUntouched;
        EXPECT_EQ(ZtOdPdsLineStartsWith(ZtUWideStringBuffer(c.line), c.keyword, &length), c.starts)
            << c.line;
        EXPECT_EQ(length, c.length) << c.line;
    }
}

} // namespace
