#pragma once
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

// Wide text. A character is one UTF-16 code unit held in a wchar_t, on every platform;
// lengths and indices count these units.

// True for the characters the host trims: U+0009 to U+000D and U+0020.
inline bool ZtUIsWhiteSpace(wchar_t c) {
    return c == L' ' || (c >= L'\t' && c <= L'\r');
}

// `text` without the white space at its ends, as Trim takes it off, but not copied.
inline std::wstring_view ZtUTrimmedView(std::wstring_view text) {
    while (!text.empty() && ZtUIsWhiteSpace(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && ZtUIsWhiteSpace(text.back()))
        text.remove_suffix(1);
    return text;
}

// Stored text.
class ZtUWideString {
public:
    ZtUWideString() = default;
    ZtUWideString(const wchar_t* text) { SetString(text); }
    ZtUWideString(std::wstring text) : text_(std::move(text)) {}

    void SetString(const wchar_t* text) { text_ = text ? text : L""; }
    void SetString(const wchar_t* text, std::size_t length) {
        text_.assign(text ? text : L"", text ? length : 0);
    }
    const wchar_t* GetString() const { return text_.c_str(); }
    std::size_t GetLength() const { return text_.size(); }
    bool IsEmpty() const { return text_.empty(); }
    const std::wstring& Str() const { return text_; }

    bool operator==(const wchar_t* text) const { return text_ == (text ? text : L""); }
    bool operator==(const ZtUWideString& other) const { return text_ == other.text_; }
    bool operator<(const ZtUWideString& other) const { return text_ < other.text_; }

private:
    std::wstring text_;
};

// Text being built.
class ZtUWideStringBuffer {
public:
    ZtUWideStringBuffer() = default;
    ZtUWideStringBuffer(const wchar_t* text) { SetString(text); }

    void SetString(const wchar_t* text) { text_ = text ? text : L""; }
    // Text from outside the buffer is appended to the emptied buffer, which is cheaper
    // than an assignment that must allow for the text being the buffer's own.
    void SetString(const wchar_t* text, std::size_t length) {
        if (!text) {
            text_.clear();
        } else if (std::less_equal<>()(text_.data(), text) &&
                   std::less_equal<>()(text, text_.data() + text_.size())) {
            text_.assign(text, length);
        } else {
            text_.clear();
            text_.append(text, length);
        }
    }
    // Takes the text without copying it.
    void SetString(std::wstring&& text) { text_ = std::move(text); }
    ZtUWideStringBuffer& operator=(const ZtUWideString& text) {
        text_ = text.Str();
        return *this;
    }
    void Append(const wchar_t* text) { text_ += text ? text : L""; }
    void Append(const wchar_t* text, std::size_t length) { text_.append(text, length); }
    void Append(wchar_t c) { text_ += c; }
    void Clear() { text_.clear(); }
    void Reserve(std::size_t capacity) { text_.reserve(capacity); }

    const wchar_t* GetString() const { return text_.c_str(); }
    std::size_t GetLength() const { return text_.size(); }
    bool IsEmpty() const { return text_.empty(); }
    // The character at `index`; 0 past the end.
    wchar_t CharAtPos(std::size_t index) const { return index < text_.size() ? text_[index] : 0; }
    const std::wstring& Str() const { return text_; }

    // Copies `count` characters from `first` into `out`, as many as there are. `out` may
    // be this buffer, which then keeps those characters in place, without a copy.
    void ExtractSubString(std::size_t first, std::size_t count, ZtUWideStringBuffer* out) const;
    // The first occurrence of `text` at or after `start`, as a pointer into this buffer,
    // or null.
    const wchar_t* Find(const wchar_t* text, std::size_t start) const;
    // Replaces occurrences of `from` by `to`: every one if `all` is nonzero, else the
    // first. Returns the number replaced.
    int Replace(const wchar_t* from, const wchar_t* to, int all);
    // Takes white space off both ends, or one end, in place.
    void Trim();
    void TrimLeft();
    void TrimRight();
    // Lower-cases ASCII letters only, so that results never depend on a locale.
    void LowerCase();
    // printf-style; "%s" takes a wide string (see ZtUFormatV).
    void Format(const wchar_t* format, ...);

    bool operator==(const wchar_t* text) const { return text_ == (text ? text : L""); }
    bool operator==(const ZtUWideStringBuffer& other) const { return text_ == other.text_; }

private:
    std::wstring text_;
};

// Splits a text at any of the delimiter characters, handing out the non-empty pieces
// between them: leading, trailing and doubled delimiters give no empty token.
class ZtUWideStringTokeniser {
public:
    ZtUWideStringTokeniser(const wchar_t* text, const wchar_t* delimiters);

    bool MoreTokens() const { return next_ < text_.size(); }
    // Where in the text the next token begins.
    std::size_t GetPosition() const { return next_; }
    // Writes the next token to `out` and returns true, or returns false when none is left.
    bool NextToken(ZtUWideStringBuffer* out);

private:
    void SkipDelimiters();

    std::wstring text_;
    std::wstring delimiters_;
    std::size_t next_ = 0;
};
