#include "ztpdsdb/ZtPdsDbSqliteSource.h"

#include "ztpdsdb/ZtPdsDbColumns.h"
#include "ztutil/ZtUSysNativePath.h"

#include <sqlite3.h>

#include <filesystem>
#include <string_view>
#include <vector>

namespace {

// A prepared statement, finalised when it goes.
class Statement {
public:
    Statement(sqlite3* db, const std::string& sql) {
        sqlite3_prepare_v2(db, sql.c_str(), static_cast<int>(sql.size()), &statement_, nullptr);
    }
    ~Statement() { sqlite3_finalize(statement_); }
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;
    sqlite3_stmt* Get() const { return statement_; }

private:
    sqlite3_stmt* statement_ = nullptr;
};

// What SQLite's failure means for someone who named the file.
std::string Describe(sqlite3* db, int code) {
    switch (code & 0xFF) {
    case SQLITE_NOTADB:
        return "the file is not a SQLite database";
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return "the database is locked by another writer";
    case SQLITE_CORRUPT:
        return "the database file is damaged (" + std::string(sqlite3_errmsg(db)) + ")";
    default:
        return sqlite3_errmsg(db);
    }
}

// SQLite's rules for the affinity of a declared type.
ZtPdsDbColumnType TypeOf(const char* declared) {
    std::string type;
    for (const char* c = declared; c && *c; ++c)
        type += static_cast<char>(*c >= 'a' && *c <= 'z' ? *c - 'a' + 'A' : *c);
    if (type.empty())
        return ZtPdsDbColumnType::kUndeclared;
    if (type.find("INT") != std::string::npos)
        return ZtPdsDbColumnType::kInteger;
    if (type.find("CHAR") != std::string::npos || type.find("CLOB") != std::string::npos ||
        type.find("TEXT") != std::string::npos)
        return ZtPdsDbColumnType::kText;
    return ZtPdsDbColumnType::kOther;
}

const char* KindOf(int type) {
    switch (type) {
    case SQLITE_INTEGER:
        return "an integer";
    case SQLITE_FLOAT:
        return "a real number";
    case SQLITE_TEXT:
        return "a text";
    default:
        return "a blob";
    }
}

} // namespace

std::unique_ptr<ZtPdsDbSqliteSource> ZtPdsDbSqliteSource::Open(const std::string& path,
                                                               const ZtPdsDbOptions& options,
                                                               std::string* error) {
    std::error_code code;
    const std::filesystem::file_status status =
        std::filesystem::status(ZtUSysNativePath(path), code);
    if (status.type() == std::filesystem::file_type::not_found) {
        *error = "no such file";
        return nullptr;
    }
    if (status.type() == std::filesystem::file_type::directory) {
        *error = "a folder, not a database file";
        return nullptr;
    }
    sqlite3* db = nullptr;
    const int opened =
        sqlite3_open_v2(path.c_str(), &db, SQLITE_OPEN_READONLY | SQLITE_OPEN_NOMUTEX, nullptr);
    std::unique_ptr<ZtPdsDbSqliteSource> source(new ZtPdsDbSqliteSource(path, db));
    if (opened != SQLITE_OK) {
        *error = db ? Describe(db, opened) : "out of memory";
        return nullptr;
    }
    sqlite3_busy_timeout(db, options.busyTimeoutMilliseconds);
    sqlite3_exec(db, "PRAGMA query_only = 1", nullptr, nullptr, nullptr);
    if (!source->CheckSchema(error))
        return nullptr;
    return source;
}

ZtPdsDbSqliteSource::~ZtPdsDbSqliteSource() {
    sqlite3_close(db_);
}

bool ZtPdsDbSqliteSource::CheckSchema(std::string* error) {
    // The schema's own table first: it tells a file that is no database, or is locked,
    // from one that lacks the table.
    Statement lookup(db_, "SELECT count(*) FROM sqlite_master WHERE type IN ('table', 'view') "
                          "AND name = 'element_attributes' COLLATE NOCASE");
    const int found = lookup.Get() ? sqlite3_step(lookup.Get()) : sqlite3_errcode(db_);
    if (found != SQLITE_ROW) {
        *error = Describe(db_, found);
        return false;
    }
    if (sqlite3_column_int(lookup.Get(), 0) == 0) {
        *error = "the database has no table or view element_attributes";
        return false;
    }
    Statement all(db_, "SELECT * FROM element_attributes");
    if (!all.Get()) {
        *error = Describe(db_, sqlite3_errcode(db_));
        return false;
    }
    std::vector<ZtPdsDbColumn> columns;
    for (int i = 0; i < sqlite3_column_count(all.Get()); ++i) {
        const char* declared = sqlite3_column_decltype(all.Get(), i);
        columns.push_back({sqlite3_column_name(all.Get(), i), TypeOf(declared),
                           declared && *declared ? declared : "none"});
    }
    return ZtPdsDbMatchColumns(columns, &columns_, error);
}

bool ZtPdsDbSqliteSource::Read(ZtPdsDbRowSink& sink, std::string* error) {
    std::string sql = "SELECT ";
    for (std::size_t i = 0; i < columns_.size(); ++i)
        sql += (i ? ", " : "") + ZtPdsDbQuote(columns_[i]);
    Statement select(db_, sql + " FROM element_attributes");
    if (!select.Get()) {
        *error = Describe(db_, sqlite3_errcode(db_));
        return false;
    }
    sqlite3_stmt* s = select.Get();
    std::size_t row = 0;
    int step;
    while ((step = sqlite3_step(s)) == SQLITE_ROW) {
        ++row;
        bool null = false;
        for (int i = 0; i < 4; ++i) {
            const int type = sqlite3_column_type(s, i);
            const int wanted =
                ZtPdsDbIsIntegerColumn(static_cast<std::size_t>(i)) ? SQLITE_INTEGER : SQLITE_TEXT;
            if (type == SQLITE_NULL) {
                null = true;
            } else if (type != wanted) {
                *error = ZtPdsDbRowProblem(row, static_cast<std::size_t>(i), KindOf(type));
                return false;
            }
        }
        if (null) {
            CountRowWithNull();
            continue;
        }
        const auto* name = reinterpret_cast<const char*>(sqlite3_column_text(s, 2));
        const std::string_view nameText(name, static_cast<std::size_t>(sqlite3_column_bytes(s, 2)));
        const auto* value = reinterpret_cast<const char*>(sqlite3_column_text(s, 3));
        const std::string_view valueText(value,
                                         static_cast<std::size_t>(sqlite3_column_bytes(s, 3)));
        if (!sink.Row(sqlite3_column_int64(s, 0), sqlite3_column_int64(s, 1), nameText, valueText,
                      error))
            return false;
    }
    if (step != SQLITE_DONE) {
        *error = Describe(db_, step);
        return false;
    }
    return true;
}
