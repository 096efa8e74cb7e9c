#pragma once
#include "ztpdsdb/ZtPdsDbSource.h"

#include <array>
#include <memory>
#include <string>

struct pg_conn;

// A PostgreSQL database on a server, reached through a connection URI. The rows are read
// in a read-only transaction through a cursor, a batch at a time, so that memory holds one
// batch whatever the table's size.
class ZtPdsDbPostgresSource : public ZtPdsDbSource {
public:
    // Null with the problem in `error` (without the schema: Open adds it).
    static std::unique_ptr<ZtPdsDbPostgresSource>
    Open(const std::string& uri, const ZtPdsDbOptions& options, std::string* error);
    ~ZtPdsDbPostgresSource() override;

protected:
    bool Read(ZtPdsDbRowSink& sink, std::string* error) override;

private:
    ZtPdsDbPostgresSource(std::string name, pg_conn* connection)
        : ZtPdsDbSource(std::move(name)), connection_(connection) {}
    bool CheckSchema(std::string* error);
    // Runs `sql`; false with the server's reason when it fails.
    bool Run(const char* sql, std::string* error);

    pg_conn* connection_;
    std::array<std::string, 4> columns_; // as the table spells them
};
