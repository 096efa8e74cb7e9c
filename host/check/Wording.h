#pragma once
#include "check/Finding.h"
#include "diagnostics/ZtOdPdsDiagnostics.h"

#include <cstdint>
#include <string>
#include <string_view>

// Small helpers for the texts of findings.

// `text` in quotes, as UTF-8, cut short with "..." when it is long; line ends and other
// control characters shown as escapes.
std::string Quoted(std::wstring_view text);
// "1 tag", "3 tags".
std::string Counted(std::int64_t count, std::string_view one, std::string_view many);
// `text` with its ASCII letters in lower case.
std::wstring Lowered(std::wstring_view text);

// A finding at the diagnostic's place, with its related place if it has one.
Finding MakeFinding(const ZtOdPdsDiagnostic& diagnostic, std::string name, bool dropsData,
                    std::string message, std::string note = {});
// Adds the diagnostic's related place to `finding`, described by `message`, if it has one.
void Relate(Finding& finding, const ZtOdPdsDiagnostic& diagnostic, std::string message);
