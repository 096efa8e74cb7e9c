#pragma once
#include <cstdint>
#include <limits>

class ZtOdPdsRuleReporter;
class ZtOpFolderItem;
class ZtUNameDict;

// What all consumers of one display-set import share. Made by the import action; it
// outlives the read of the file and owns neither field.
struct ZtOdPdsDstContext {
    ZtUNameDict* names = nullptr;     // the document's name dictionary
    ZtOpFolderItem* folder = nullptr; // collects the selection sets of this import
    // What the find queries of the sets still to come may hold in all; none is left once a
    // set did not fit.
    std::uint64_t conditionsLeft = std::numeric_limits<std::uint64_t>::max();
    // Set only for a read that reports what it makes of the file.
    ZtOdPdsRuleReporter* reporter = nullptr;
};
