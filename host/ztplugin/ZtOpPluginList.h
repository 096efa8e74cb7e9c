#pragma once
#include "ztutil/ZtUVector.h"

#include <cstddef>

// The list of plug-ins that a plug-in library's entry function returns: untyped pointers
// to ZtOpPlugin objects. The host owns the list and the plug-ins once the entry returns.
class ZtOpPluginList : public ZtUVoidPtrVector {
public:
    // The host's own storage, so that a list made in a plug-in library is freed by the host.
    static void* operator new(std::size_t size);
    static void operator delete(void* block);
};
