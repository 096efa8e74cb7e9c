#pragma once
#include "report/ReportStream.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// Writes one JSON document to a report stream, or into a string, indented two spaces a level.
// Containers opened with `inline` set stay on one line (short number arrays). Doubles are written
// in their shortest form that reads back exactly, and a value that is not finite as null. The
// document is UTF-8 throughout: in a narrow text, a byte that begins no valid sequence (of a
// file name that is no UTF-8) is written as the four characters \xNN; wide text is UTF-16 code
// units, whose pairs become UTF-8 and a lone surrogate U+FFFD. A path is written from its
// bytes (ZtUSysString::WideToPath), so that its odd bytes show as \xNN.
class JsonWriter {
public:
    explicit JsonWriter(ReportStream& out) : out_(out) {}
    // Gathers the document in `text`.
    explicit JsonWriter(std::string& text) : gathered_(std::in_place, text), out_(*gathered_) {}

    void BeginObject(bool isInline = false) { Open('{', isInline); }
    void EndObject() { Close('}'); }
    void BeginArray(bool isInline = false) { Open('[', isInline); }
    void EndArray() { Close(']'); }
    // Names the next member of the enclosing object.
    void Key(std::string_view key);

    void Null();
    void Bool(bool value);
    void Int(std::int64_t value);
    void UInt(std::uint64_t value);
    void Double(double value);
    void String(std::string_view utf8);
    void WideString(std::wstring_view text);

    // An inline array of doubles, such as a point.
    void Doubles(std::initializer_list<double> values);

private:
    struct Level {
        bool isInline;
        bool empty;
    };
    void Open(char bracket, bool isInline);
    void Close(char bracket);
    // Separates and indents before a value (not after a key).
    void BeforeValue();
    void NewLine();

    std::optional<ReportStream> gathered_;
    ReportStream& out_;
    std::vector<Level> levels_;
    bool afterKey_ = false;
};
