#include "app/Options.h"

#include "app/OptionValue.h"
#include "app/RedlineOptions.h"

#include <cmath>

namespace {

// More threads than any machine has cores for a review's models only cost memory.
constexpr std::size_t kMostThreads = 256;

constexpr OptionKind kOptions[] = {
    {"--json", nullptr, nullptr, "print the JSON document instead of the readable summary",
     [](CommandLine& line, const std::string&, std::string*) { return line.json = true; }},
    {"--quiet", nullptr, nullptr, "no progress bar (one is drawn on standard error at a terminal)",
     [](CommandLine& line, const std::string&, std::string*) { return line.quiet = true; }},
    {"--plugin", nullptr, "PATH",
     "the plug-in library (default: ztodpds beside pdsreview, or in\n../lib/ztodpds)",
     [](CommandLine& line, const std::string& value, std::string*) {
         line.pluginPath = value;
         return true;
     }},
    {"--uors-per-master", nullptr, "F",
     "before the steps, add a model with no elements and that factor",
     [](CommandLine& line, const std::string& value, std::string* error) {
         double factor = 0;
         if (!ParseWhole(value, &factor) || !std::isfinite(factor) || factor <= 0) {
             *error = "--uors-per-master takes a finite number above 0, not '" + value + "'";
             return false;
         }
         line.uorsPerMaster = factor;
         return true;
     }},
    {"--input-files", nullptr, "model|cache|either", "which file of a control file's model to load",
     [](CommandLine& line, const std::string& value, std::string* error) {
         const std::optional<int> files = InputFilesValue(value);
         if (!files) {
             *error = "--input-files takes model, cache or either, not '" + value + "'";
             return false;
         }
         line.open.inputFiles = *files;
         return true;
     }},
    {"--no-tags", nullptr, nullptr, "open leaves the tag files beside the control file alone",
     [](CommandLine& line, const std::string&, std::string*) {
         line.open.importTags = false;
         return true;
     }},
    {"--no-display-sets", nullptr, nullptr,
     "open leaves the display-set files beside the control file alone",
     [](CommandLine& line, const std::string&, std::string*) {
         line.open.importDisplaySets = false;
         return true;
     }},
    {"--attributes", nullptr, "SOURCE",
     "element attributes from a project database: a SQLite file or a\npostgresql:// URI",
     [](CommandLine& line, const std::string& value, std::string* error) {
         if (value.empty()) {
             *error = "--attributes takes a database file or a postgresql:// URI";
             return false;
         }
         line.attributes = value;
         return true;
     }},
    {"--no-attributes", nullptr, nullptr, "open leaves the database beside the control file alone",
     [](CommandLine& line, const std::string&, std::string*) {
         line.open.readAttributeDatabase = false;
         return true;
     }},
    {"--threads", nullptr, "N",
     "threads that read a control file's models, make the pick indexes\nand draw the report's "
     "saved views (default: one a core; 1 does all\nin turn on one)",
     [](CommandLine& line, const std::string& value, std::string* error) {
         std::size_t threads = 0;
         if (!ParseWhole(value, &threads) || threads < 1 || threads > kMostThreads) {
             *error = "--threads takes a whole number from 1 to " + std::to_string(kMostThreads) +
                      ", not '" + value + "'";
             return false;
         }
         line.threads = threads;
         return true;
     }},
    {"--next-ids", nullptr, "T,C", "the document's next tag and comment ids before the steps",
     [](CommandLine& line, const std::string& value, std::string* error) {
         const std::size_t comma = value.find(',');
         unsigned long long tag = 0, comment = 0;
         if (comma == std::string::npos || !ParseWhole(value.substr(0, comma), &tag) ||
             !ParseWhole(value.substr(comma + 1), &comment)) {
             *error = "--next-ids takes two unsigned integers T,C, not '" + value + "'";
             return false;
         }
         line.nextIds.emplace(tag, comment);
         return true;
     }},
    {"--redline-color", nullptr, "R,G,B",
     "the redline tool's line colour, three numbers from 0 to 1",
     [](CommandLine& line, const std::string& value, std::string* error) {
         ZtLColor3f color;
         if (!ParseRedlineColor(value, &color, error))
             return false;
         line.redlineColor = color;
         return true;
     }},
    {"--redline-thickness", nullptr, "N",
     "the redline tool's line thickness, a whole number from 1 to 1000",
     [](CommandLine& line, const std::string& value, std::string* error) {
         int thickness = 0;
         if (!ParseRedlineThickness(value, &thickness, error))
             return false;
         line.redlineThickness = thickness;
         return true;
     }},
    {"--bcf-version", nullptr, "2.1|3.0", "the BCF version that export-bcf writes (default 2.1)",
     [](CommandLine& line, const std::string& value, std::string* error) {
         if (value != "2.1" && value != "3.0") {
             *error = "--bcf-version takes 2.1 or 3.0, not '" + value + "'";
             return false;
         }
         line.bcf.version = value == "3.0" ? BcfVersion::k30 : BcfVersion::k21;
         return true;
     }},
    {"--author", nullptr, "NAME", "the author of what export-bcf writes (default: the user's name)",
     [](CommandLine& line, const std::string& value, std::string* error) {
         if (value.find_first_not_of(" \t") == std::string::npos) {
             *error = "--author takes a name";
             return false;
         }
         line.bcf.author = value;
         return true;
     }},
    {"--control-mode", nullptr, "N", "the host's control mode when the entry function is called",
     [](CommandLine& line, const std::string& value, std::string* error) {
         if (ParseWhole(value, &line.controlMode))
             return true;
         *error = "--control-mode takes an integer, not '" + value + "'";
         return false;
     }},
    {"--elements", nullptr, nullptr, "list every element of each model in the JSON",
     [](CommandLine& line, const std::string&, std::string*) { return line.elements = true; }},
    {"--strict", nullptr, nullptr, "a warning fails the run, with exit status 5, after its step",
     [](CommandLine& line, const std::string&, std::string*) { return line.strict = true; }},
    {"--help", "-h", nullptr, "the usage, with the exit statuses and examples",
     [](CommandLine& line, const std::string&, std::string*) { return line.help = true; }},
    {"--version", nullptr, nullptr, "the version of pdsreview",
     [](CommandLine& line, const std::string&, std::string*) { return line.version = true; }},
};

} // namespace

std::span<const OptionKind> OptionKinds() {
    return kOptions;
}

const OptionKind* FindOption(std::string_view name) {
    for (const OptionKind& option : kOptions)
        if (name == option.name || (option.shortName && name == option.shortName))
            return &option;
    return nullptr;
}
