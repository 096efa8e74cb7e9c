#include "app/ProcessEnvironment.h"

#include <io.h>
#include <windows.h>

#include <string>

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

bool ProcessEnvironment::StandardErrorIsTerminal() {
    return ::_isatty(2) != 0;
}
