#include "tools/ZtTestBigAttributes.h"

#include "tools/ZtTestBigModel.h"

#include <sqlite3.h>

#include <cstdio>
#include <iterator>

namespace {

bool Exec(sqlite3* db, const char* sql, std::string* error) {
    if (sqlite3_exec(db, sql, nullptr, nullptr, nullptr) == SQLITE_OK)
        return true;
    *error = sqlite3_errmsg(db);
    return false;
}

} // namespace

bool ZtTestWriteBigAttributes(const std::string& path, int elements, std::string* error) {
    std::remove(path.c_str());
    sqlite3* db = nullptr;
    if (sqlite3_open(path.c_str(), &db) != SQLITE_OK) {
        *error = db ? sqlite3_errmsg(db) : "out of memory";
        sqlite3_close(db);
        return false;
    }
    const char* sizes[] = {"1", "1.5", "2", "3", "4", "6", "8", "10", "12", "16"};
    const char* specs[] = {"A1", "B2", "C3", "D4"};
    const char* services[] = {"Feed", "Product", "Cooling water", "Instrument air", "Steam"};
    sqlite3_stmt* insert = nullptr;
    bool ok = Exec(db, "PRAGMA journal_mode = OFF; PRAGMA synchronous = OFF", error) &&
              Exec(db,
                   "CREATE TABLE element_attributes(entity INTEGER, occurrence INTEGER, "
                   "name TEXT, value TEXT); BEGIN",
                   error);
    if (ok && sqlite3_prepare_v2(db, "INSERT INTO element_attributes VALUES (12, ?, ?, ?)", -1,
                                 &insert, nullptr) != SQLITE_OK) {
        *error = sqlite3_errmsg(db);
        ok = false;
    }
    const int pieces = ZtTestBigModelPieces(elements);
    char line[32];
    for (int i = 0; ok && i < pieces; ++i) {
        std::snprintf(line, sizeof line, "L-%06d", i / 4);
        const std::pair<const char*, const char*> rows[] = {
            {"line_number", line},
            {"nps", sizes[i % std::size(sizes)]},
            {"spec", specs[(i / 4) % std::size(specs)]},
            {"service", services[(i / 16) % std::size(services)]},
        };
        for (const auto& [name, value] : rows) {
            sqlite3_bind_int(insert, 1, i);
            sqlite3_bind_text(insert, 2, name, -1, SQLITE_STATIC);
            sqlite3_bind_text(insert, 3, value, -1, SQLITE_STATIC);
            if (sqlite3_step(insert) != SQLITE_DONE) {
                *error = sqlite3_errmsg(db);
                ok = false;
                break;
            }
            sqlite3_reset(insert);
        }
    }
    sqlite3_finalize(insert);
    ok = ok && Exec(db, "COMMIT", error);
    sqlite3_close(db);
    return ok;
}
