#pragma once
#include "check/FileCheck.h"

#include <optional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

// How pdscheck writes its findings.
enum class CheckFormat { kText, kJson, kSarif };

// What pdscheck was asked to do.
struct CheckCommandLine {
    CheckFormat format = CheckFormat::kText;
    std::optional<FileKind> readAs; // --as: every file read as this kind
    bool warningsAreErrors = false; // -Werror
    std::set<std::string> silenced; // -Wno-NAME
    SideFiles sideFiles;            // --no-tags, --no-display-sets
    bool help = false;
    bool version = false;
    std::vector<std::string> files;
};

// An option of pdscheck's command line, as parsing and the usage know it. `apply` gets
// the option's value (empty for a flag) and says what is wrong with it in `error`.
struct CheckOptionKind {
    const char* name;  // "--format"
    const char* value; // the usage's name for its value; null: a flag
    // The value follows the name directly ("-Wno-NAME"); otherwise it is the next word,
    // or follows '=' ("--format=json").
    bool joined;
    const char* summary;
    bool (*apply)(CheckCommandLine& line, const std::string& value, std::string* error);
};
std::span<const CheckOptionKind> CheckOptionKinds();

// Parses argv[1..]. False with a message for the user in `error` on a usage error: an
// unknown option or warning name, a missing or malformed value, or no file at all.
bool ParseCheckCommandLine(const std::vector<std::string>& args, CheckCommandLine* out,
                           std::string* error);

// The usage text of `pdscheck --help`.
std::string CheckUsageText();
