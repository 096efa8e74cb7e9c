#include "app/ProcessEnvironment.h"

#include "ztutil/ZtUSysString.h"

#include <cstdio>
#include <fcntl.h>
#include <io.h>
#include <windows.h>
// After windows.h, which it needs.
#include <shellapi.h>

std::filesystem::path ProcessEnvironment::ProgramFolder() {
    // The path may be longer than MAX_PATH; grow the buffer until it fits.
    std::wstring self(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length =
            ::GetModuleFileNameW(nullptr, self.data(), static_cast<DWORD>(self.size()));
        if (length == 0)
            return ".";
        if (length < self.size()) {
            self.resize(length);
            return std::filesystem::path(self).parent_path();
        }
        self.resize(self.size() * 2);
    }
}

const char* ProcessEnvironment::PluginFileName() {
    return "ztodpds.dll";
}

// argv holds the arguments in the system's code page, which may not hold every
// character of a file name; the wide command line holds them all.
std::vector<std::string> ProcessEnvironment::Utf8Arguments(int argc, char** argv) {
    int count = 0;
    wchar_t** wide = ::CommandLineToArgvW(::GetCommandLineW(), &count);
    if (!wide)
        return std::vector<std::string>(argv, argv + argc);
    std::vector<std::string> arguments;
    arguments.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        arguments.push_back(ZtUSysString::WideToPath(wide[i]));
    ::LocalFree(wide);
    return arguments;
}

void ProcessEnvironment::UseBinaryStandardStreams() {
    ::_setmode(::_fileno(stdout), _O_BINARY);
    ::_setmode(::_fileno(stderr), _O_BINARY);
}

// Windows ends no process for a failed write.
void ProcessEnvironment::FailWritesInsteadOfSignals() {}

bool ProcessEnvironment::IsTerminal(int descriptor) {
    return ::_isatty(descriptor) != 0;
}
