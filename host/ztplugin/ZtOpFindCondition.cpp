#include "ztplugin/ZtOpFindCondition.h"

ZtOpFindCondition::ZtOpFindCondition(const ZtUName* category, const ZtUName* property,
                                     ZtOpFindConditionFlags::Enum flags,
                                     ZtOpFindConditionOp::Enum op, const ZtUData& value)
    : category_(category), property_(property), flags_(flags), op_(op), value_(value) {}
