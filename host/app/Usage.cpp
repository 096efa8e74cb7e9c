#include "app/Usage.h"

#include "app/ExitStatus.h"
#include "app/Options.h"
#include "app/Steps.h"

#include <string>
#include <string_view>

namespace {

// Where the summaries of each list begin.
constexpr std::size_t kStepColumn = 24;
constexpr std::size_t kOptionColumn = 28;
constexpr std::size_t kStatusColumn = 7;

constexpr const char* kExamples[] = {
    "pdsreview open examples/plant/plant.dri select",
    "pdsreview --json --strict model examples/plant/pipes.dgn import-tags "
    "examples/plant/plant.tag",
};

// A line of the usage: the entry, and its summary from column `column` on, at least two
// spaces after the entry, or on a line of its own there when the entry comes too close;
// each further line of the summary begins there too.
void AppendUsageLine(std::string& out, const std::string& entry, std::size_t column,
                     std::string_view summary) {
    out += "  " + entry;
    const std::size_t used = 2 + entry.size();
    if (used + 2 <= column)
        out.append(column - used, ' ');
    else
        out += "\n" + std::string(column, ' ');
    for (char c : summary) {
        out += c;
        if (c == '\n')
            out.append(column, ' ');
    }
    out += '\n';
}

// The steps that can end with `code`, as "(a, b)"; empty for none.
std::string StepsWithStatus(int code) {
    std::string names;
    for (const StepKind& step : StepKinds())
        for (int status : step.statuses)
            if (status != 0 && status == code)
                names += (names.empty() ? "(from " : ", ") + std::string(step.name);
    return names.empty() ? names : names + ")";
}

std::string MakeUsageText() {
    std::string text = "usage: pdsreview [OPTIONS] STEP [STEP ...]\n"
                       "\n"
                       "Steps, run in order on one document:\n";
    for (const StepKind& step : StepKinds())
        AppendUsageLine(text, step.file ? std::string(step.name) + " " + step.file : step.name,
                        kStepColumn, step.summary);
    text += "\nOptions:\n";
    for (const OptionKind& option : OptionKinds())
        AppendUsageLine(text,
                        option.value ? std::string(option.name) + " " + option.value : option.name,
                        kOptionColumn, option.summary);
    text += "\nEach step's line says what it did; warnings go to standard error.\n"
            "\nExit statuses: the run stops at the first step that fails, and says why:\n";
    for (const ExitStatusKind& status : ExitStatusKinds())
        AppendUsageLine(text, std::to_string(status.code), kStatusColumn,
                        ExitStatusMeaning(status));
    text += "\nExamples, from the source folder:\n";
    for (const char* example : kExamples)
        text += std::string("  ") + example + "\n";
    return text;
}

} // namespace

std::string ExitStatusMeaning(const ExitStatusKind& status) {
    std::string meaning = status.usage;
    const std::string steps = StepsWithStatus(status.code);
    if (!steps.empty())
        meaning += "\n" + steps;
    return meaning;
}

std::span<const char* const> UsageExamples() {
    return kExamples;
}

const char* UsageText() {
    static const std::string text = MakeUsageText();
    return text.c_str();
}
