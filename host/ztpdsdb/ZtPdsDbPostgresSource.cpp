#include "ztpdsdb/ZtPdsDbPostgresSource.h"

#include "ztpdsdb/ZtPdsDbColumns.h"
#include "ztpdsdb/ZtPdsDbUri.h"

#include <libpq-fe.h>

#include <charconv>
#include <vector>

namespace {

// Rows fetched at a time: few round trips, and a batch of ordinary rows is a megabyte or so.
constexpr const char* kFetch = "FETCH FORWARD 10000 FROM zt_element_attributes";

// The type numbers of PostgreSQL's catalogue that the schema accepts.
constexpr Oid kInt8 = 20, kInt2 = 21, kInt4 = 23, kText = 25, kChar = 1042, kVarchar = 1043;

// A result, cleared when it goes.
class Result {
public:
    explicit Result(PGresult* result) : result_(result) {}
    ~Result() { PQclear(result_); }
    Result(const Result&) = delete;
    Result& operator=(const Result&) = delete;
    PGresult* Get() const { return result_; }
    bool Succeeded() const {
        const ExecStatusType status = PQresultStatus(result_);
        return status == PGRES_COMMAND_OK || status == PGRES_TUPLES_OK;
    }

private:
    PGresult* result_;
};

// libpq's message on one line: its lines joined by semicolons, runs of blanks made one.
std::string OneLine(const char* message) {
    std::string line;
    bool blank = false;
    bool newLine = false;
    for (const char* c = message; c && *c; ++c) {
        if (*c == '\n') {
            newLine = !line.empty();
            continue;
        }
        if (*c == '\t' || *c == ' ') {
            blank = !line.empty();
            continue;
        }
        if (newLine)
            line += ';';
        if (newLine || blank)
            line += ' ';
        newLine = blank = false;
        line += *c;
    }
    return line;
}

bool ParseInteger(const char* text, int length, std::int64_t* value) {
    const auto [end, error] = std::from_chars(text, text + length, *value);
    return error == std::errc() && end == text + length;
}

} // namespace

std::unique_ptr<ZtPdsDbPostgresSource> ZtPdsDbPostgresSource::Open(const std::string& uri,
                                                                   const ZtPdsDbOptions& options,
                                                                   std::string* error) {
    // Later words win over the URI's: a connect_timeout of the URI's own wins over ours,
    // and the texts always come as UTF-8.
    const std::string timeout = std::to_string(options.connectTimeoutSeconds);
    const char* keywords[] = {"connect_timeout", "dbname", "client_encoding", "application_name",
                              nullptr};
    const char* values[] = {timeout.c_str(), uri.c_str(), "UTF8", "pdsreview", nullptr};
    pg_conn* connection = PQconnectdbParams(keywords, values, 1);
    std::unique_ptr<ZtPdsDbPostgresSource> source(
        new ZtPdsDbPostgresSource(ZtPdsDbUriWithoutPassword(uri), connection));
    if (!connection) {
        *error = "out of memory";
        return nullptr;
    }
    if (PQstatus(connection) != CONNECTION_OK) {
        if (PQconnectionNeedsPassword(connection))
            *error = "the server asks for a password, and none was given";
        else
            *error = "cannot connect: " + OneLine(PQerrorMessage(connection));
        return nullptr;
    }
    if (!source->CheckSchema(error))
        return nullptr;
    return source;
}

ZtPdsDbPostgresSource::~ZtPdsDbPostgresSource() {
    PQfinish(connection_);
}

bool ZtPdsDbPostgresSource::Run(const char* sql, std::string* error) {
    const Result result(PQexec(connection_, sql));
    if (result.Succeeded())
        return true;
    *error = OneLine(PQerrorMessage(connection_));
    return false;
}

bool ZtPdsDbPostgresSource::CheckSchema(std::string* error) {
    const Result all(PQexec(connection_, "SELECT * FROM element_attributes LIMIT 0"));
    if (!all.Succeeded()) {
        const char* state = PQresultErrorField(all.Get(), PG_DIAG_SQLSTATE);
        *error = state && std::string_view(state) == "42P01"
                     ? "the database has no table or view element_attributes"
                     : OneLine(PQerrorMessage(connection_));
        return false;
    }
    std::vector<ZtPdsDbColumn> columns;
    for (int i = 0; i < PQnfields(all.Get()); ++i) {
        const Oid type = PQftype(all.Get(), i);
        ZtPdsDbColumn column{PQfname(all.Get(), i), ZtPdsDbColumnType::kOther, {}};
        if (type == kInt2 || type == kInt4 || type == kInt8)
            column.type = ZtPdsDbColumnType::kInteger;
        else if (type == kText || type == kChar || type == kVarchar)
            column.type = ZtPdsDbColumnType::kText;
        // The catalogue's name of the type, for a message.
        const std::string sql = "SELECT format_type(" + std::to_string(type) + ", NULL)";
        const Result name(PQexec(connection_, sql.c_str()));
        column.typeName = name.Succeeded() && PQntuples(name.Get()) == 1
                              ? PQgetvalue(name.Get(), 0, 0)
                              : "number " + std::to_string(type);
        columns.push_back(std::move(column));
    }
    return ZtPdsDbMatchColumns(columns, &columns_, error);
}

bool ZtPdsDbPostgresSource::Read(ZtPdsDbRowSink& sink, std::string* error) {
    std::string sql = "DECLARE zt_element_attributes NO SCROLL CURSOR FOR SELECT ";
    for (std::size_t i = 0; i < columns_.size(); ++i)
        sql += (i ? ", " : "") + ZtPdsDbQuote(columns_[i]);
    sql += " FROM element_attributes";
    if (!Run("BEGIN TRANSACTION READ ONLY", error))
        return false;
    bool ok = Run(sql.c_str(), error);
    for (int rows = 1; ok && rows > 0;) {
        const Result batch(PQexec(connection_, kFetch));
        if (!batch.Succeeded()) {
            *error = OneLine(PQerrorMessage(connection_));
            ok = false;
            break;
        }
        rows = PQntuples(batch.Get());
        for (int r = 0; ok && r < rows; ++r) {
            PGresult* b = batch.Get();
            if (PQgetisnull(b, r, 0) || PQgetisnull(b, r, 1) || PQgetisnull(b, r, 2) ||
                PQgetisnull(b, r, 3)) {
                CountRowWithNull();
                continue;
            }
            std::int64_t entity = 0, occurrence = 0;
            if (!ParseInteger(PQgetvalue(b, r, 0), PQgetlength(b, r, 0), &entity) ||
                !ParseInteger(PQgetvalue(b, r, 1), PQgetlength(b, r, 1), &occurrence)) {
                *error = "the server sent an integer that does not read as one";
                ok = false;
                break;
            }
            ok = sink.Row(entity, occurrence,
                          {PQgetvalue(b, r, 2), static_cast<std::size_t>(PQgetlength(b, r, 2))},
                          {PQgetvalue(b, r, 3), static_cast<std::size_t>(PQgetlength(b, r, 3))},
                          error);
        }
    }
    std::string ignored;
    Run(ok ? "COMMIT" : "ROLLBACK", ok ? error : &ignored);
    return ok;
}
