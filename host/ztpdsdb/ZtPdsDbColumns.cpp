#include "ztpdsdb/ZtPdsDbColumns.h"

namespace {

bool SameName(std::string_view a, std::string_view b) {
    if (a.size() != b.size())
        return false;
    for (std::size_t i = 0; i < a.size(); ++i) {
        const char x = a[i] >= 'A' && a[i] <= 'Z' ? static_cast<char>(a[i] - 'A' + 'a') : a[i];
        const char y = b[i] >= 'A' && b[i] <= 'Z' ? static_cast<char>(b[i] - 'A' + 'a') : b[i];
        if (x != y)
            return false;
    }
    return true;
}

const char* Expected(std::size_t index) {
    return ZtPdsDbIsIntegerColumn(index) ? "an integer" : "a text";
}

} // namespace

bool ZtPdsDbMatchColumns(const std::vector<ZtPdsDbColumn>& columns,
                         std::array<std::string, 4>* found, std::string* problem) {
    for (std::size_t i = 0; i < kZtPdsDbColumnNames.size(); ++i) {
        const ZtPdsDbColumn* column = nullptr;
        for (const ZtPdsDbColumn& c : columns)
            if (SameName(c.name, kZtPdsDbColumnNames[i])) {
                column = &c;
                break;
            }
        if (!column) {
            *problem = std::string("element_attributes has no column ") + kZtPdsDbColumnNames[i] +
                       " (its columns:";
            for (const ZtPdsDbColumn& c : columns)
                *problem += " " + c.name;
            *problem += ")";
            return false;
        }
        const ZtPdsDbColumnType wanted =
            ZtPdsDbIsIntegerColumn(i) ? ZtPdsDbColumnType::kInteger : ZtPdsDbColumnType::kText;
        if (column->type != wanted && column->type != ZtPdsDbColumnType::kUndeclared) {
            *problem = "column " + column->name + " of element_attributes is of type " +
                       column->typeName + ", not " + Expected(i) + " type";
            if (!ZtPdsDbIsIntegerColumn(i))
                *problem +=
                    " (a view over the table can cast it: CAST(" + column->name + " AS TEXT))";
            return false;
        }
        (*found)[i] = column->name;
    }
    return true;
}

std::string ZtPdsDbRowProblem(std::size_t row, std::size_t index, const char* held) {
    return "row " + std::to_string(row) + " of element_attributes holds " + held + " in column " +
           kZtPdsDbColumnNames[index] + ", where " + Expected(index) + " is expected";
}

std::string ZtPdsDbQuote(std::string_view identifier) {
    std::string quoted = "\"";
    for (const char c : identifier) {
        quoted += c;
        if (c == '"')
            quoted += '"';
    }
    return quoted + "\"";
}
