#pragma once
#include "check/Finding.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

// The kinds of file the checker reads.
enum class FileKind { kControl, kDisplaySets, kTags };

// The kind that a file's extension says (".dri", ".dst", ".tag", in any case), or none.
std::optional<FileKind> FileKindOf(std::wstring_view path);
// The kind named by "dri", "dst" or "tag", or none.
std::optional<FileKind> FileKindNamed(std::string_view name);
// "control file", "display-set file", "tag file".
const char* FileKindWords(FileKind kind);

// What the check of a control file brings in beside it, as the loader's parameters do.
struct SideFiles {
    bool tags = true;
    bool displaySets = true;
};

// What the library makes of one file, read as `kind` by the library's own readers, in
// the words of the file's author. A control file brings in the models it names and the
// side files an open would read, whose findings follow its own. A file that is not of
// its kind gives one error and nothing else. Findings are in the order of the files and
// of the places in them; a file that can't be opened gives an error.
std::vector<Finding> CheckFile(const std::wstring& path, FileKind kind,
                               const SideFiles& sideFiles = {});
