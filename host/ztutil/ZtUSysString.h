#pragma once
#include <cstddef>
#include <string>
#include <string_view>

// Character-level helpers of the host, and the conversions between the host's UTF-16
// wide text and the UTF-8 of the operating system.
class ZtUSysString {
public:
    static std::size_t WideStrlen(const wchar_t* text);
    // Compares at most `count` characters, by code unit; <0, 0 or >0.
    static int WideStrncmp(const wchar_t* a, const wchar_t* b, std::size_t count);

    // UTF-16 code units to UTF-8. A surrogate pair becomes one sequence; a lone surrogate
    // becomes U+FFFD.
    static std::string WideToUtf8(std::wstring_view text);
    // UTF-8 to UTF-16 code units. A byte that does not begin a valid, shortest-form
    // sequence stands for itself (Latin-1), so that no input is lost.
    static std::wstring Utf8ToWide(std::string_view text);
    // A file name's bytes to wide text and back, losing nothing, so that any file the
    // system can name can be opened and named in messages: valid UTF-8 decodes as usual,
    // and each byte that begins no valid sequence becomes the lone surrogate U+DC00 plus
    // the byte (U+DC80 to U+DCFF), which WideToPath turns back into that byte.
    static std::wstring PathToWide(std::string_view bytes);
    static std::string WideToPath(std::wstring_view text);

    // Appends the UTF-8 form of one code point (no surrogates) to `out`.
    static void AppendUtf8(std::string& out, char32_t codePoint);
    // Length of the valid, shortest-form UTF-8 sequence at `bytes` (at most `available`
    // bytes long), storing its code point; 0 if the bytes there are no such sequence.
    static std::size_t DecodeUtf8(const unsigned char* bytes, std::size_t available,
                                  char32_t* codePoint);
};
