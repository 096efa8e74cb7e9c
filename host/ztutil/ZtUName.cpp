#include "ztutil/ZtUName.h"

#include "ztutil/ZtUResource.h"
#include "ztutil/ZtUSysString.h"

#include <charconv>

ZtUName::ZtUName(const char* internal, const wchar_t* display)
    : internal_(internal),
      display_(display ? std::wstring(display) : ZtUSysString::Utf8ToWide(internal_.Str())) {}

ZtUName* ZtUName::StandardName(int number, ZtUNameDict* dict) {
    if (!dict)
        return nullptr;
    switch (number) {
    case kStandardLevel:
        return dict->Find(ZtUResource::FindString("ztlddgn_level", L"Level"), "ZtStdLevel");
    case kStandardColour:
        return dict->Find(ZtUResource::FindString("ztlddgn_mat_colour", L"Colour"), "ZtStdColour");
    case kStandardSourceFile:
        return dict->Find(L"Source File", "ZtStdSourceFile");
    default:
        return nullptr;
    }
}

// An enum value travels as "<enum name>#<decimal value>".
void ZtUName::MakeEnumName(const char* enumName, int value, ZtUStringBuffer* out) {
    if (!out)
        return;
    out->SetString(enumName);
    out->Append('#');
    out->Append(std::to_string(value).c_str());
}

int ZtUName::DecodeEnumName(const ZtUString& text, int* value, ZtUStringBuffer* enumName) {
    const std::string& s = text.Str();
    const std::size_t hash = s.rfind('#');
    if (hash == std::string::npos || hash + 1 >= s.size())
        return 0;
    int parsed = 0;
    const char* first = s.data() + hash + 1;
    const char* last = s.data() + s.size();
    auto [end, error] = std::from_chars(first, last, parsed);
    if (error != std::errc() || end != last)
        return 0;
    if (value)
        *value = parsed;
    if (enumName)
        enumName->SetString(s.substr(0, hash).c_str());
    return 1;
}

ZtUNameDict::~ZtUNameDict() {
    for (auto& entry : names_)
        entry.second->Release();
}

ZtUName* ZtUNameDict::Find(const wchar_t* display, const char* internal) {
    std::pair<std::string, std::wstring> key(internal ? internal : "", display ? display : L"");
    auto at = names_.find(key);
    if (at != names_.end())
        return at->second;
    auto* name = new ZtUName(key.first.c_str(), key.second.c_str());
    name->AddRef();
    try {
        names_.emplace(std::move(key), name);
    } catch (...) {
        name->Release();
        throw;
    }
    return name;
}
