#include "check/RuleWording.h"

#include "check/Wording.h"
#include "ztutil/ZtUWideString.h"

#include <string>

namespace {

const wchar_t* const kKeywords[] = {L"FIND ALL BUT", L"FIND",       L"ADD ALL BUT", L"ADD",
                                    L"KEEP ONLY",    L"THROW AWAY", L"END FIND"};
const wchar_t* const kCriteria[] = {L"Data", L"File", L"Level", L"Color", L"Display Set"};

// The keyword that `line` begins with when capitals are not told apart, or null.
const wchar_t* KeywordButForCase(std::wstring_view line) {
    const std::wstring lowered = Lowered(line);
    for (const wchar_t* keyword : kKeywords)
        if (lowered.starts_with(Lowered(keyword)))
            return keyword;
    return lowered.starts_with(L"endfind") ? L"END FIND" : nullptr;
}

// The criterion word that `text` most likely means, or null.
const wchar_t* MeantCriterion(std::wstring_view text) {
    const std::wstring lowered = Lowered(text);
    if (lowered.starts_with(L"colour"))
        return L"Color";
    for (const wchar_t* word : kCriteria)
        if (lowered.starts_with(Lowered(word)))
            return word;
    return nullptr;
}

std::string SetName(std::wstring_view name) {
    return name.empty() ? "this display set" : "display set " + Quoted(name);
}

const char* const kNoSelection = "it yields no selection set";

} // namespace

Finding DescribeNotStatement(const ZtOdPdsDiagnostic& d) {
    if (const wchar_t* keyword = KeywordButForCase(d.text))
        return MakeFinding(d, "statement", true,
                           Quoted(d.text) + " is not a statement: did you mean " + Quoted(keyword) +
                               "?",
                           "keywords are upper case and compared exactly; the line is ignored");
    return MakeFinding(d, "statement", true,
                       "this line of a definition begins with no keyword: " + Quoted(d.text),
                       "the line is ignored; statements begin with FIND, FIND ALL BUT, ADD, ADD "
                       "ALL BUT, KEEP ONLY, THROW AWAY or END FIND");
}

Finding DescribeSecondFind(const ZtOdPdsDiagnostic& d) {
    Finding finding = MakeFinding(d, "second-find", true, "a second FIND in one scope",
                                  "the statement is dropped: a scope keeps its first FIND");
    Relate(finding, d, "the scope's FIND is here");
    return finding;
}

Finding DescribeCriterion(const ZtOdPdsDiagnostic& d) {
    const std::wstring_view text = d.text;
    switch (d.figures[0]) {
    case 0:
        return MakeFinding(d, "criterion", true, "the statement has no criterion",
                           "the statement is dropped");
    case 2:
        return MakeFinding(d, "criterion", true,
                           ZtUTrimmedView(text).empty()
                               ? "the criterion names nothing"
                               : Quoted(ZtUTrimmedView(text)) + " names nothing",
                           "the statement selects nothing");
    default:
        break;
    }
    if (!text.empty() && (text.front() == L' ' || text.front() == L'\t'))
        return MakeFinding(d, "criterion", true,
                           "the criterion begins with a blank: there are two blanks behind the "
                           "keyword",
                           "one character behind the keyword is skipped and the next must begin "
                           "the criterion; the statement is dropped");
    if (const wchar_t* word = MeantCriterion(text))
        return MakeFinding(d, "criterion", true,
                           "unknown criterion " + Quoted(text) + ": did you mean " + Quoted(word) +
                               "?",
                           "criterion words are compared exactly; the statement is dropped");
    return MakeFinding(d, "criterion", true, "unknown criterion " + Quoted(text),
                       "the statement is dropped; criteria begin with Data, File, Level, Color "
                       "or Display Set");
}

Finding DescribeSeparator(const ZtOdPdsDiagnostic& d) {
    return MakeFinding(d, "separator", false, Quoted(d.text) + " is skipped as a separator",
                       "the one character behind a keyword or a criterion's word is skipped "
                       "unread, whatever it is");
}

Finding DescribeEndFindText(const ZtOdPdsDiagnostic& d) {
    return MakeFinding(d, "end-find", false,
                       "text behind END FIND is ignored: " + Quoted(ZtUTrimmedView(d.text)));
}

Finding DescribeNoScope(const ZtOdPdsDiagnostic& d) {
    if (d.figures[0] != 0)
        return MakeFinding(d, "scope", false, "END FIND with no scope open",
                           "the line is ignored: the outermost scope is closed already");
    return MakeFinding(d, "scope", true,
                       "this statement comes after the END FIND that closes the definition",
                       "the statement is ignored");
}

Finding DescribeListNumber(const ZtOdPdsDiagnostic& d) {
    const std::string read = std::to_string(d.figures[0]);
    switch (d.figures[1]) {
    case 0:
        return MakeFinding(d, "list-number", false, Quoted(d.text) + " is not a number",
                           "it is read as " + read);
    case 1:
        return MakeFinding(d, "list-number", false, Quoted(d.text) + " only begins with a number",
                           "it is read as " + read +
                               " and the rest is ignored; ranges are not understood, list each "
                               "number");
    default:
        return MakeFinding(d, "list-number", false,
                           Quoted(d.text) + " lies outside the range of whole numbers",
                           "it is read as " + read);
    }
}

Finding DescribeDataAttribute(const ZtOdPdsDiagnostic& d) {
    if (d.figures[0] > 0)
        return MakeFinding(d, "data-attribute", false,
                           "the attribute is read as " + Quoted(d.text) + ": " +
                               Counted(d.figures[0], "character", "characters") + " of it " +
                               (d.figures[0] == 1 ? "is" : "are") + " lost",
                           "the two characters before the operator are taken as separators: put "
                           "two blanks between the attribute and the operator");
    if (d.text.empty())
        return MakeFinding(d, "data-attribute", false, "the Data criterion names no attribute",
                           "no attribute of an empty name matches");
    return MakeFinding(d, "data-attribute", false,
                       "the attribute " + Quoted(d.text) + " keeps the blanks at its end",
                       "no attribute of that name matches");
}

Finding DescribeDataValue(const ZtOdPdsDiagnostic& d) {
    if (d.figures[0] != 0)
        return MakeFinding(d, "data-value", false, "the Data criterion has no value",
                           "it compares with an empty value");
    return MakeFinding(d, "data-value", false,
                       "the character behind the operator is taken as a separator, so the value "
                       "is read as " +
                           Quoted(d.text),
                       "one character behind the operator is skipped unread: put a blank there");
}

Finding DescribeDataOperator(const ZtOdPdsDiagnostic& d) {
    switch (d.figures[0]) {
    case 0:
        return MakeFinding(d, "data-operator", true, "the Data criterion has no operator",
                           "its condition never matches; operators are =, >, >=, < and <=");
    case 1:
        return MakeFinding(d, "data-operator", false,
                           "the operator is taken as " + Quoted(d.text) + " here",
                           "the first of >=, <=, =, > and < that occurs anywhere in the text is "
                           "the operator, wherever the others stand");
    default:
        return MakeFinding(d, "data-operator", false, Quoted(d.text) + " becomes a pattern match",
                           "a value with * or ? is matched as a pattern, whatever the operator");
    }
}

Finding DescribeSetReference(const ZtOdPdsDiagnostic& d) {
    const std::string name = Quoted(d.text);
    Finding finding;
    switch (d.figures[0]) {
    case 0:
        finding = MakeFinding(d, "set-reference", true,
                              "no display set named " + name + " in this section",
                              d.figures[1] != 0 ? "the reference gives nothing; names are "
                                                  "compared exactly, capitals counting"
                                                : "the reference gives nothing");
        Relate(finding, d, "a set whose name differs in case alone begins here");
        return finding;
    case 1:
        finding = MakeFinding(d, "set-reference", true, "display set " + name + " comes later",
                              "a reference finds only the sets above it; it gives nothing here");
        Relate(finding, d, "display set " + name + " begins here");
        return finding;
    case 2:
        return MakeFinding(d, "set-reference", true, "display set " + name + " refers to itself",
                           "the reference gives nothing");
    default:
        finding = MakeFinding(d, "set-reference", true, "display set " + name + " yields nothing",
                              "the reference gives nothing");
        Relate(finding, d, "display set " + name + " begins here");
        return finding;
    }
}

Finding DescribeSetEmpty(const ZtOdPdsDiagnostic& d) {
    const std::string set = SetName(d.text);
    switch (d.figures[0]) {
    case kZtOdPdsSetNoDefinition:
        return MakeFinding(d, "empty-set", true, set + " has no <Definition> line", kNoSelection);
    case kZtOdPdsSetNoFind:
        return MakeFinding(d, "empty-set", true, set + " has no FIND in its outermost scope",
                           kNoSelection);
    case kZtOdPdsSetNothing:
        return MakeFinding(d, "empty-set", true, set + " selects nothing",
                           std::string("a part of its rule gives nothing; ") + kNoSelection);
    case kZtOdPdsSetIncomplete:
        return MakeFinding(d, "empty-set", true,
                           set + " refers to a display set that gives nothing", kNoSelection);
    case kZtOdPdsSetScopeDepth:
        return MakeFinding(d, "limit", true, set + " opens more than 10,000 scopes at once",
                           std::string("it is abandoned: ") + kNoSelection);
    case kZtOdPdsSetTreeDepth:
        return MakeFinding(d, "limit", true, set + " nests deeper than 10,000 levels",
                           std::string("it is abandoned: ") + kNoSelection);
    case kZtOdPdsSetConditions:
        return MakeFinding(d, "limit", true, set + " would hold more than 1,000,000 conditions",
                           std::string("it is abandoned: ") + kNoSelection);
    case kZtOdPdsSetRewrite:
        return MakeFinding(d, "limit", true, set + " takes too much work to rewrite",
                           std::string("it is abandoned: ") + kNoSelection);
    default:
        return MakeFinding(d, "limit", true,
                           "the display sets of this file would hold more than 4,000,000 "
                           "conditions in all",
                           d.figures[1] > 1
                               ? set + " and the " + Counted(d.figures[1] - 1, "set", "sets") +
                                     " after it are abandoned"
                               : set + " is abandoned");
    }
}

Finding DescribeSetName(const ZtOdPdsDiagnostic& d) {
    const std::wstring_view header = d.text;
    switch (d.figures[0]) {
    case 0: {
        const std::size_t blank = header.find(L' ');
        const std::wstring_view name = blank == std::wstring_view::npos
                                           ? std::wstring_view()
                                           : ZtUTrimmedView(header.substr(blank));
        return MakeFinding(d, "set-name", false,
                           "the header " + Quoted(header) +
                               " has no number: its first word is taken as the number",
                           name.empty() ? "the set has no name"
                                        : "the set is named " + Quoted(name));
    }
    case 1:
        return MakeFinding(d, "set-name", false,
                           "the header " + Quoted(header) + " has no blank: the set has no name",
                           "no reference can find it; a blank (not a tab) separates number and "
                           "name");
    case 2:
        return MakeFinding(d, "set-name", false, "the display set has no header line",
                           "it has no name, and no reference can find it");
    default: {
        Finding finding = MakeFinding(d, "set-name", false,
                                      "a display set named " + Quoted(header) + " stands above",
                                      "references below find this one, not the one above");
        Relate(finding, d, "the set of the same name");
        return finding;
    }
    }
}

Finding DescribeSection(const ZtOdPdsDiagnostic& d) {
    return MakeFinding(d, "section", true,
                       Quoted(d.text) + " is not read: only \"[DEFINITION SECTION]\" is",
                       "section lines are compared exactly and stand alone on their line; the "
                       "sets of this section are not read");
}

Finding DescribeSetOutsideSection(const ZtOdPdsDiagnostic& d) {
    return MakeFinding(d, "section", true, "this display set lies outside a [DEFINITION SECTION]",
                       "it is not read");
}

Finding DescribeMarkerLine(const ZtOdPdsDiagnostic& d) {
    const std::wstring_view trimmed = ZtUTrimmedView(d.text);
    const bool set = Lowered(trimmed).starts_with(L"<display set>");
    return MakeFinding(d, "marker", true,
                       Quoted(d.text) + (set ? " does not begin a display set"
                                             : " does not begin the set's definition"),
                       std::string("the line is read as an ordinary line: ") +
                           (set ? "\"<Display Set>\"" : "\"<Definition>\"") +
                           " stands alone on its line, exactly so");
}

Finding DescribeIgnoredLines(const ZtOdPdsDiagnostic& d) {
    return MakeFinding(d, "ignored-lines", true,
                       "the " + Counted(d.figures[0], "line", "lines") + " behind this line " +
                           (d.figures[0] == 1 ? "is" : "are") + " ignored",
                       "an angle line other than <Definition> stops a set's reading up to the "
                       "next <Definition>");
}
