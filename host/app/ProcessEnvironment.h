#pragma once
#include <filesystem>
#include <string>
#include <vector>

// What pdsreview asks of the operating system about its own process; each platform has
// its own implementation file.
namespace ProcessEnvironment {

// The folder of the running program, or "." where it can't be found.
std::filesystem::path ProgramFolder();
// The plug-in library's file name on this platform.
const char* PluginFileName();
// The command line's arguments as UTF-8, whatever the system's code page.
std::vector<std::string> Utf8Arguments(int argc, char** argv);
// Standard output and error take the program's bytes as they are (no LF to CR LF), so
// that the output is the same on every platform.
void UseBinaryStandardStreams();
// A write that a closed pipe or a limit on file sizes stops fails as a write, with its
// reason, rather than ending the process with a signal (POSIX's SIGPIPE and SIGXFSZ).
void FailWritesInsteadOfSignals();
// Whether the standard stream of this descriptor (1 output, 2 error) is a terminal,
// where a progress bar can be drawn.
bool IsTerminal(int descriptor);

// The whole of a program's main: binary standard streams, writes that fail rather than
// signal, its arguments (without its name) as UTF-8 handed to `run`, whose result is the
// exit status; memory that runs out ends the run with "PROGRAM: out of memory" and
// `outOfMemory`, not an abort.
int RunMain(int argc, char** argv, const char* program, int outOfMemory,
            int (*run)(const std::vector<std::string>& arguments));

} // namespace ProcessEnvironment
