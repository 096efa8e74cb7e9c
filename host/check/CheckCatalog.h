#pragma once
#include "check/Finding.h"
#include "diagnostics/ZtOdPdsDiagnostics.h"

#include <optional>
#include <span>
#include <string_view>

// A kind of finding, by the name that -Wno-NAME silences.
struct CheckKind {
    const char* name;
    const char* summary; // what it reports, in a few words
};

// Every kind of finding, sorted by name.
std::span<const CheckKind> CheckKinds();
// The kind of that name, or null.
const CheckKind* FindCheckKind(std::string_view name);

// The finding that a diagnostic of the library comes to, worded for the file's author;
// none for a fact, which says what was read rather than what is wrong.
std::optional<Finding> DescribeDiagnostic(const ZtOdPdsDiagnostic& diagnostic);
