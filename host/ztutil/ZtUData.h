#pragma once
#include "ztutil/ZtUName.h"
#include "ztutil/ZtUWideString.h"

#include <cstdint>
#include <memory>
#include <string>

// The host's variant value. A data value that holds a name holds one count on it. Copies
// of a text value share its text, which is never changed in place, so that values that
// repeat one text (the conditions of find queries) cost no more than a pointer each.
class ZtUData {
public:
    enum Type { kEmpty, kBool, kInt32, kInt64, kUInt64, kDouble, kWideString, kName };

    ZtUData() = default;
    ZtUData(const ZtUData& other);
    ZtUData& operator=(const ZtUData& other);
    ~ZtUData();

    Type GetType() const { return type_; }
    bool IsEmpty() const { return type_ == kEmpty; }
    void Clear();

    void SetBool(bool value);
    void SetInt32(std::int32_t value);
    void SetInt64(std::int64_t value);
    void SetUInt64(std::uint64_t value);
    void SetDouble(double value);
    void SetWideString(const wchar_t* value);
    // Takes the text over without a copy: a long text costs its memory once.
    void TakeWideString(std::wstring&& value);
    void SetName(ZtUName* name);

    // Each getter gives the value converted from the numeric kinds, and a zero value
    // (false, 0, empty text, null name) for any kind it cannot convert.
    bool GetBool() const;
    std::int32_t GetInt32() const { return static_cast<std::int32_t>(GetInt64()); }
    std::int64_t GetInt64() const;
    std::uint64_t GetUInt64() const;
    double GetDouble() const;
    const wchar_t* GetWideString() const {
        return type_ == kWideString && text_ ? text_->c_str() : L"";
    }
    ZtUName* GetName() const { return type_ == kName ? name_ : nullptr; }

    bool operator==(const ZtUData& other) const;

private:
    Type type_ = kEmpty;
    union {
        bool b_;
        std::int64_t i_;
        std::uint64_t u_;
        double d_;
        ZtUName* name_;
    };
    std::shared_ptr<const std::wstring> text_;
};
