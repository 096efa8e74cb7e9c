#pragma once
#include "ztpdsdb/ZtPdsDbSource.h"

#include <array>
#include <memory>
#include <string>

struct sqlite3;

// A SQLite database file, opened read-only: the query only reads, and a writer's lock is
// waited for up to the busy timeout. A source is used by one thread at a time, so the
// connection takes no lock of its own for each call.
class ZtPdsDbSqliteSource : public ZtPdsDbSource {
public:
    // Null with the problem in `error` (without the schema: Open adds it).
    static std::unique_ptr<ZtPdsDbSqliteSource>
    Open(const std::string& path, const ZtPdsDbOptions& options, std::string* error);
    ~ZtPdsDbSqliteSource() override;

protected:
    bool Read(ZtPdsDbRowSink& sink, std::string* error) override;

private:
    ZtPdsDbSqliteSource(std::string path, sqlite3* db) : ZtPdsDbSource(std::move(path)), db_(db) {}
    bool CheckSchema(std::string* error);

    sqlite3* db_;
    std::array<std::string, 4> columns_; // as the table spells them
};
