#include "ztutil/ZtUResource.h"

#include <cstring>

namespace {

struct Resource {
    const char* key;
    const wchar_t* text;
};

// The menu, file-type and format keys of plug-ins are deliberately absent: their
// defaults show.
constexpr Resource kResources[] = {
    {"ztlddgn_level", L"Level"},
    {"ztlddgn_mat_colour", L"Colour"},
    {"ztlddgn_pds_compdata", L"PDS"},
    {"IDS_WIN32_REDLINE_TAG_VIEW_FMT", L"Tag View %llu"},
};

} // namespace

const wchar_t* ZtUResource::FindString(const char* key, const wchar_t* fallback) {
    if (key)
        for (const Resource& resource : kResources)
            if (std::strcmp(resource.key, key) == 0)
                return resource.text;
    return fallback;
}
