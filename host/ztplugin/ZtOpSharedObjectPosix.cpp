#include "ztplugin/ZtOpSharedObject.h"

#include <dlfcn.h>

void* ZtOpSharedObject::Open(const std::string& path, std::string* reason) {
    void* object = ::dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!object && reason)
        *reason = ::dlerror();
    return object;
}

void* ZtOpSharedObject::Find(void* object, const char* name) {
    return ::dlsym(object, name);
}

void ZtOpSharedObject::Close(void* object) {
    ::dlclose(object);
}
