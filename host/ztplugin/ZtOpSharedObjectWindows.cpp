#include "ztplugin/ZtOpSharedObject.h"

#include "ztutil/ZtUSysString.h"

#include <windows.h>

#include <string>

namespace {

// The system's message for an error number, without its line break.
std::string SystemMessage(DWORD error) {
    char* text = nullptr;
    const DWORD length = ::FormatMessageA(
        FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
        nullptr, error, 0, reinterpret_cast<char*>(&text), 0, nullptr);
    std::string message = length ? std::string(text, length) : "error " + std::to_string(error);
    ::LocalFree(text);
    while (!message.empty() && (message.back() == '\n' || message.back() == '\r'))
        message.pop_back();
    return message;
}

} // namespace

void* ZtOpSharedObject::Open(const std::string& path, std::string* reason) {
    // No message box for a missing dependency: the host reports the failure itself.
    const UINT previous = ::SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);
    // The loader takes the path as UTF-16, as every file call of the host's does.
    HMODULE object = ::LoadLibraryW(ZtUSysString::PathToWide(path).c_str());
    const DWORD error = ::GetLastError();
    ::SetErrorMode(previous);
    if (!object && reason)
        *reason = SystemMessage(error);
    return reinterpret_cast<void*>(object);
}

void* ZtOpSharedObject::Find(void* object, const char* name) {
    return reinterpret_cast<void*>(::GetProcAddress(static_cast<HMODULE>(object), name));
}

void ZtOpSharedObject::Close(void* object) {
    ::FreeLibrary(static_cast<HMODULE>(object));
}
