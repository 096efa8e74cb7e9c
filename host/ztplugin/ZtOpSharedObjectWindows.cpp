#include "ztplugin/ZtOpSharedObject.h"

#include <windows.h>

#include <string>

namespace {

// The path as the loader takes it: UTF-16, converted from the host's UTF-8.
std::wstring WidePath(const std::string& path) {
    const int size =
        ::MultiByteToWideChar(CP_UTF8, 0, path.data(), static_cast<int>(path.size()), nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(size), L'\0');
    if (size > 0)
        ::MultiByteToWideChar(CP_UTF8, 0, path.data(), static_cast<int>(path.size()), wide.data(),
                              size);
    return wide;
}

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
    HMODULE object = ::LoadLibraryW(WidePath(path).c_str());
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
