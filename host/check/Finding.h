#pragma once
#include "ztutil/ZtUSysString.h"

#include <cstdint>
#include <optional>
#include <string>
#include <utility>

// How much a finding weighs. A note changes no exit status; a warning may be made an
// error (-Werror); an error is the checker's own verdict on a file.
enum class Severity { kNote, kWarning, kError };

// "note", "warning" or "error", as compilers, JSON and SARIF say it.
inline const char* SeverityWord(Severity severity) {
    switch (severity) {
    case Severity::kNote:
        return "note";
    case Severity::kWarning:
        return "warning";
    default:
        return "error";
    }
}

// A place in a checked file: line and column from 1 (column in UTF-16 units); line 0 is
// the file as a whole.
struct Location {
    std::wstring file;
    std::uint32_t line = 0;
    std::uint32_t column = 0;
};

// "FILE:LINE:COLUMN", or "FILE" for the file as a whole, as UTF-8.
inline std::string LocationText(const Location& at) {
    std::string text = ZtUSysString::WideToUtf8(at.file);
    if (at.line != 0)
        text += ":" + std::to_string(at.line) + ":" + std::to_string(at.column);
    return text;
}

// One thing the checker has to say about a file, worded for the person who wrote it.
struct Finding {
    std::string name; // the name that -Wno-NAME silences ("tag-head")
    Severity severity = Severity::kWarning;
    bool promoted = false;  // a warning made an error (-Werror)
    bool dropsData = false; // something the file holds does not come in
    Location at;
    std::string message; // what is wrong, on the diagnostic's line
    std::string note;    // what the system does instead; may be empty
    // A second place the finding refers to, with what it is.
    std::optional<Location> related;
    std::string relatedMessage;
};

// The checker's verdict that nothing comes in from `file` as it was asked to read it.
inline Finding FileKindError(const std::wstring& file, std::string message, std::string note = {}) {
    Finding finding;
    finding.name = "file-kind";
    finding.severity = Severity::kError;
    finding.dropsData = true;
    finding.at.file = file;
    finding.message = std::move(message);
    finding.note = std::move(note);
    return finding;
}
