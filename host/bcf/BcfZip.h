#pragma once
#include <cstddef>
#include <cstdint>
#include <ctime>
#include <deque>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

struct zip;

// A zip archive being written: entries are added in memory and the archive is put in
// place whole by Close, so that a failed write leaves whatever stood at the path alone.
// Every entry carries the same time, so that the same entries give the same bytes.
class BcfZipWriter {
public:
    BcfZipWriter(std::string path, std::time_t time);
    ~BcfZipWriter();
    BcfZipWriter(const BcfZipWriter&) = delete;
    BcfZipWriter& operator=(const BcfZipWriter&) = delete;

    // False with the reason in Error() once anything failed.
    bool Add(const std::string& name, std::string bytes);
    bool Close();
    const std::string& Error() const { return error_; }

private:
    bool Fail(const std::string& what);

    std::string path_;
    std::time_t time_;
    zip* archive_ = nullptr;
    std::deque<std::string> held_; // the entries' bytes, which the archive reads at Close
    std::string error_;
};

// A zip archive being read. An entry is read whole, and no larger than a limit that keeps
// a small archive from unpacking into a great deal of memory: as many times the archive's
// size as XML packs into, above a floor for the smallest archives and below a ceiling.
class BcfZipReader {
public:
    static constexpr std::size_t kMaxEntryBytes = std::size_t{64} << 20;
    static constexpr std::size_t kMinEntryLimit = std::size_t{1} << 20;
    static constexpr std::size_t kUnpackingFactor = 64;

    // Null with the reason in `error` where the file is no zip archive.
    static std::unique_ptr<BcfZipReader> Open(const std::string& path, std::string* error);
    ~BcfZipReader();
    BcfZipReader(const BcfZipReader&) = delete;
    BcfZipReader& operator=(const BcfZipReader&) = delete;

    // The names of the entries, in the archive's order, their folders parted by slashes.
    const std::vector<std::string>& Names() const { return names_; }
    // The bytes of an entry, found by its name in any case where none has it as it is;
    // false with the reason (without the name) in `error` where it can't be read.
    bool Read(const std::string& name, std::string* bytes, std::string* error) const;

private:
    BcfZipReader(zip* archive, std::size_t limit);

    zip* archive_;
    std::size_t limit_; // of an entry's bytes
    std::vector<std::string> names_;
    // The entry of each name, and of each name in lower case; the first where several
    // have one.
    std::unordered_map<std::string, std::uint64_t> byName_, byFoldedName_;
};
