#pragma once
#include <span>

// The exit statuses of pdsreview: the plug-in's status codes (0, 1, 3, 6, 64, 128), which
// a failed step's status passes on, and pdsreview's own, which none of them share.
constexpr int kExitHostFailure = 2;   // a usage error, or the host can't do what was asked
constexpr int kExitWriteFailed = 4;   // a file or standard output could not be written
constexpr int kExitStrictWarning = 5; // --strict, and a step gave a warning

// One exit status, as the usage and the messages of failed steps say it.
struct ExitStatusKind {
    int code;
    const char* usage;   // its entry in the usage's list, which may run over lines
    const char* message; // what a failed step's message says when nothing more is known
};

// Every exit status, in ascending order.
std::span<const ExitStatusKind> ExitStatusKinds();
// What a status says went wrong, for a failed step's message.
const char* StatusMeaning(int status);
