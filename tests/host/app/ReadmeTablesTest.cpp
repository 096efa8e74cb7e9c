// The README's tables of steps, options and exit statuses say what `pdsreview --help`
// says, row for row: both come from the one table of each.
#include "app/Usage.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace {

std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);)
        lines.push_back(line);
    return lines;
}

std::string Trimmed(const std::string& text) {
    const std::size_t first = text.find_first_not_of(' ');
    return first == std::string::npos ? ""
                                      : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

// The README rows that the usage's list under `heading` calls for: each entry (code in
// the README when `code` is set) with its text, the text's further lines joined by
// spaces. An entry line begins with two spaces and has two more between entry and text;
// a further line begins with more.
std::vector<std::string> UsageRows(const std::string& heading, bool code) {
    const std::vector<std::string> lines = Lines(UsageText());
    std::size_t i = 0;
    while (i < lines.size() && lines[i].rfind(heading, 0) != 0)
        ++i;
    std::vector<std::pair<std::string, std::string>> entries;
    for (++i; i < lines.size() && !lines[i].empty(); ++i) {
        const std::string& line = lines[i];
        if (line.rfind("   ", 0) == 0 && !entries.empty()) {
            std::string& text = entries.back().second;
            text += (text.empty() ? "" : " ") + Trimmed(line);
            continue;
        }
        const std::string body = line.substr(2);
        const std::size_t gap = body.find("  ");
        entries.emplace_back(body.substr(0, gap),
                             gap == std::string::npos ? "" : Trimmed(body.substr(gap)));
    }
    std::vector<std::string> rows;
    for (const auto& [entry, text] : entries) {
        std::string escaped;
        for (char c : entry)
            escaped += c == '|' ? std::string("\\|") : std::string(1, c);
        rows.push_back(code ? "| `" + escaped + "` | " + text + " |"
                            : "| " + escaped + " | " + text + " |");
    }
    return rows;
}

// The rows of the README's table whose header row is `header`.
std::vector<std::string> ReadmeRows(const std::string& header) {
    std::ifstream in(ZT_SOURCE_DIR "/README.md");
    std::stringstream text;
    text << in.rdbuf();
    const std::vector<std::string> lines = Lines(text.str());
    std::vector<std::string> rows;
    for (std::size_t i = 0; i < lines.size(); ++i)
        if (lines[i] == header) {
            for (i += 2; i < lines.size() && lines[i].rfind("|", 0) == 0; ++i)
                rows.push_back(lines[i]);
            break;
        }
    return rows;
}

TEST(ReadmeTables, StepsOptionsAndExitStatusesAreThoseOfTheUsage) {
    struct Table {
        const char* header;
        const char* usageHeading;
        bool code;
    };
    for (const Table& table : {Table{"| Step | What it does |", "Steps", true},
                               Table{"| Option | Meaning |", "Options", true},
                               Table{"| Exit status | Meaning |", "Exit statuses", false}}) {
        const std::vector<std::string> expected = UsageRows(table.usageHeading, table.code);
        EXPECT_FALSE(expected.empty()) << table.usageHeading;
        EXPECT_EQ(ReadmeRows(table.header), expected) << table.header;
    }
}

} // namespace
