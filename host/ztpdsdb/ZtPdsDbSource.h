#pragma once
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

// What a source gives: its rows, one call each. Return false to stop the read, with the
// reason in `why`.
class ZtPdsDbRowSink {
public:
    virtual bool Row(std::int64_t entity, std::int64_t occurrence, std::string_view name,
                     std::string_view value, std::string* why) = 0;

protected:
    ~ZtPdsDbRowSink() = default;
};

// How long a source waits for what is not there yet.
struct ZtPdsDbOptions {
    // For a server to answer a connection, unless its URI sets connect_timeout.
    int connectTimeoutSeconds = 10;
    // For another writer to let go of a database file.
    int busyTimeoutMilliseconds = 2000;
};

// The project database as the source of element attributes: a table or view
// element_attributes(entity INTEGER, occurrence INTEGER, name TEXT, value TEXT), one row
// per attribute of an element. A source is opened read-only and never changed; its schema
// is checked when it opens, and its rows are read in one pass each time they are asked for.
class ZtPdsDbSource {
public:
    // The schema a source must offer, for the messages of failures.
    static constexpr const char* kExpectedSchema =
        "a table or view element_attributes(entity INTEGER, occurrence INTEGER, name TEXT, "
        "value TEXT), one row per attribute of an element";

    virtual ~ZtPdsDbSource() = default;
    ZtPdsDbSource(const ZtPdsDbSource&) = delete;
    ZtPdsDbSource& operator=(const ZtPdsDbSource&) = delete;

    // Opens `name`, a PostgreSQL connection URI ("postgresql://..." or "postgres://...") or
    // else the path of a SQLite database file, and checks its schema. Null, with what went
    // wrong and the schema expected in `error`, if it can't be read.
    static std::unique_ptr<ZtPdsDbSource> Open(const std::string& name,
                                               const ZtPdsDbOptions& options, std::string* error);

    // The source as a user names it: the file as given, or the URI without its password.
    const std::string& GetName() const { return name_; }

    // Hands every row of element_attributes to `sink`, in the order the database gives
    // them. A row with a NULL in one of its columns is passed over and counted. False, with
    // the reason and the schema expected in `error`, if the read fails or `sink` stops it.
    bool ReadRows(ZtPdsDbRowSink& sink, std::string* error);
    // The rows the last read passed over for a NULL.
    std::size_t GetRowsWithNull() const { return rowsWithNull_; }

protected:
    explicit ZtPdsDbSource(std::string name) : name_(std::move(name)) {}

    // The read of a kind of source. `error` gets the problem alone.
    virtual bool Read(ZtPdsDbRowSink& sink, std::string* error) = 0;
    void CountRowWithNull() { ++rowsWithNull_; }

private:
    std::string name_;
    std::size_t rowsWithNull_ = 0;
};

// A failure message: the source, the problem and what the source must offer.
std::string ZtPdsDbFailure(const std::string& source, const std::string& problem);
