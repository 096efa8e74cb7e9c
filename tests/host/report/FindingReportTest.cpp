#include "report/FindingReport.h"
#include "report/ReportStream.h"
#include "tools/ZtTestFiles.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

Finding At(const std::wstring& file, std::uint32_t line, std::uint32_t column) {
    Finding finding;
    finding.name = "stray-text";
    finding.at = {file, line, column};
    finding.message = "m";
    return finding;
}

// The caret stands under its character whatever comes before it on the line: a tab, a
// character beyond the basic plane (two units, one character), or more than a window's
// width of text.
TEST(FindingReport, TheCaretStandsUnderItsCharacter) {
    ZtTestTempDir dir;
    ASSERT_TRUE(ZtTestWriteBytes(dir.File("t.tag"),
                                 "\tx\xF0\x9F\x98\x80y{\n" + std::string(300, 'a') + "b\n"));
    const std::wstring file = dir.WideFile("t.tag");
    Finding promoted = At(file, 1, 5);
    promoted.severity = Severity::kError;
    promoted.promoted = true;
    promoted.note = "n";
    promoted.related = Location{file, 2, 1};
    promoted.relatedMessage = "r";
    Finding whole = At(L"w.dst", 0, 0);
    whole.name = "file-kind";
    whole.severity = Severity::kError;
    std::string text;
    ReportStream out(text);
    WriteFindingsText(out, {promoted, At(file, 2, 301), whole});
    const std::string name = dir.File("t.tag");
    EXPECT_EQ(text, name +
                        ":1:5: error: m [-Werror,-Wstray-text]\n"
                        "\tx\xF0\x9F\x98\x80y{\n"
                        "\t  ^\n" +
                        name + ":1:5: note: n\n" + name + ":2:1: note: r\n" + name +
                        ":2:301: warning: m [-Wstray-text]\n..." + std::string(80, 'a') + "b\n" +
                        std::string(83, ' ') +
                        "^\n"
                        "w.dst: error: m [-Wfile-kind]\n"
                        "1 warning and 2 errors generated.\n");
}

} // namespace
