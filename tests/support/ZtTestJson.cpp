#include "support/ZtTestJson.h"

#include <cstdlib>
#include <fstream>
#include <sstream>

namespace {

const ZtTestJson kNullValue;

class Parser {
public:
    explicit Parser(const std::string& text) : text_(text) {}

    bool Document(ZtTestJson* out, std::string* error) {
        const bool ok = Value(out, 0) && (SkipSpace(), at_ == text_.size());
        if (!ok && error)
            *error = "bad JSON at byte " + std::to_string(at_);
        return ok;
    }

private:
    static constexpr int kMaxDepth = 256;

    void SkipSpace() {
        while (at_ < text_.size() && (text_[at_] == ' ' || text_[at_] == '\n' ||
                                      text_[at_] == '\r' || text_[at_] == '\t'))
            ++at_;
    }
    bool Literal(const char* word) {
        const std::string w(word);
        if (text_.compare(at_, w.size(), w) != 0)
            return false;
        at_ += w.size();
        return true;
    }
    bool String(std::string* out) {
        if (at_ >= text_.size() || text_[at_] != '"')
            return false;
        ++at_;
        while (at_ < text_.size() && text_[at_] != '"') {
            char c = text_[at_++];
            if (c == '\\') {
                if (at_ >= text_.size())
                    return false;
                const char e = text_[at_++];
                if (e == 'u') {
                    if (at_ + 4 > text_.size())
                        return false;
                    const unsigned long code =
                        std::strtoul(text_.substr(at_, 4).c_str(), nullptr, 16);
                    at_ += 4;
                    // Tests meet only ASCII escapes; others keep their code as a marker.
                    c = code < 0x80 ? static_cast<char>(code) : '?';
                } else {
                    c = e == 'n'   ? '\n'
                        : e == 't' ? '\t'
                        : e == 'r' ? '\r'
                        : e == 'b' ? '\b'
                        : e == 'f' ? '\f'
                                   : e;
                }
            }
            out->push_back(c);
        }
        if (at_ >= text_.size())
            return false;
        ++at_;
        return true;
    }
    bool Value(ZtTestJson* out, int depth) {
        SkipSpace();
        if (at_ >= text_.size() || depth > kMaxDepth)
            return false;
        const char c = text_[at_];
        if (c == '{') {
            out->kind = ZtTestJson::kObject;
            ++at_;
            SkipSpace();
            if (at_ < text_.size() && text_[at_] == '}')
                return ++at_, true;
            while (true) {
                SkipSpace();
                std::string key;
                if (!String(&key))
                    return false;
                SkipSpace();
                if (at_ >= text_.size() || text_[at_++] != ':')
                    return false;
                if (!Value(&out->members[key], depth + 1))
                    return false;
                SkipSpace();
                if (at_ < text_.size() && text_[at_] == ',') {
                    ++at_;
                    continue;
                }
                return at_ < text_.size() && text_[at_++] == '}';
            }
        }
        if (c == '[') {
            out->kind = ZtTestJson::kArray;
            ++at_;
            SkipSpace();
            if (at_ < text_.size() && text_[at_] == ']')
                return ++at_, true;
            while (true) {
                out->items.emplace_back();
                if (!Value(&out->items.back(), depth + 1))
                    return false;
                SkipSpace();
                if (at_ < text_.size() && text_[at_] == ',') {
                    ++at_;
                    continue;
                }
                return at_ < text_.size() && text_[at_++] == ']';
            }
        }
        if (c == '"') {
            out->kind = ZtTestJson::kString;
            return String(&out->text);
        }
        if (Literal("null"))
            return out->kind = ZtTestJson::kNull, true;
        if (Literal("true"))
            return out->kind = ZtTestJson::kBool, out->boolean = true, true;
        if (Literal("false"))
            return out->kind = ZtTestJson::kBool, out->boolean = false, true;
        const char* begin = text_.c_str() + at_;
        char* end = nullptr;
        out->number = std::strtod(begin, &end);
        if (end == begin)
            return false;
        out->kind = ZtTestJson::kNumber;
        at_ += static_cast<std::size_t>(end - begin);
        return true;
    }

    const std::string& text_;
    std::size_t at_ = 0;
};

} // namespace

const ZtTestJson& ZtTestJson::operator[](const std::string& key) const {
    const auto at = members.find(key);
    return at == members.end() ? kNullValue : at->second;
}

const ZtTestJson& ZtTestJson::operator[](std::size_t index) const {
    return index < items.size() ? items[index] : kNullValue;
}

bool ZtTestParseJson(const std::string& text, ZtTestJson* out, std::string* error) {
    *out = ZtTestJson();
    return Parser(text).Document(out, error);
}

bool ZtTestReadJsonFile(const std::string& path, ZtTestJson* out, std::string* error) {
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        if (error)
            *error = "cannot read " + path;
        return false;
    }
    std::ostringstream text;
    text << in.rdbuf();
    return ZtTestParseJson(text.str(), out, error);
}
