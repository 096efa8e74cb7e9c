#include "app/CommandLine.h"

#include "app/Options.h"
#include "app/Steps.h"

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
