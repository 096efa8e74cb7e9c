#include "manual/BashCompletion.h"

#include <cctype>
#include <string_view>

namespace {

// A word in single quotes, as the shell reads it back unchanged.
std::string Quoted(std::string_view word) {
    std::string out = "'";
    for (char c : word) {
        if (c == '\'')
            out += "'\\''";
        else
            out += c;
    }
    return out + "'";
}

// The names of the entries and their aliases, as one word list for compgen -W.
std::string WordList(const std::vector<ManualEntry>& entries) {
    std::string words;
    for (const ManualEntry& entry : entries) {
        words += (words.empty() ? "" : " ") + entry.name;
        for (const std::string& alias : entry.aliases)
            words += " " + alias;
    }
    return Quoted(words);
}

// The case pattern that matches an entry by any of its spellings.
std::string Pattern(const ManualEntry& entry) {
    std::string pattern = Quoted(entry.name);
    for (const std::string& alias : entry.aliases)
        pattern += "|" + Quoted(alias);
    return pattern;
}

// The branch that completes an entry's argument; empty for an entry that takes none.
std::string ArgumentBranch(const ManualEntry& entry) {
    const std::string head = "        " + Pattern(entry) + ")\n            ";
    switch (entry.kind) {
    case ArgumentKind::None:
        return {};
    case ArgumentKind::File:
        if (entry.pattern.empty())
            return head + "compopt -o filenames 2>/dev/null\n"
                          "            mapfile -t COMPREPLY < <(compgen -f -- \"$cur\") ;;\n";
        return head +
               "compopt -o filenames 2>/dev/null\n"
               "            mapfile -t COMPREPLY < <(compgen -f -X " +
               Quoted("!" + entry.pattern) + " -- \"$cur\"; compgen -d -- \"$cur\") ;;\n";
    case ArgumentKind::Choice: {
        std::string words;
        for (const std::string& choice : entry.choices)
            words += (words.empty() ? "" : " ") + choice;
        return head + "mapfile -t COMPREPLY < <(compgen -W " + Quoted(words) + " -- \"$cur\") ;;\n";
    }
    case ArgumentKind::Text:
        return head + ";;\n";
    }
    return {};
}

// The shell function's name: the program's, with what a name may not hold made '_'.
std::string FunctionName(std::string_view program) {
    std::string name = "_";
    for (char c : program)
        name += std::isalnum(static_cast<unsigned char>(c)) ? c : '_';
    return name;
}

} // namespace

std::string BashCompletion(const ProgramManual& manual) {
    std::string takesArgument;
    std::string branches;
    for (const auto* entries : {&manual.commands, &manual.options})
        for (const ManualEntry& entry : *entries)
            if (entry.kind != ArgumentKind::None) {
                takesArgument += (takesArgument.empty() ? "" : "|") + Pattern(entry);
                branches += ArgumentBranch(entry);
            }
    const std::string function = FunctionName(manual.name);
    std::string out = "# bash completion for " + manual.name + ", made from its tables of " +
                      "steps and options\n" + function + "() {\n" +
                      "    local cur=${COMP_WORDS[COMP_CWORD]} owner= i\n"
                      "    COMPREPLY=()\n"
                      "    # The step or option whose argument the word at the cursor is, if "
                      "any:\n"
                      "    # each word that takes one owns the word after it.\n"
                      "    for ((i = 1; i < COMP_CWORD; i++)); do\n"
                      "        if [[ -n $owner ]]; then\n"
                      "            owner=\n"
                      "            continue\n"
                      "        fi\n";
    if (!takesArgument.empty())
        out += "        case ${COMP_WORDS[i]} in\n            " + takesArgument +
               ") owner=${COMP_WORDS[i]} ;;\n        esac\n";
    out += "    done\n"
           "    case $owner in\n" +
           branches +
           "        *)\n"
           "            if [[ $cur == -* ]]; then\n"
           "                mapfile -t COMPREPLY < <(compgen -W " +
           WordList(manual.options) +
           " -- \"$cur\")\n"
           "            else\n" +
           (manual.operandsAreFiles
                ? std::string("                compopt -o filenames 2>/dev/null\n"
                              "                mapfile -t COMPREPLY < <(compgen -f -- \"$cur\")\n")
                : "                mapfile -t COMPREPLY < <(compgen -W " +
                      WordList(manual.commands) + " -- \"$cur\")\n") +
           "            fi ;;\n"
           "    esac\n"
           "}\n"
           "complete -F " +
           function + " " + manual.name + "\n";
    return out;
}
