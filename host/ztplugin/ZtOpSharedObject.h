#pragma once
#include <string>

// The operating system's loader, as the plug-in library needs it: a shared object opened
// by its UTF-8 path, a function found by name, the object closed. Each platform has its
// own implementation file.
namespace ZtOpSharedObject {

// The opened object, or null with the loader's reason in `reason`.
void* Open(const std::string& path, std::string* reason);
// The address of the exported function `name`, or null.
void* Find(void* object, const char* name);
void Close(void* object);

} // namespace ZtOpSharedObject
