#include "manual/ManPage.h"

#include <gtest/gtest.h>

namespace {

ProgramManual OneEntryManual(const std::string& summary) {
    ProgramManual manual;
    manual.name = "prog";
    manual.package = "pkg 1.0";
    manual.purpose = "do things";
    manual.synopsis = "[OPTIONS] STEP";
    manual.description = {"First.", "Second."};
    manual.commandsTitle = "STEPS";
    manual.commands.push_back({"run-all", {}, "FILE.x", ArgumentKind::File, "*.x", {}, summary});
    return manual;
}

// The text of the page after the tag line of the one step.
std::string StepText(const std::string& summary) {
    const std::string page = ManPage(OneEntryManual(summary));
    const std::string tag = "\\fBrun\\-all\\fR \\fIFILE.x\\fR\n";
    const std::size_t at = page.find(tag);
    if (at == std::string::npos)
        return "no tag line in:\n" + page;
    const std::size_t begin = at + tag.size();
    return page.substr(begin, page.find('\n', begin) - begin);
}

TEST(ManPage, SummariesAreTextThatRoffCannotMistakeForRequests) {
    struct Case {
        const char* summary;
        const char* text;
    } cases[] = {
        {"plain words", "plain words"},
        {".starts with a dot", "\\&.starts with a dot"},
        {"'starts with a quote", "\\&'starts with a quote"},
        {"a back\\slash", "a back\\eslash"},
        {"wrapped\n.line", "wrapped .line"},
        {"use --strict or -h", "use \\-\\-strict or \\-h"},
        {"(-1) and ../lib", "(\\-1) and ../lib"},
        {"plug-in and display-set", "plug-in and display-set"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(StepText(c.summary), c.text) << c.summary;
}

TEST(ManPage, HasEachSectionOnceInOrder) {
    ProgramManual manual = OneEntryManual("s");
    manual.options.push_back({"--help", {"-h"}, "", ArgumentKind::None, "", {}, "usage"});
    manual.exitStatuses = {{0, "fine"}, {2, "not"}};
    manual.examples = {"prog run-all a.x"};
    manual.seeAlso = {"other(1)", "more(5)"};
    const std::string page = ManPage(manual);
    EXPECT_EQ(page.rfind(".TH PROG 1 \"\" \"pkg 1.0\" \"User Commands\"\n", 0), 0u) << page;
    std::size_t last = 0;
    for (const char* heading :
         {".SH NAME\nprog \\- do things\n", ".SH SYNOPSIS\n.B prog\n[OPTIONS] STEP\n",
          ".SH DESCRIPTION\nFirst.\n.PP\nSecond.\n", ".SH STEPS\n",
          ".SH OPTIONS\n.TP\n\\fB\\-\\-help\\fR, \\fB\\-h\\fR\nusage\n",
          ".SH \"EXIT STATUS\"\n.TP\n.B 0\nfine\n.TP\n.B 2\nnot\n",
          ".SH EXAMPLES\n.PP\n.RS\n.nf\nprog run\\-all a.x\n",
          ".SH \"SEE ALSO\"\nother(1),\nmore(5)\n"}) {
        const std::size_t at = page.find(heading);
        ASSERT_NE(at, std::string::npos) << heading << "\nin:\n" << page;
        EXPECT_GT(at, last) << heading;
        last = at;
    }
    EXPECT_EQ(page.find(".SH FILES"), std::string::npos);
}

} // namespace
