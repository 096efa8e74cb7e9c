#pragma once
#include <cstdarg>
#include <string>

// printf-style formatting of wide text with the host's conventions: "%s" and "%c" take
// wide arguments (as on the host's home platform), and 64-bit integers are written with
// the portable "%lld"/"%llu". The result replaces `out`.
void ZtUFormatV(std::wstring& out, const wchar_t* format, std::va_list args);
