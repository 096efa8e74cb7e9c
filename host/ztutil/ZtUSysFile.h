#pragma once
#include "ztutil/ZtUFile.h"
#include "ztutil/ZtUFileIdentity.h"
#include "ztutil/ZtUWideString.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

// An entry of a directory walk.
class ZtUSysFileInfoHandle {
public:
    explicit ZtUSysFileInfoHandle(std::wstring fullName) : fullName_(std::move(fullName)) {}
    // The entry's path: the directory's path, a separator and the entry's name.
    const wchar_t* GetFullNameW() const { return fullName_.c_str(); }

private:
    std::wstring fullName_;
};

// A walk over the regular files of one directory (not its subfolders), sorted by the
// byte order of their UTF-8 names so that walks are reproducible. The handle is valid
// while it stands on an entry.
class ZtUSysDirHandle {
public:
    ZtUSysDirHandle() = default;
    explicit ZtUSysDirHandle(std::vector<std::wstring> fullNames)
        : entries_(std::move(fullNames)) {}

    bool IsValid() const { return at_ < entries_.size(); }
    void Next() {
        if (at_ < entries_.size())
            ++at_;
    }
    // The entry the handle stands on, to be closed with ZtUSysFile::CloseFileInfo; null
    // past the end.
    ZtUSysFileInfoHandle* OpenFileInfo() const;

private:
    std::vector<std::wstring> entries_;
    std::size_t at_ = 0;
};

// The host's file layer: streams on wide paths, and path and directory helpers.
class ZtUSysFile {
public:
    enum AccessMode : int { kAccessRead = 0, kAccessWrite = 1 };
    enum CreationMode : int { kCreateAlways = 1, kOpenExisting = 3 };
    enum TranslationMode : int { kTranslateText = 2 };
    enum ShareMode : int { kShareReadWrite = 3 };
    // The Windows permission bits that fopenW takes: read 0x100, write 0x80.
    enum Permission : unsigned { kPermitRead = 0x100, kPermitWrite = 0x80 };
    static constexpr unsigned kPermitReadWrite = kPermitRead | kPermitWrite;

    // A read stream that took bytes as Windows-1252, not UTF-8: the path as given to fopenW,
    // how many bytes, and the offset in characters of the first.
    struct LegacyRead {
        std::wstring path;
        std::uint64_t bytes = 0;
        std::uint64_t firstCharacter = 0;
    };
    // How many legacy reads the record keeps; later ones are not recorded until it is taken.
    static constexpr std::size_t kLegacyReadsKept = 64;

    // Opens a stream on a regular file (or a link to one). Reading decodes the file's
    // text to UTF-16 units (see ZtUFileReader); writing encodes UTF-8 (ZtUFileWriter).
    // Returns null for a path that can't be opened in that mode, a directory or a device.
    // Two modes exist: read an existing file, and write a file created or replaced
    // (kCreateAlways); other combinations, and translations other than text, give null.
    // Share modes and attribute flags have no meaning here.
    //
    // Reading refuses a file of the kernel's /proc or /sys, which is no text of anyone's,
    // with a warning in the innermost ZtUFileScope, and records each file read there.
    //
    // Writing goes to a temporary file beside the target (see ZtUSysReplacement), which
    // fclose moves into place only if everything succeeded; until then, and after any
    // failure, the old file is as it was. `permissions` are a Permission pair
    // (kPermitReadWrite): a new file gets 0666 (0444 without write) less the umask, a
    // replaced file keeps its mode, owner and group. Every failure of a write stream,
    // from opening to the move, is recorded in the innermost ZtUFileScope.
    static ZtUFile* fopenW(const wchar_t* path, AccessMode access, CreationMode creation,
                           TranslationMode translation, ShareMode share, unsigned attributes,
                           unsigned permissions);
    // Closes and frees the stream; 0 on success, as the C library's fclose.
    static int fclose(ZtUFile* file);
    // Frees the stream without closing it, for a caller that gives up on it: a write
    // stream's text is thrown away and the old file stays.
    static void fdiscard(ZtUFile* file);

    // The wide-character stream functions of the host, after the C library's. They are
    // inline, so that a character loop costs no call into the library per character.
    // The next character, or 0xFFFF at the end of the input (or a U+FFFF in the file).
    static unsigned fgetwc(ZtUFile* file) { return file->GetChar(); }
    // Reads up to count - 1 characters, stopping behind a LF; null if nothing was read.
    static wchar_t* fgetws(wchar_t* out, int count, ZtUFile* file) {
        return file->GetLine(out, count);
    }
    // The legacy reads recorded since the last call, oldest first; the record is emptied.
    static std::vector<LegacyRead> TakeLegacyReads();
    static void RecordLegacyRead(LegacyRead read);

    // Nonzero once a read or write failed.
    static int ferror(ZtUFile* file) { return file->HasError() ? 1 : 0; }
    // printf-style output with the host's conventions ("%s" takes a wide string);
    // returns the number of characters written, or a negative value on failure.
    static int fwprintf(ZtUFile* file, const wchar_t* format, ...);

    // Path helpers. Both '/' and '\\' separate path elements, since control files
    // written on Windows name their models with backslashes; a path is absolute when it
    // begins with a separator. Any output may be the buffer an input lies in.

    // `path` split into its directory (without the last separator, except that the root
    // keeps its one) and its last name; either output may be null. Returns 1 if the path
    // had a directory part.
    static int PopPathW(const wchar_t* path, ZtUWideStringBuffer* directory,
                        ZtUWideStringBuffer* name);
    // `name` without its extension (the last point of the last path element and what
    // follows it).
    static void RemoveFileExtensionW(const wchar_t* name, ZtUWideStringBuffer* out);
    // `path` without its directory part.
    static void RemovePathnameW(const wchar_t* path, ZtUWideStringBuffer* out);
    // True if `name` ends in a point and `extension` (given without its point), compared
    // without regard to case.
    static bool HasFileExtensionW(const wchar_t* name, const wchar_t* extension);
    // `path` resolved against `folder` unless it is absolute already; `path` may lie in
    // `out`. The result is normalised lexically ("." and ".." removed, elements joined by
    // '/'); the working directory plays no part, so a relative folder gives a relative
    // result.
    static void MakeAbsoluteW(const wchar_t* folder, const wchar_t* path, ZtUWideStringBuffer* out);
    // True if something exists at `path`.
    static bool ExistsW(const wchar_t* path);
    // Which file `path` leads to, through links; false if it leads to none.
    static bool IdentifyW(const wchar_t* path, ZtUFileIdentity* identity);

    // The regular files of a directory; an invalid handle if it can't be read. The empty
    // path is the working directory, whose entries are named without a folder.
    static ZtUSysDirHandle OpenDirW(const wchar_t* path);
    static void CloseFileInfo(ZtUSysFileInfoHandle* info);
};
