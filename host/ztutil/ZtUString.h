#pragma once
#include <string>

// Narrow text: resource keys, plug-in names, internal names of properties.

class ZtUString {
public:
    ZtUString() = default;
    ZtUString(const char* text) : text_(text ? text : "") {}
    ZtUString(std::string text) : text_(std::move(text)) {}

    const char* GetString() const { return text_.c_str(); }
    std::size_t GetLength() const { return text_.size(); }
    bool IsEmpty() const { return text_.empty(); }
    void SetString(const char* text) { text_ = text ? text : ""; }
    bool Equal(const char* text) const { return text_ == (text ? text : ""); }
    bool operator==(const ZtUString& other) const { return text_ == other.text_; }
    bool operator==(const char* text) const { return Equal(text); }
    const std::string& Str() const { return text_; }

private:
    std::string text_;
};

class ZtUStringBuffer {
public:
    ZtUStringBuffer() = default;
    ZtUStringBuffer(const char* text) : text_(text ? text : "") {}

    const char* GetString() const { return text_.c_str(); }
    std::size_t GetLength() const { return text_.size(); }
    bool IsEmpty() const { return text_.empty(); }
    void SetString(const char* text) { text_ = text ? text : ""; }
    void Append(const char* text) { text_ += text ? text : ""; }
    void Append(char c) { text_ += c; }
    void Clear() { text_.clear(); }
    bool operator==(const char* text) const { return text_ == (text ? text : ""); }
    const std::string& Str() const { return text_; }

private:
    std::string text_;
};
