#include "ztutil/ZtUData.h"

#include <cstdint>
#include <string_view>

ZtUData::ZtUData(const ZtUData& other) {
    *this = other;
}

ZtUData& ZtUData::operator=(const ZtUData& other) {
    if (this == &other)
        return *this;
    if (other.type_ == kName && other.name_)
        other.name_->AddRef();
    Clear();
    type_ = other.type_;
    switch (type_) {
    case kBool:
        b_ = other.b_;
        break;
    case kInt32:
    case kInt64:
        i_ = other.i_;
        break;
    case kUInt64:
        u_ = other.u_;
        break;
    case kDouble:
        d_ = other.d_;
        break;
    case kName:
        name_ = other.name_;
        break;
    case kWideString:
        text_ = other.text_;
        break;
    case kEmpty:
        break;
    }
    return *this;
}

ZtUData::~ZtUData() {
    Clear();
}

void ZtUData::Clear() {
    if (type_ == kName && name_)
        name_->Release();
    type_ = kEmpty;
    text_.reset();
}

void ZtUData::SetBool(bool value) {
    Clear();
    type_ = kBool;
    b_ = value;
}

void ZtUData::SetInt32(std::int32_t value) {
    Clear();
    type_ = kInt32;
    i_ = value;
}

void ZtUData::SetInt64(std::int64_t value) {
    Clear();
    type_ = kInt64;
    i_ = value;
}

void ZtUData::SetUInt64(std::uint64_t value) {
    Clear();
    type_ = kUInt64;
    u_ = value;
}

void ZtUData::SetDouble(double value) {
    Clear();
    type_ = kDouble;
    d_ = value;
}

void ZtUData::SetWideString(const wchar_t* value) {
    Clear();
    text_ = std::make_shared<const std::wstring>(value ? value : L"");
    type_ = kWideString;
}

void ZtUData::TakeWideString(std::wstring&& value) {
    Clear();
    text_ = std::make_shared<const std::wstring>(std::move(value));
    type_ = kWideString;
}

void ZtUData::SetName(ZtUName* name) {
    if (name)
        name->AddRef();
    Clear();
    type_ = kName;
    name_ = name;
}

bool ZtUData::GetBool() const {
    switch (type_) {
    case kBool:
        return b_;
    case kInt32:
    case kInt64:
        return i_ != 0;
    case kUInt64:
        return u_ != 0;
    case kDouble:
        return d_ != 0.0;
    default:
        return false;
    }
}

std::int64_t ZtUData::GetInt64() const {
    switch (type_) {
    case kBool:
        return b_ ? 1 : 0;
    case kInt32:
    case kInt64:
        return i_;
    case kUInt64:
        return static_cast<std::int64_t>(u_);
    case kDouble:
        // Out of range (and NaN) saturates instead of invoking undefined behaviour.
        if (d_ != d_)
            return 0;
        if (d_ >= 9223372036854775807.0)
            return INT64_MAX;
        if (d_ <= -9223372036854775808.0)
            return INT64_MIN;
        return static_cast<std::int64_t>(d_);
    default:
        return 0;
    }
}

std::uint64_t ZtUData::GetUInt64() const {
    return type_ == kUInt64 ? u_ : static_cast<std::uint64_t>(GetInt64());
}

double ZtUData::GetDouble() const {
    switch (type_) {
    case kDouble:
        return d_;
    case kUInt64:
        return static_cast<double>(u_);
    default:
        return static_cast<double>(GetInt64());
    }
}

bool ZtUData::operator==(const ZtUData& other) const {
    if (type_ != other.type_)
        return false;
    switch (type_) {
    case kEmpty:
        return true;
    case kBool:
        return b_ == other.b_;
    case kInt32:
    case kInt64:
        return i_ == other.i_;
    case kUInt64:
        return u_ == other.u_;
    case kDouble:
        return d_ == other.d_;
    case kWideString:
        return std::wstring_view(GetWideString()) == other.GetWideString();
    case kName:
        return name_ == other.name_;
    }
    return false;
}
