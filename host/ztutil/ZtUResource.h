#pragma once

// The host's string resources.
class ZtUResource {
public:
    // The host's text for `key`, or `fallback` (which may be null) when it has none. The
    // text lives as long as the process.
    static const wchar_t* FindString(const char* key, const wchar_t* fallback);
};
