#include "checkapp/CheckManual.h"

#include "checkapp/CheckCommandLine.h"

#include <string_view>

namespace {

// An option's value: alternatives ("text|json|sarif") are choices; a value joined to the
// name ("-Wno-NAME") is part of the one word, a warning's name from `--help`.
ManualEntry OptionEntry(const CheckOptionKind& option) {
    ManualEntry entry;
    entry.name = option.name;
    entry.summary = option.summary;
    if (!option.value)
        return entry;
    const std::string_view value = option.value;
    if (option.joined) {
        entry.name += value;
        return entry;
    }
    entry.argument = value;
    entry.kind = ArgumentKind::Choice;
    entry.choices = ManualChoices(value);
    return entry;
}

} // namespace

ProgramManual PdsCheckManual() {
    ProgramManual manual;
    manual.name = "pdscheck";
    manual.package = std::string("ztodpds ") + ZTODPDS_VERSION;
    manual.purpose = "check a design review's control, display-set and tag files";
    manual.synopsis = "[OPTIONS] FILE...";
    manual.description = {
        "pdscheck tells the people who write a design review's files what the ztodpds "
        "plug-in library will ignore, drop or read otherwise than written, at the line where "
        "it stands, as a compiler does. It runs the library's own readers with a diagnostics "
        "sink, so that nothing is read twice by other means.",
        "A file is read as its extension says (.dri, .dst, .tag, in any case), or as --as "
        "says. A control file brings in the models it names and the tag and display-set files "
        "an open would read beside it. pdscheck --help lists the name of every kind of "
        "finding, which -Wno-NAME and -WNAME take."};
    manual.operandsAreFiles = true;
    for (const CheckOptionKind& option : CheckOptionKinds())
        manual.options.push_back(OptionEntry(option));
    manual.exitStatuses = {
        {0, "nothing found (notes aside)"},
        {1, "warnings, and nothing the files hold is lost"},
        {2, "data would be dropped, or an error: a file that can't be opened or is not of its "
            "kind, or a warning under -Werror"},
        {3, "pdscheck can't do what was asked: a usage error, or its output can't be written"}};
    manual.examples = {"pdscheck examples/plant/plant.dri",
                       "pdscheck --format sarif notes.tag > notes.sarif"};
    manual.seeAlso = {"pdsreview(1)"};
    return manual;
}
