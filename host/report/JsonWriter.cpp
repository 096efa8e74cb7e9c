#include "report/JsonWriter.h"

#include "ztutil/ZtUSysString.h"

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

// Escapes what JSON requires of a UTF-8 text, and writes each byte that begins no valid
// sequence (a file name's, on POSIX) as the text "\xNN", so that the document is UTF-8
// throughout; runs that need nothing go out whole.
void AppendJsonEscaped(ReportStream& out, std::string_view utf8) {
    std::size_t runStart = 0;
    for (std::size_t i = 0; i < utf8.size(); ++i) {
        const char c = utf8[i];
        const char* escape = nullptr;
        if (static_cast<unsigned char>(c) >= 0x80) {
            char32_t codePoint;
            const std::size_t length =
                ZtUSysString::DecodeUtf8(reinterpret_cast<const unsigned char*>(utf8.data() + i),
                                         utf8.size() - i, &codePoint);
            if (length != 0) {
                i += length - 1;
                continue;
            }
            static const char hex[] = "0123456789abcdef";
            const char byte[] = {'\\', '\\', 'x', hex[(c >> 4) & 0xF], hex[c & 0xF]};
            out += utf8.substr(runStart, i - runStart);
            out += std::string_view(byte, sizeof byte);
            runStart = i + 1;
            continue;
        }
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

// A lone surrogate, which UTF-8 can't hold, becomes U+FFFD.
void JsonWriter::WideString(std::wstring_view text) {
    String(ZtUSysString::WideToUtf8(text));
}

void JsonWriter::Key(std::string_view key) {
    BeforeValue();
    out_ += '"';
    AppendJsonEscaped(out_, key);
    out_ += "\": ";
    afterKey_ = true;
}
