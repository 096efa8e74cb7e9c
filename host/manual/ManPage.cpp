#include "manual/ManPage.h"

#include <cctype>
#include <string_view>

namespace {

// Text as roff prints it: a backslash is escaped, wrapping line ends are blanks, and a
// line that would begin with a control character begins with a zero-width one instead.
// A dash is a minus sign where it is typed: everywhere in what the user types (`typed`),
// else where it begins a word, as in options and negative numbers.
std::string Roff(std::string_view text, bool typed = false) {
    std::string out;
    out.reserve(text.size() + 8);
    if (!text.empty() && (text.front() == '.' || text.front() == '\''))
        out += "\\&";
    char before = ' ';
    for (char c : text) {
        if (c == '\\')
            out += "\\e";
        else if (c == '-' && (typed || std::isspace(static_cast<unsigned char>(before)) ||
                              before == '-' || before == '(' || before == '/'))
            out += "\\-";
        else if (c == '\n')
            out += ' ';
        else
            out += c;
        before = c;
    }
    return out;
}

// A name or command line as the user types it.
std::string Typed(std::string_view text) {
    return Roff(text, true);
}

std::string Upper(std::string_view text) {
    std::string out(text);
    for (char& c : out)
        c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return out;
}

void AppendParagraphs(std::string& out, const std::vector<std::string>& paragraphs) {
    for (std::size_t i = 0; i < paragraphs.size(); ++i) {
        if (i > 0)
            out += ".PP\n";
        out += Roff(paragraphs[i]) + '\n';
    }
}

// An entry's tag line: its name and aliases in bold, its argument in italics.
void AppendEntries(std::string& out, const std::string& title,
                   const std::vector<ManualEntry>& entries) {
    if (entries.empty())
        return;
    out += ".SH " + title + '\n';
    for (const ManualEntry& entry : entries) {
        out += ".TP\n\\fB" + Typed(entry.name) + "\\fR";
        for (const std::string& alias : entry.aliases)
            out += ", \\fB" + Typed(alias) + "\\fR";
        if (!entry.argument.empty())
            out += " \\fI" + Typed(entry.argument) + "\\fR";
        out += '\n' + Roff(entry.summary) + '\n';
    }
}

} // namespace

std::string ManPage(const ProgramManual& manual) {
    std::string out = ".TH " + Upper(manual.name) + " 1 \"\" \"" + Roff(manual.package) +
                      "\" \"User Commands\"\n";
    out += ".SH NAME\n" + Typed(manual.name) + " \\- " + Roff(manual.purpose) + '\n';
    out += ".SH SYNOPSIS\n.B " + Typed(manual.name) + '\n' + Roff(manual.synopsis) + '\n';
    out += ".SH DESCRIPTION\n";
    AppendParagraphs(out, manual.description);
    AppendEntries(out, manual.commandsTitle, manual.commands);
    AppendEntries(out, "OPTIONS", manual.options);
    if (!manual.exitStatuses.empty()) {
        out += ".SH \"EXIT STATUS\"\n";
        for (const ManualStatus& status : manual.exitStatuses)
            out += ".TP\n.B " + std::to_string(status.code) + '\n' + Roff(status.meaning) + '\n';
    }
    if (!manual.examples.empty()) {
        out += ".SH EXAMPLES\n";
        for (const std::string& example : manual.examples)
            out += ".PP\n.RS\n.nf\n" + Typed(example) + "\n.fi\n.RE\n";
    }
    if (!manual.files.empty()) {
        out += ".SH FILES\n";
        AppendParagraphs(out, manual.files);
    }
    if (!manual.seeAlso.empty()) {
        out += ".SH \"SEE ALSO\"\n";
        for (std::size_t i = 0; i < manual.seeAlso.size(); ++i)
            out += Roff(manual.seeAlso[i]) + (i + 1 < manual.seeAlso.size() ? ",\n" : "\n");
    }
    return out;
}
