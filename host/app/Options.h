#pragma once
#include "app/CommandLine.h"

#include <span>
#include <string>
#include <string_view>

// An option of the command line, as parsing, the usage and the README know it. `apply`
// gets the option's value (empty for a flag) and says what is wrong with it in `error`.
struct OptionKind {
    const char* name;
    const char* shortName; // another spelling, left out of the usage; may be null
    const char* value;     // the usage's name for the option's value; null: a flag
    const char* summary;   // the option's line of the usage
    bool (*apply)(CommandLine& line, const std::string& value, std::string* error);
};

// Every option, in the order of the usage.
std::span<const OptionKind> OptionKinds();
// The option of that name or short name, or null.
const OptionKind* FindOption(std::string_view name);
