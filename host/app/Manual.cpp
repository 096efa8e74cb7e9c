#include "app/Manual.h"

#include "app/ExitStatus.h"
#include "app/Options.h"
#include "app/Steps.h"
#include "app/Usage.h"

#include <string_view>

namespace {

// A step's file, "FILE.dri", is completed with the files of that extension.
ManualEntry StepEntry(const StepKind& step) {
    ManualEntry entry;
    entry.name = step.name;
    entry.summary = step.summary;
    if (step.file) {
        const std::string_view file = step.file;
        entry.argument = file;
        entry.kind = ArgumentKind::File;
        if (const std::size_t dot = file.rfind('.'); dot != std::string_view::npos)
            entry.pattern = "*" + std::string(file.substr(dot));
    }
    return entry;
}

// An option's value is known by its name in the usage: alternatives ("model|cache|either")
// are choices, a PATH or SOURCE is a file (a SOURCE may also be a URI), anything else (a
// number, a list) is the user's own.
ManualEntry OptionEntry(const OptionKind& option) {
    ManualEntry entry;
    entry.name = option.name;
    if (option.shortName)
        entry.aliases.push_back(option.shortName);
    entry.summary = option.summary;
    if (!option.value)
        return entry;
    const std::string_view value = option.value;
    entry.argument = value;
    if (value == "PATH" || value == "SOURCE") {
        entry.kind = ArgumentKind::File;
    } else if (value.find('|') != std::string_view::npos) {
        entry.kind = ArgumentKind::Choice;
        entry.choices = ManualChoices(value);
    } else {
        entry.kind = ArgumentKind::Text;
    }
    return entry;
}

} // namespace

ProgramManual PdsReviewManual() {
    ProgramManual manual;
    manual.name = "pdsreview";
    manual.package = std::string("ztodpds ") + ZTODPDS_VERSION;
    manual.purpose = "review a plant design's control, display-set and tag files";
    manual.synopsis = "[OPTIONS] STEP [STEP ...]";
    manual.description = {
        "pdsreview is the command-line design-review host. It loads the ztodpds plug-in "
        "library and runs the steps it is given, in order, on one document: opening a "
        "design review's control file (.dri) with the models it names and the tag and "
        "display-set files beside it, importing review tags (.tag) and display sets (.dst), "
        "loading DGN models, evaluating the selection sets, and writing the review tags and "
        "a review page back out.",
        "The run stops at the first step that fails. Each step's line of the readable summary "
        "on standard output says what it did; with --json, standard output holds one JSON "
        "document instead. Warnings go to standard error, and so does a progress bar when "
        "standard error is a terminal.",
        "A file that is written is written whole or not at all: a failed write leaves an old "
        "file as it was."};
    manual.commandsTitle = "STEPS";
    for (const StepKind& step : StepKinds())
        manual.commands.push_back(StepEntry(step));
    for (const OptionKind& option : OptionKinds())
        manual.options.push_back(OptionEntry(option));
    for (const ExitStatusKind& status : ExitStatusKinds())
        manual.exitStatuses.push_back({status.code, ExitStatusMeaning(status)});
    for (const char* example : UsageExamples())
        manual.examples.emplace_back(example);
    manual.files = {
        "The plug-in library, ztodpds.so, is looked for beside pdsreview and then in "
        "../lib/ztodpds from pdsreview's folder, where the installed host libraries lie too.",
        "The sample review is installed in share/ztodpds/examples under the installation "
        "prefix (/usr for the package): the examples run from share/ztodpds as they do from "
        "the source folder. The file formats are described in share/doc/ztodpds/formats.md."};
    manual.seeAlso = {"pdscheck(1)"};
    return manual;
}
