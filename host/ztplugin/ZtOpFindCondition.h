#pragma once
#include "ztutil/ZtUData.h"
#include "ztutil/ZtUName.h"
#include "ztutil/ZtURefCounted.h"

// The operators of a find condition. The numbers are part of the host's contract.
struct ZtOpFindConditionOp {
    enum Enum : int {
        kNone = 0,           // matches nothing
        kHasCategory = 1,    // the object has the condition's category
        kHasNotCategory = 2, // ... has not
        kHasProperty = 3,    // the object has the property
        kHasNotProperty = 4, // ... has not
        kUnused5 = 5,        // matches nothing
        kEqual = 6,
        kNotEqual = 7,
        kLess = 8,
        kLessEqual = 9,
        kGreaterEqual = 10,
        kGreater = 11,
        kWildcard = 13, // "*" any run, "?" any one character, over the whole value
    };
};

// The flags of a find condition, a bit set.
struct ZtOpFindConditionFlags {
    enum Enum : unsigned int {
        kNone = 0,
        kIgnoreCase = 1,      // text comparison ignores case
        kFlag4 = 4,           // carried, no effect on evaluation
        kFlag8 = 8,           // carried, no effect on evaluation
        kNegate = 32,         // on a value comparison: the property must be there and the
                              // comparison must fail
        kNewAlternative = 64, // the condition opens a new alternative of its find query
    };
};

// One condition of a find query: an operator applied to a property (optionally within a
// category) and a value. A value type: copies are independent. It holds a count on each
// name, so that it may outlive the dictionary's other holders.
class ZtOpFindCondition {
public:
    ZtOpFindCondition() = default;
    // `category` may be null: then any category of the object counts.
    ZtOpFindCondition(const ZtUName* category, const ZtUName* property,
                      ZtOpFindConditionFlags::Enum flags, ZtOpFindConditionOp::Enum op,
                      const ZtUData& value);

    ZtOpFindConditionOp::Enum GetCondition() const { return op_; }
    void SetCondition(ZtOpFindConditionOp::Enum op) { op_ = op; }
    ZtOpFindConditionFlags::Enum GetFlags() const { return flags_; }
    void SetFlags(ZtOpFindConditionFlags::Enum flags) { flags_ = flags; }
    // Adds `flags` to those the condition has.
    void AddFlags(unsigned int flags) {
        flags_ = static_cast<ZtOpFindConditionFlags::Enum>(flags_ | flags);
    }
    bool HasFlags(unsigned int flags) const { return (flags_ & flags) == flags; }

    const ZtUName* GetCategory() const { return category_.Get(); }
    const ZtUName* GetProperty() const { return property_.Get(); }
    const ZtUData& GetValue() const { return value_; }

    // Equal operator, flags and value, and the very same names.
    bool operator==(const ZtOpFindCondition& other) const {
        return category_.Get() == other.category_.Get() &&
               property_.Get() == other.property_.Get() && flags_ == other.flags_ &&
               op_ == other.op_ && value_ == other.value_;
    }

private:
    ZtUAutoRefPtr<const ZtUName> category_;
    ZtUAutoRefPtr<const ZtUName> property_;
    ZtOpFindConditionFlags::Enum flags_ = ZtOpFindConditionFlags::kNone;
    ZtOpFindConditionOp::Enum op_ = ZtOpFindConditionOp::kNone;
    ZtUData value_;
};
