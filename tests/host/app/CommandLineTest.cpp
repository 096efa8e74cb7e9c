#include "app/CommandLine.h"

#include <gtest/gtest.h>

namespace {

TEST(CommandLine, ParsesStepsAndOptionsAnywhere) {
    CommandLine line;
    std::string error;
    ASSERT_TRUE(
        ParseCommandLine({"--json", "plugins", "--quiet", "model", "a.dgn", "select", "--next-ids",
                          "5,9", "--control-mode", "-3", "--plugin", "/x/ztodpds.so", "--elements",
                          "--no-tags", "--input-files", "either"},
                         &line, &error))
        << error;
    EXPECT_TRUE(line.json);
    EXPECT_TRUE(line.quiet);
    EXPECT_TRUE(line.elements);
    EXPECT_EQ(line.controlMode, -3);
    EXPECT_FALSE(line.open.importTags);
    EXPECT_TRUE(line.open.importDisplaySets);
    EXPECT_EQ(line.open.inputFiles, 2);
    EXPECT_EQ(line.pluginPath, "/x/ztodpds.so");
    ASSERT_TRUE(line.nextIds);
    EXPECT_EQ(line.nextIds->first, 5u);
    EXPECT_EQ(line.nextIds->second, 9u);
    ASSERT_EQ(line.steps.size(), 3u);
    EXPECT_EQ(line.steps[0].name, "plugins");
    EXPECT_EQ(line.steps[1].name, "model");
    EXPECT_EQ(line.steps[1].argument, "a.dgn");
    EXPECT_EQ(line.steps[2].name, "select");
    // Help and the version need no step.
    CommandLine help;
    ASSERT_TRUE(ParseCommandLine({"--help"}, &help, &error));
    EXPECT_TRUE(help.help);
    CommandLine version;
    ASSERT_TRUE(ParseCommandLine({"--version"}, &version, &error));
    EXPECT_TRUE(version.version);
}

TEST(CommandLine, RefusesWhatItCannotUse) {
    struct Case {
        std::vector<std::string> args;
        const char* message;
    };
    const Case cases[] = {
        {{}, "no step given"},
        {{"--json"}, "no step given"},
        {{"frobnicate"}, "unknown step 'frobnicate'"},
        {{"--frob", "plugins"}, "unknown option --frob"},
        {{"open"}, "step open needs a file"},
        {{"plugins", "--plugin"}, "option --plugin needs a value"},
        {{"plugins", "--control-mode", "x1"}, "--control-mode takes an integer, not 'x1'"},
        {{"plugins", "--control-mode", "99999999999"},
         "--control-mode takes an integer, not '99999999999'"},
        {{"plugins", "--next-ids", "5"}, "--next-ids takes two unsigned integers T,C, not '5'"},
        {{"plugins", "--next-ids", "5,-1"},
         "--next-ids takes two unsigned integers T,C, not '5,-1'"},
        {{"plugins", "--next-ids", ",1"}, "--next-ids takes two unsigned integers T,C, not ',1'"},
        {{"plugins", "--input-files", "kvc"},
         "--input-files takes model, cache or either, not 'kvc'"},
        {{"-V"}, "unknown option -V"},
    };
    for (const Case& c : cases) {
        CommandLine line;
        std::string error;
        EXPECT_FALSE(ParseCommandLine(c.args, &line, &error));
        EXPECT_EQ(error, c.message);
    }
    for (const char* factor : {"1e999", "nan", "0", "-1", "-0"}) {
        CommandLine line;
        std::string error;
        EXPECT_FALSE(ParseCommandLine({"plugins", "--uors-per-master", factor}, &line, &error));
        EXPECT_EQ(error, std::string("--uors-per-master takes a finite number above 0, not '") +
                             factor + "'");
    }
}

} // namespace
