#pragma once
#include <string>
#include <string_view>
#include <vector>

// What a program's manual page and shell completion say of it. Each program fills one from
// its own tables of steps, options and exit statuses, so that neither can drift from its
// usage.

// What the word after a step or option is, for completion.
enum class ArgumentKind {
    None,   // the entry takes no argument
    File,   // a file name, matching `pattern` when it has one ("*.dri")
    Choice, // one of `choices`
    Text    // anything else: a number, a list; nothing to offer
};

// The choices of a usage's value that lists them: "model|cache|either".
std::vector<std::string> ManualChoices(std::string_view alternatives);

// A step (or command) or an option of the program.
struct ManualEntry {
    std::string name;                 // "open", "--plugin"
    std::vector<std::string> aliases; // other spellings: "-h"
    std::string argument;             // the usage's name for its argument; empty: none
    ArgumentKind kind = ArgumentKind::None;
    std::string pattern;              // for File: a glob the offered files match, or empty
    std::vector<std::string> choices; // for Choice
    std::string summary;              // its text; line ends in it are only wrapping
};

struct ManualStatus {
    int code;
    std::string meaning; // line ends in it are only wrapping
};

struct ProgramManual {
    std::string name;                     // "pdsreview"
    std::string package;                  // what the page's footer names: "ztodpds 0.1"
    std::string purpose;                  // the NAME section's words after the dash
    std::string synopsis;                 // after the program's name: "[OPTIONS] STEP [STEP ...]"
    std::vector<std::string> description; // paragraphs
    std::string commandsTitle;            // the heading of `commands`: "STEPS"
    std::vector<ManualEntry> commands;
    // The words that are no option are file names (pdscheck's), not `commands`.
    bool operandsAreFiles = false;
    std::vector<ManualEntry> options;
    std::vector<ManualStatus> exitStatuses;
    std::vector<std::string> examples; // command lines
    std::vector<std::string> files;    // paragraphs of the FILES section
    std::vector<std::string> seeAlso;  // "pdscheck(1)", or a document's path
};
