#pragma once
#include <map>
#include <memory>
#include <string>
#include <vector>

// A JSON value as tests read it: enough to compare documents, not a general library.
// Numbers are doubles; object members keep no order.
struct ZtTestJson {
    enum Kind { kNull, kBool, kNumber, kString, kArray, kObject };

    Kind kind = kNull;
    bool boolean = false;
    double number = 0;
    std::string text;
    std::vector<ZtTestJson> items;
    std::map<std::string, ZtTestJson> members;

    bool IsNull() const { return kind == kNull; }
    // The member of that name; a null value if there is none.
    const ZtTestJson& operator[](const std::string& key) const;
    const ZtTestJson& operator[](std::size_t index) const;
    bool Has(const std::string& key) const { return members.count(key) != 0; }
};

// Parses a whole document; false with the place of the fault in `error`.
bool ZtTestParseJson(const std::string& text, ZtTestJson* out, std::string* error);
// Reads and parses a file; false if it can't be read or parsed.
bool ZtTestReadJsonFile(const std::string& path, ZtTestJson* out, std::string* error);
