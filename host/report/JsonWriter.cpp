#include "report/JsonWriter.h"

#include "ztutil/ZtUSysString.h"
#include "ztutil/ZtUUtf16.h"

#include <charconv>
#include <cmath>

void JsonWriter::NewLine() {
    out_ += '\n';
    out_.Append(levels_.size() * 2, ' ');
}

void JsonWriter::BeforeValue() {
    if (afterKey_) {
        afterKey_ = false;
        return;
    }
    if (levels_.empty())
        return;
    Level& level = levels_.back();
    if (!level.empty)
        out_ += level.isInline ? ", " : ",";
    if (!level.isInline)
        NewLine();
    level.empty = false;
}

void JsonWriter::Open(char bracket, bool isInline) {
    BeforeValue();
    out_ += bracket;
    // Inside an inline container everything stays inline.
    const bool parentInline = !levels_.empty() && levels_.back().isInline;
    levels_.push_back({isInline || parentInline, true});
}

void JsonWriter::Close(char bracket) {
    const Level level = levels_.back();
    levels_.pop_back();
    if (!level.empty && !level.isInline)
        NewLine();
    out_ += bracket;
    if (levels_.empty())
        out_ += '\n';
}

void JsonWriter::Null() {
    BeforeValue();
    out_ += "null";
}

void JsonWriter::Bool(bool value) {
    BeforeValue();
    out_ += value ? "true" : "false";
}

void JsonWriter::Int(std::int64_t value) {
    BeforeValue();
    out_ += std::to_string(value);
}

void JsonWriter::UInt(std::uint64_t value) {
    BeforeValue();
    out_ += std::to_string(value);
}

void JsonWriter::Double(double value) {
    if (!std::isfinite(value)) {
        Null();
        return;
    }
    BeforeValue();
    if (value == 0)
        value = 0; // no "-0"
    char buffer[32];
    auto [end, error] = std::to_chars(buffer, buffer + sizeof buffer, value);
    (void)error;
    out_ += std::string_view(buffer, static_cast<std::size_t>(end - buffer));
}

void JsonWriter::Doubles(std::initializer_list<double> values) {
    BeginArray(true);
    for (double value : values)
        Double(value);
    EndArray();
}

namespace {

void AppendJsonEscapedCodeUnit(ReportStream& out, unsigned unit) {
    static const char hex[] = "0123456789abcdef";
    const char escaped[] = {'\\',
                            'u',
                            hex[(unit >> 12) & 0xF],
                            hex[(unit >> 8) & 0xF],
                            hex[(unit >> 4) & 0xF],
                            hex[unit & 0xF]};
    out += std::string_view(escaped, sizeof escaped);
}

// Escapes what JSON requires of an already UTF-8 text; runs that need nothing go out
// whole.
void AppendJsonEscaped(ReportStream& out, std::string_view utf8) {
    std::size_t runStart = 0;
    for (std::size_t i = 0; i < utf8.size(); ++i) {
        const char c = utf8[i];
        const char* escape = nullptr;
        switch (c) {
        case '"':
            escape = "\\\"";
            break;
        case '\\':
            escape = "\\\\";
            break;
        case '\n':
            escape = "\\n";
            break;
        case '\r':
            escape = "\\r";
            break;
        case '\t':
            escape = "\\t";
            break;
        default:
            if (static_cast<unsigned char>(c) >= 0x20)
                continue;
        }
        out += utf8.substr(runStart, i - runStart);
        if (escape)
            out += escape;
        else
            AppendJsonEscapedCodeUnit(out, static_cast<unsigned char>(c));
        runStart = i + 1;
    }
    out += utf8.substr(runStart);
}

} // namespace

void JsonWriter::String(std::string_view utf8) {
    BeforeValue();
    out_ += '"';
    AppendJsonEscaped(out_, utf8);
    out_ += '"';
}

void JsonWriter::WideString(std::wstring_view text) {
    BeforeValue();
    out_ += '"';
    std::size_t runStart = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const unsigned unit = static_cast<unsigned>(text[i]) & 0xFFFF;
        if (ZtUUtf16::IsHighSurrogate(unit) && i + 1 < text.size() &&
            ZtUUtf16::IsLowSurrogate(static_cast<unsigned>(text[i + 1]) & 0xFFFF)) {
            ++i;
            continue;
        }
        if (ZtUUtf16::IsSurrogate(unit)) {
            AppendJsonEscaped(out_, ZtUSysString::WideToUtf8(text.substr(runStart, i - runStart)));
            AppendJsonEscapedCodeUnit(out_, unit);
            runStart = i + 1;
        }
    }
    AppendJsonEscaped(out_, ZtUSysString::WideToUtf8(text.substr(runStart)));
    out_ += '"';
}

void JsonWriter::Key(std::string_view key) {
    BeforeValue();
    out_ += '"';
    AppendJsonEscaped(out_, key);
    out_ += "\": ";
    afterKey_ = true;
}
