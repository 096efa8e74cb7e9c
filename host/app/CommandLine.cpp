#include "app/CommandLine.h"

#include "app/RedlineOptions.h"
#include "app/Steps.h"

#include <charconv>
#include <cmath>
#include <string_view>

namespace {

template <class T> bool ParseWhole(const std::string& text, T* value) {
    const char* first = text.data();
    const char* last = first + text.size();
    auto [end, error] = std::from_chars(first, last, *value);
    return !text.empty() && error == std::errc() && end == last;
}

// An option of the command line, as parsing and the usage text know it. `apply` gets the
// option's value (empty for a flag) and says what is wrong with it in `error`.
struct OptionKind {
    const char* name;
    const char* shortName; // another spelling, left out of the usage; may be null
    const char* value;     // the usage's name for the option's value; null: a flag
    const char* summary;   // the option's line of the usage
    bool (*apply)(CommandLine& line, const std::string& value, std::string* error);
};

constexpr OptionKind kOptions[] = {
    {"--json", nullptr, nullptr, "print JSON instead of the readable summary",
     [](CommandLine& line, const std::string&, std::string*) { return line.json = true; }},
    {"--quiet", nullptr, nullptr, "no progress bar",
     [](CommandLine& line, const std::string&, std::string*) { return line.quiet = true; }},
    {"--plugin", nullptr, "PATH", "the plug-in library (default: beside pdsreview)",
     [](CommandLine& line, const std::string& value, std::string*) {
         line.pluginPath = value;
         return true;
     }},
    {"--uors-per-master", nullptr, "F", "add a model with no elements and that factor",
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
    {"--no-tags", nullptr, nullptr, "open: do not import the tag files beside it",
     [](CommandLine& line, const std::string&, std::string*) {
         line.open.importTags = false;
         return true;
     }},
    {"--no-display-sets", nullptr, nullptr, "open: do not import the display-set files beside it",
     [](CommandLine& line, const std::string&, std::string*) {
         line.open.importDisplaySets = false;
         return true;
     }},
    {"--next-ids", nullptr, "T,C", "the document's next tag and comment ids",
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
    {"--redline-color", nullptr, "R,G,B", "the redline tool's line colour",
     [](CommandLine& line, const std::string& value, std::string* error) {
         ZtLColor3f color;
         if (!ParseRedlineColor(value, &color, error))
             return false;
         line.redlineColor = color;
         return true;
     }},
    {"--redline-thickness", nullptr, "N", "the redline tool's line thickness",
     [](CommandLine& line, const std::string& value, std::string* error) {
         int thickness = 0;
         if (!ParseRedlineThickness(value, &thickness, error))
             return false;
         line.redlineThickness = thickness;
         return true;
     }},
    {"--control-mode", nullptr, "N", "the host's control mode for the plug-in library",
     [](CommandLine& line, const std::string& value, std::string* error) {
         if (ParseWhole(value, &line.controlMode))
             return true;
         *error = "--control-mode takes an integer, not '" + value + "'";
         return false;
     }},
    {"--elements", nullptr, nullptr, "list every element of each model in the JSON",
     [](CommandLine& line, const std::string&, std::string*) { return line.elements = true; }},
    {"--strict", nullptr, nullptr, "a warning fails the run (exit status 5)",
     [](CommandLine& line, const std::string&, std::string*) { return line.strict = true; }},
    {"--help", "-h", nullptr, "this text",
     [](CommandLine& line, const std::string&, std::string*) { return line.help = true; }},
    {"--version", nullptr, nullptr, "the version of pdsreview",
     [](CommandLine& line, const std::string&, std::string*) { return line.version = true; }},
};

const OptionKind* FindOption(std::string_view name) {
    for (const OptionKind& option : kOptions)
        if (name == option.name || (option.shortName && name == option.shortName))
            return &option;
    return nullptr;
}

// A line of the usage: the entry, and its summary from column `column` on, or on a line of
// its own there when the entry reaches it.
void AppendUsageLine(std::string& out, const std::string& entry, std::size_t column,
                     const char* summary) {
    out += "  " + entry;
    const std::size_t used = 2 + entry.size();
    if (used < column)
        out.append(column - used, ' ');
    else
        out += "\n" + std::string(column, ' ');
    out += summary;
    out += '\n';
}

std::string MakeUsageText() {
    std::string text = "usage: pdsreview [OPTIONS] STEP [STEP ...]\n"
                       "\n"
                       "Steps, run in order on one document:\n";
    for (const StepKind& step : StepKinds())
        AppendUsageLine(text, step.file ? std::string(step.name) + " " + step.file : step.name, 23,
                        step.summary);
    text += "\nOptions:\n";
    for (const OptionKind& option : kOptions)
        AppendUsageLine(text,
                        option.value ? std::string(option.name) + " " + option.value : option.name,
                        28, option.summary);
    return text + "\n"
                  "Each step's line says what it did; warnings go to standard error. The run\n"
                  "stops at the first step that fails, and the exit status says why:\n"
                  "  0    every step succeeded\n"
                  "  1    a file can't be opened or created (the message says which and why)\n"
                  "  2    pdsreview can't do what was asked: a usage error, a plug-in library\n"
                  "       that can't be loaded, a model file that is no DGN model\n"
                  "  3    no document, or a pass over a file failed\n"
                  "  4    a file or standard output could not be written; an old file is left\n"
                  "       as it was\n"
                  "  5    --strict, and a step gave a warning\n"
                  "  6    no model is loaded to give the units, or no saved views to export\n"
                  "  64   the control file can't be opened, or no block begins in it\n"
                  "  128  the control file's first block is not DesignReview_Control\n"
                  "\n"
                  "Examples, from the source folder:\n"
                  "  pdsreview open examples/plant/plant.dri select\n"
                  "  pdsreview --json --strict model examples/plant/pipes.dgn "
                  "import-tags examples/plant/plant.tag\n";
}

} // namespace

const char* UsageText() {
    static const std::string text = MakeUsageText();
    return text.c_str();
}

bool ParseCommandLine(const std::vector<std::string>& args, CommandLine* out, std::string* error) {
    CommandLine line;
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& arg = args[i];
        if (const OptionKind* option = FindOption(arg)) {
            std::string value;
            if (option->value) {
                if (i + 1 >= args.size()) {
                    *error = "option " + arg + " needs a value";
                    return false;
                }
                value = args[++i];
            }
            if (!option->apply(line, value, error))
                return false;
        } else if (arg.size() > 1 && arg[0] == '-') {
            *error = "unknown option " + arg;
            return false;
        } else if (const StepKind* kind = FindStepKind(arg)) {
            Step step{arg, {}};
            if (kind->file) {
                if (i + 1 >= args.size()) {
                    *error = "step " + arg + " needs a file";
                    return false;
                }
                step.argument = args[++i];
            }
            line.steps.push_back(std::move(step));
        } else {
            *error = "unknown step '" + arg + "'";
            return false;
        }
    }
    if (line.steps.empty() && !line.help && !line.version) {
        *error = "no step given";
        return false;
    }
    *out = std::move(line);
    return true;
}
