#include "ztpdsdb/ZtPdsDbSource.h"

#include "ztpdsdb/ZtPdsDbPostgresSource.h"
#include "ztpdsdb/ZtPdsDbSqliteSource.h"
#include "ztpdsdb/ZtPdsDbUri.h"

std::string ZtPdsDbFailure(const std::string& source, const std::string& problem) {
    return "attribute source " + source + ": " + problem + "; it must offer " +
           ZtPdsDbSource::kExpectedSchema;
}

std::unique_ptr<ZtPdsDbSource>
ZtPdsDbSource::Open(const std::string& name, const ZtPdsDbOptions& options, std::string* error) {
    const bool server = ZtPdsDbIsPostgresUri(name);
    std::string problem;
    std::unique_ptr<ZtPdsDbSource> source;
    if (server)
        source = ZtPdsDbPostgresSource::Open(name, options, &problem);
    else
        source = ZtPdsDbSqliteSource::Open(name, options, &problem);
    if (!source)
        *error = ZtPdsDbFailure(server ? ZtPdsDbUriWithoutPassword(name) : name, problem);
    return source;
}

bool ZtPdsDbSource::ReadRows(ZtPdsDbRowSink& sink, std::string* error) {
    rowsWithNull_ = 0;
    std::string problem;
    if (Read(sink, &problem))
        return true;
    *error = ZtPdsDbFailure(name_, problem);
    return false;
}
