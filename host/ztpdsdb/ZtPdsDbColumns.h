#pragma once
#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

// A column's type as the database declares it, as far as the schema check needs to know.
enum class ZtPdsDbColumnType {
    kInteger,
    kText,
    kUndeclared, // a column of a view made from an expression: its rows tell
    kOther,
};

struct ZtPdsDbColumn {
    std::string name;
    ZtPdsDbColumnType type;
    std::string typeName; // as the database spells it, for messages
};

// The columns the read selects, in this order: two integers, then two texts.
constexpr std::array<const char*, 4> kZtPdsDbColumnNames = {"entity", "occurrence", "name",
                                                            "value"};
constexpr bool ZtPdsDbIsIntegerColumn(std::size_t index) {
    return index < 2;
}

// Finds the four columns among `columns` (names compared without regard to ASCII case) and
// checks their declared types; `found` gets their names as the database spells them.
// False with the problem in `problem`.
bool ZtPdsDbMatchColumns(const std::vector<ZtPdsDbColumn>& columns,
                         std::array<std::string, 4>* found, std::string* problem);

// The problem of a row whose value in column `index` is of the kind `held` ("a real
// number", "a blob") where the column's type is expected. Rows count from 1.
std::string ZtPdsDbRowProblem(std::size_t row, std::size_t index, const char* held);

// An identifier quoted for SQL: in double quotes, each inner one doubled.
std::string ZtPdsDbQuote(std::string_view identifier);
