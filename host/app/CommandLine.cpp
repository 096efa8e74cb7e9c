#include "app/CommandLine.h"

#include "app/RedlineOptions.h"

#include <charconv>
#include <climits>
#include <cmath>
#include <cstring>

namespace {

struct StepKind {
    const char* name;
    bool takesFile;
};

constexpr StepKind kSteps[] = {
    {"plugins", false},    {"open", true},    {"import-tags", true}, {"import-dst", true},
    {"export-tags", true}, {"select", false}, {"model", true},       {"report", true},
};

const StepKind* FindStep(const std::string& name) {
    for (const StepKind& step : kSteps)
        if (name == step.name)
            return &step;
    return nullptr;
}

template <class T> bool ParseWhole(const std::string& text, T* value) {
    const char* first = text.data();
    const char* last = first + text.size();
    auto [end, error] = std::from_chars(first, last, *value);
    return !text.empty() && error == std::errc() && end == last;
}

} // namespace

const char* UsageText() {
    return "usage: pdsreview [OPTIONS] STEP [STEP ...]\n"
           "\n"
           "Steps, run in order on one document:\n"
           "  plugins              list the plug-ins of the plug-in library\n"
           "  open FILE.dri        open a design review with its models and side files\n"
           "  import-tags FILE.tag import review tags\n"
           "  import-dst FILE.dst  import display sets\n"
           "  export-tags FILE.tag export the document's review tags\n"
           "  select               evaluate every selection set over the loaded models\n"
           "  model FILE.dgn       load one model into the document's scene\n"
           "  report FILE.html     write a page that shows the review\n"
           "\n"
           "Options:\n"
           "  --json                    print JSON instead of the readable summary\n"
           "  --quiet                   no progress bar\n"
           "  --plugin PATH             the plug-in library (default: beside pdsreview)\n"
           "  --uors-per-master F       add a model with no elements and that factor\n"
           "  --input-files model|cache|either\n"
           "                            which file of a control file's model to load\n"
           "  --no-tags                 open: do not import the tag files beside it\n"
           "  --no-display-sets         open: do not import the display-set files beside it\n"
           "  --next-ids T,C            the document's next tag and comment ids\n"
           "  --redline-color R,G,B     the redline tool's line colour\n"
           "  --redline-thickness N     the redline tool's line thickness\n"
           "  --control-mode N          the host's control mode for the plug-in library\n"
           "  --elements                list every element of each model in the JSON\n"
           "  --strict                  a warning fails the run (exit status 5)\n"
           "  --help                    this text\n"
           "  --version                 the version of pdsreview\n"
           "\n"
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

bool ParseCommandLine(const std::vector<std::string>& args, CommandLine* out, std::string* error) {
    CommandLine line;
    auto needValue = [&](std::size_t i) {
        if (i + 1 < args.size())
            return true;
        *error = "option " + args[i] + " needs a value";
        return false;
    };
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& arg = args[i];
        if (arg == "--json") {
            line.json = true;
        } else if (arg == "--quiet") {
            line.quiet = true;
        } else if (arg == "--elements") {
            line.elements = true;
        } else if (arg == "--help" || arg == "-h") {
            line.help = true;
        } else if (arg == "--version") {
            line.version = true;
        } else if (arg == "--strict") {
            line.strict = true;
        } else if (arg == "--plugin") {
            if (!needValue(i))
                return false;
            line.pluginPath = args[++i];
        } else if (arg == "--control-mode") {
            if (!needValue(i))
                return false;
            if (!ParseWhole(args[++i], &line.controlMode)) {
                *error = "--control-mode takes an integer, not '" + args[i] + "'";
                return false;
            }
        } else if (arg == "--next-ids") {
            if (!needValue(i))
                return false;
            const std::string& value = args[++i];
            const std::size_t comma = value.find(',');
            unsigned long long tag = 0, comment = 0;
            if (comma == std::string::npos || !ParseWhole(value.substr(0, comma), &tag) ||
                !ParseWhole(value.substr(comma + 1), &comment)) {
                *error = "--next-ids takes two unsigned integers T,C, not '" + value + "'";
                return false;
            }
            line.nextIds.emplace(tag, comment);
        } else if (arg == "--uors-per-master") {
            if (!needValue(i))
                return false;
            double factor = 0;
            if (!ParseWhole(args[++i], &factor) || !std::isfinite(factor) || factor <= 0) {
                *error = "--uors-per-master takes a finite number above 0, not '" + args[i] + "'";
                return false;
            }
            line.uorsPerMaster = factor;
        } else if (arg == "--input-files") {
            if (!needValue(i))
                return false;
            const std::optional<int> value = InputFilesValue(args[++i]);
            if (!value) {
                *error = "--input-files takes model, cache or either, not '" + args[i] + "'";
                return false;
            }
            line.open.inputFiles = *value;
        } else if (arg == "--no-tags") {
            line.open.importTags = false;
        } else if (arg == "--no-display-sets") {
            line.open.importDisplaySets = false;
        } else if (arg == "--redline-color") {
            if (!needValue(i))
                return false;
            ZtLColor3f color;
            if (!ParseRedlineColor(args[++i], &color, error))
                return false;
            line.redlineColor = color;
        } else if (arg == "--redline-thickness") {
            if (!needValue(i))
                return false;
            int thickness = 0;
            if (!ParseRedlineThickness(args[++i], &thickness, error))
                return false;
            line.redlineThickness = thickness;
        } else if (arg.size() > 1 && arg[0] == '-') {
            *error = "unknown option " + arg;
            return false;
        } else if (const StepKind* kind = FindStep(arg)) {
            Step step{arg, {}};
            if (kind->takesFile) {
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
