#pragma once
#include <filesystem>

// What pdsreview asks of the operating system about its own process; each platform has
// its own implementation file.
namespace ProcessEnvironment {

// The folder of the running program, or "." where it can't be found.
std::filesystem::path ProgramFolder();
// The plug-in library's file name on this platform.
const char* PluginFileName();
// Whether standard error is a terminal, where a progress bar can be drawn.
bool StandardErrorIsTerminal();

} // namespace ProcessEnvironment
