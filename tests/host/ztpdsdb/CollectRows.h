#pragma once
#include "ztpdsdb/ZtPdsDbSource.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// One row of an attribute source, as the tests compare them.
struct CollectedRow {
    std::int64_t entity, occurrence;
    std::string name, value;
    bool operator==(const CollectedRow&) const = default;
};

// A sink that keeps every row it is given.
struct CollectRows : ZtPdsDbRowSink {
    bool Row(std::int64_t entity, std::int64_t occurrence, std::string_view name,
             std::string_view value, std::string*) override {
        rows.push_back({entity, occurrence, std::string(name), std::string(value)});
        return true;
    }
    std::vector<CollectedRow> rows;
};
