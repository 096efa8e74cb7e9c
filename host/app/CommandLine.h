#pragma once
#include "bcf/BcfSteps.h"
#include "review/OpenRoad.h"
#include "review/ReviewRun.h"
#include "ztlinear/ZtLColor3f.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

// What pdsreview was asked to do.
struct CommandLine {
    bool json = false;
    bool quiet = false;
    bool elements = false;
    bool help = false;
    bool version = false;
    bool strict = false;    // a warning fails the run
    std::string pluginPath; // empty: the library beside pdsreview
    int controlMode = 0;
    std::optional<std::pair<unsigned long long, unsigned long long>> nextIds; // tag, comment
    std::optional<double> uorsPerMaster; // a model with no elements and this factor
    OpenParameters open;                 // the loader's parameters for open steps
    std::size_t threads = 0;             // --threads; 0: one a core
    std::string attributes;              // --attributes: the run's attribute source
    std::optional<ZtLColor3f> redlineColor;
    std::optional<int> redlineThickness;
    BcfExportOptions bcf; // --bcf-version, --author
    std::vector<Step> steps;
};

// Parses argv[1..]. Returns false with a message for the user in `error` on a usage
// error: an unknown option or step, a missing or malformed argument, or no step at all.
// Any word that begins with '-' is an option.
bool ParseCommandLine(const std::vector<std::string>& args, CommandLine* out, std::string* error);
