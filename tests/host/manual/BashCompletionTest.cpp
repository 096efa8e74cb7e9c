#include "manual/BashCompletion.h"

#include <gtest/gtest.h>

namespace {

// The script's structure; what it completes is tested by running it in bash over the
// built programs' completions.
TEST(BashCompletion, QuotesWordsAndNamesTheFunctionAfterTheProgram) {
    ProgramManual manual;
    manual.name = "my-prog";
    manual.commands.push_back({"it's", {}, "", ArgumentKind::None, "", {}, ""});
    manual.options.push_back({"--mode", {"-m"}, "A|B", ArgumentKind::Choice, "", {"a", "b"}, ""});
    const std::string script = BashCompletion(manual);
    EXPECT_NE(script.find("_my_prog() {"), std::string::npos) << script;
    EXPECT_NE(script.find("complete -F _my_prog my-prog\n"), std::string::npos);
    EXPECT_NE(script.find("compgen -W 'it'\\''s'"), std::string::npos) << script;
    EXPECT_NE(script.find("'--mode'|'-m') owner="), std::string::npos) << script;
    EXPECT_NE(script.find("compgen -W 'a b' --"), std::string::npos) << script;
    EXPECT_NE(script.find("compgen -W '--mode -m' --"), std::string::npos) << script;
}

} // namespace
