#include "checkapp/CheckCommandLine.h"

#include "check/CheckCatalog.h"

namespace {

// A row of the usage: a name in its column, then what it means.
std::string Row(const std::string& name, const char* summary) {
    constexpr std::size_t kColumn = 26;
    return "  " + name + std::string(name.size() < kColumn ? kColumn - name.size() : 1, ' ') +
           summary + "\n";
}

bool SetFormat(CheckCommandLine& line, const std::string& value, std::string* error) {
    if (value == "text")
        line.format = CheckFormat::kText;
    else if (value == "json")
        line.format = CheckFormat::kJson;
    else if (value == "sarif")
        line.format = CheckFormat::kSarif;
    else {
        *error = "--format takes text, json or sarif, not '" + value + "'";
        return false;
    }
    return true;
}

bool SetKind(CheckCommandLine& line, const std::string& value, std::string* error) {
    line.readAs = FileKindNamed(value);
    if (line.readAs)
        return true;
    *error = "--as takes dri, dst or tag, not '" + value + "'";
    return false;
}

bool UnknownWarning(const std::string& name, std::string* error) {
    *error = "no warning is named '" + name + "' (see --help)";
    return false;
}

bool Silence(CheckCommandLine& line, const std::string& name, std::string* error) {
    if (!FindCheckKind(name))
        return UnknownWarning(name, error);
    line.silenced.insert(name);
    return true;
}

bool Unsilence(CheckCommandLine& line, const std::string& name, std::string* error) {
    if (!FindCheckKind(name))
        return UnknownWarning(name, error);
    line.silenced.erase(name);
    return true;
}

const CheckOptionKind kOptions[] = {
    {"--format", "text|json|sarif", false,
     "how findings are written: as a compiler gives them (the default), as JSON, or as a "
     "SARIF 2.1.0 log",
     SetFormat},
    {"--as", "dri|dst|tag", false, "read every file as this kind, whatever its extension", SetKind},
    {"--no-tags", nullptr, false, "a control file's check leaves the tag files beside it alone",
     [](CheckCommandLine& line, const std::string&, std::string*) {
         line.sideFiles.tags = false;
         return true;
     }},
    {"--no-display-sets", nullptr, false,
     "a control file's check leaves the display-set files beside it alone",
     [](CheckCommandLine& line, const std::string&, std::string*) {
         line.sideFiles.displaySets = false;
         return true;
     }},
    {"-Werror", nullptr, false, "warnings are errors",
     [](CheckCommandLine& line, const std::string&, std::string*) {
         line.warningsAreErrors = true;
         return true;
     }},
    {"-Wno-", "NAME", true, "the warnings of that name are not shown", Silence},
    {"-W", "NAME", true, "the warnings of that name are shown again", Unsilence},
    {"--help", nullptr, false, "this text",
     [](CheckCommandLine& line, const std::string&, std::string*) {
         line.help = true;
         return true;
     }},
    {"--version", nullptr, false, "pdscheck VERSION",
     [](CheckCommandLine& line, const std::string&, std::string*) {
         line.version = true;
         return true;
     }},
};

// The option `arg` names, with the value it carries in `value`; `apart` is set when the
// value is the next word. Null for no option.
const CheckOptionKind* Match(std::string_view arg, std::string* value, bool* apart) {
    for (const CheckOptionKind& option : kOptions) {
        const std::string_view name = option.name;
        if (option.joined) {
            if (arg.size() > name.size() && arg.starts_with(name)) {
                *value = arg.substr(name.size());
                return &option;
            }
        } else if (arg == name) {
            *apart = option.value != nullptr;
            return &option;
        } else if (option.value && arg.starts_with(name) && arg.size() > name.size() &&
                   arg[name.size()] == '=') {
            *value = arg.substr(name.size() + 1);
            return &option;
        }
    }
    return nullptr;
}

} // namespace

std::span<const CheckOptionKind> CheckOptionKinds() {
    return kOptions;
}

bool ParseCheckCommandLine(const std::vector<std::string>& args, CheckCommandLine* out,
                           std::string* error) {
    CheckCommandLine line;
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& arg = args[i];
        if (arg.size() < 2 || arg[0] != '-') {
            line.files.push_back(arg);
            continue;
        }
        std::string value;
        bool apart = false;
        const CheckOptionKind* option = Match(arg, &value, &apart);
        if (!option) {
            *error = "unknown option " + arg;
            return false;
        }
        if (apart) {
            if (i + 1 >= args.size()) {
                *error = "option " + arg + " needs a value";
                return false;
            }
            value = args[++i];
        }
        if (!option->apply(line, value, error))
            return false;
    }
    if (line.files.empty() && !line.help && !line.version) {
        *error = "no file given";
        return false;
    }
    *out = std::move(line);
    return true;
}

std::string CheckUsageText() {
    std::string text =
        "Usage: pdscheck [OPTIONS] FILE...\n"
        "\n"
        "Checks the files of a design review and says, at the line where it stands, what\n"
        "the plug-in library will ignore, drop or read otherwise than written. A control\n"
        "file (.dri) brings in the models it names and the tag and display-set files an open\n"
        "would read beside it; display-set (.dst) and tag (.tag) files are checked alone.\n"
        "\n"
        "Options:\n";
    for (const CheckOptionKind& option : kOptions) {
        std::string name = option.name;
        if (option.value)
            name += (option.joined ? "" : " ") + std::string(option.value);
        text += Row(name, option.summary);
    }
    text += "\n"
            "Exit status: 0 when nothing is found, 1 with warnings, 2 when data would be\n"
            "dropped (or with errors), 3 when pdscheck can't do what was asked.\n"
            "\n"
            "Warnings, by the name -Wno-NAME takes:\n";
    for (const CheckKind& kind : CheckKinds())
        text += Row(kind.name, kind.summary);
    return text;
}
