#include "bcf/BcfZip.h"

#include <zip.h>

#include <algorithm>
#include <cctype>
#include <filesystem>

BcfZipWriter::BcfZipWriter(std::string path, std::time_t time)
    : path_(std::move(path)), time_(time) {
    int code = 0;
    archive_ = zip_open(path_.c_str(), ZIP_CREATE | ZIP_TRUNCATE, &code);
    if (!archive_) {
        zip_error_t error;
        zip_error_init_with_code(&error, code);
        error_ = zip_error_strerror(&error);
        zip_error_fini(&error);
    }
}

BcfZipWriter::~BcfZipWriter() {
    if (archive_)
        zip_discard(archive_);
}

bool BcfZipWriter::Fail(const std::string& what) {
    if (error_.empty())
        error_ = what + ": " + zip_strerror(archive_);
    return false;
}

bool BcfZipWriter::Add(const std::string& name, std::string bytes) {
    if (!archive_ || !error_.empty())
        return false;
    held_.push_back(std::move(bytes));
    zip_source_t* source = zip_source_buffer(archive_, held_.back().data(), held_.back().size(), 0);
    if (!source)
        return Fail(name);
    const zip_int64_t index = zip_file_add(archive_, name.c_str(), source, ZIP_FL_ENC_UTF_8);
    if (index < 0) {
        zip_source_free(source);
        return Fail(name);
    }
    const auto entry = static_cast<zip_uint64_t>(index);
    if (zip_file_set_mtime(archive_, entry, time_, 0) != 0 ||
        zip_set_file_compression(archive_, entry, ZIP_CM_DEFLATE, 9) != 0)
        return Fail(name);
    return true;
}

bool BcfZipWriter::Close() {
    if (!archive_ || !error_.empty())
        return false;
    if (zip_close(archive_) != 0)
        return Fail("cannot write " + path_);
    archive_ = nullptr;
    return true;
}

std::unique_ptr<BcfZipReader> BcfZipReader::Open(const std::string& path, std::string* error) {
    int code = 0;
    zip* archive = zip_open(path.c_str(), ZIP_RDONLY, &code);
    if (!archive) {
        zip_error_t why;
        zip_error_init_with_code(&why, code);
        *error = std::string("not a BCF file: no zip archive that can be read (") +
                 zip_error_strerror(&why) + ")";
        zip_error_fini(&why);
        return nullptr;
    }
    std::error_code ignored;
    const std::uintmax_t size = std::filesystem::file_size(path, ignored);
    const std::size_t limit =
        size == static_cast<std::uintmax_t>(-1) || size > kMaxEntryBytes / kUnpackingFactor
            ? kMaxEntryBytes
            : std::max(kMinEntryLimit, static_cast<std::size_t>(size) * kUnpackingFactor);
    return std::unique_ptr<BcfZipReader>(new BcfZipReader(archive, limit));
}

namespace {

std::string Folded(std::string name) {
    for (char& c : name)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return name;
}

} // namespace

// Some writers on Windows part an entry's folders with backslashes.
BcfZipReader::BcfZipReader(zip* archive, std::size_t limit) : archive_(archive), limit_(limit) {
    const zip_int64_t count = zip_get_num_entries(archive_, 0);
    for (zip_int64_t i = 0; i < count; ++i)
        if (const char* name = zip_get_name(archive_, static_cast<zip_uint64_t>(i), 0)) {
            std::string path(name);
            std::replace(path.begin(), path.end(), '\\', '/');
            const auto entry = static_cast<std::uint64_t>(i);
            byName_.emplace(path, entry);
            byFoldedName_.emplace(Folded(path), entry);
            names_.push_back(std::move(path));
        }
}

BcfZipReader::~BcfZipReader() {
    zip_discard(archive_);
}

bool BcfZipReader::Read(const std::string& name, std::string* bytes, std::string* error) const {
    bytes->clear();
    // The name as it stands, else as it is spelt in any case.
    std::uint64_t entry = 0;
    if (const auto exact = byName_.find(name); exact != byName_.end())
        entry = exact->second;
    else if (const auto folded = byFoldedName_.find(Folded(name)); folded != byFoldedName_.end())
        entry = folded->second;
    else {
        *error = "no such entry";
        return false;
    }
    zip_file_t* file = zip_fopen_index(archive_, entry, 0);
    if (!file) {
        *error = zip_strerror(archive_);
        return false;
    }
    // Read in pieces whatever the entry's header claims, so that a false size can't make
    // the reader take more than the limit.
    char piece[16384];
    bool ok = true;
    for (;;) {
        const zip_int64_t got = zip_fread(file, piece, sizeof piece);
        if (got < 0) {
            *error = zip_error_strerror(zip_file_get_error(file));
            ok = false;
            break;
        }
        if (got == 0)
            break;
        if (bytes->size() + static_cast<std::size_t>(got) > limit_) {
            *error = "unpacks to more than " + std::to_string(limit_) +
                     " bytes, too many for an archive of this size";
            ok = false;
            break;
        }
        bytes->append(piece, static_cast<std::size_t>(got));
    }
    zip_fclose(file);
    return ok;
}
