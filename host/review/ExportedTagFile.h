#pragma once
#include <cstddef>
#include <optional>
#include <string>

// What an exported tag file holds: its tag records, those of them that name no model
// file (the group with the empty name, written first), and its file groups.
struct ExportedTagCounts {
    std::size_t records = 0;
    std::size_t unfiled = 0;
    std::size_t fileGroups = 0;
};

// Reads back a tag file as the export writes it: records and groups begin lines, and a
// text's length (in UTF-16 units) is skipped whole, so that no text is taken for a record.
// None if the file can't be read.
std::optional<ExportedTagCounts> CountExportedTags(const std::wstring& path);
