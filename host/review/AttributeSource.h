#pragma once
#include <cstddef>
#include <memory>
#include <string>

class ZtDgnModel;

// The project database a run takes its models' element attributes from: a SQLite file or
// a PostgreSQL server, opened read-only, its schema checked when it opens. A build
// without attribute sources (Windows) opens none and says why.
class AttributeSource {
public:
    // Opens `spec`, a SQLite file or a postgresql:// URI; null with the problem and the
    // schema expected in `error`.
    static std::unique_ptr<AttributeSource> Open(const std::string& spec, std::string* error);
    // Whether this build reads attribute sources at all.
    static bool Available();

    virtual ~AttributeSource() = default;
    // The source as a user names it, never with a password.
    virtual const std::string& GetName() const = 0;
    // Reads the rows in one pass and gives those of the model's keys to its elements. On
    // failure the model keeps what it had, and `error` says why.
    virtual bool Attach(ZtDgnModel& model, std::string* error) = 0;
    // The rows the last attach passed over for a NULL.
    virtual std::size_t GetRowsWithNull() const = 0;
};
