#pragma once
#include "ztutil/ZtURefCounted.h"
#include "ztutil/ZtUString.h"
#include "ztutil/ZtUWideString.h"

#include <map>
#include <string>
#include <utility>

class ZtUNameDict;

// A name with an internal (narrow) and a display (wide) form. Names from a ZtUNameDict
// are interned: two of them are equal when they are the same object. A name made with
// new is counted: whoever keeps it (a ZtUData, a dictionary) holds a count.
class ZtUName : public ZtURefCounted {
public:
    // A null display form shows the internal one.
    ZtUName(const char* internal, const wchar_t* display);

    const ZtUString& GetInternal() const { return internal_; }
    const ZtUWideString& GetDisplay() const { return display_; }
    // The name's text, as the option system carries it: the internal form.
    const ZtUString& GetString() const { return internal_; }

    // The numbers of the host's standard names; part of the host's contract.
    static constexpr int kStandardLevel = 17;
    static constexpr int kStandardColour = 18;
    static constexpr int kStandardSourceFile = 19;
    // The standard name of `number`; null for other numbers.
    static ZtUName* StandardName(int number, ZtUNameDict* dict);

    // The text that carries a value of a named enumeration through the option system.
    static void MakeEnumName(const char* enumName, int value, ZtUStringBuffer* out);
    // Takes such a text apart; returns 0 (and leaves the outputs alone) if it is none.
    static int DecodeEnumName(const ZtUString& text, int* value, ZtUStringBuffer* enumName);

private:
    ZtUString internal_;
    ZtUWideString display_;
};

// The interned names of one document.
class ZtUNameDict {
public:
    ZtUNameDict() = default;
    ZtUNameDict(const ZtUNameDict&) = delete;
    ZtUNameDict& operator=(const ZtUNameDict&) = delete;
    ~ZtUNameDict();

    // The one name for this pair of forms, made on first use.
    ZtUName* Find(const wchar_t* display, const char* internal);
    std::size_t Size() const { return names_.size(); }

private:
    std::map<std::pair<std::string, std::wstring>, ZtUName*> names_;
};
