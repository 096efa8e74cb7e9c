#pragma once
#include <cstddef>
#include <cstdint>
#include <cwchar>
#include <initializer_list>
#include <string_view>

// A place in a file as the readers see it: lines and columns count from 1, a column in
// UTF-16 units, and only a line feed begins a line. Line 0 stands for the file as a whole.
struct ZtOdPdsSourcePosition {
    std::uint32_t line = 0;
    std::uint32_t column = 0;

    // The position behind the character `c` read at this one.
    void Step(wchar_t c) {
        if (c == L'\n') {
            ++line;
            column = 1;
        } else {
            ++column;
        }
    }
    // The position behind the `count` characters at `text`, read from this one.
    void StepOver(const wchar_t* text, std::size_t count) {
        const wchar_t* const end = text + count;
        const wchar_t* lastLineFeed = nullptr;
        for (const wchar_t* at = text;
             (at = std::wmemchr(at, L'\n', static_cast<std::size_t>(end - at))); ++at) {
            ++line;
            lastLineFeed = at;
        }
        column = lastLineFeed ? static_cast<std::uint32_t>(end - lastLineFeed)
                              : column + static_cast<std::uint32_t>(count);
    }
    // The position `count` characters of one line further on.
    ZtOdPdsSourcePosition Right(std::uint32_t count) const { return {line, column + count}; }
    bool IsKnown() const { return line != 0; }
};

// What the library noticed about its input: each place where it ignores, skips, drops,
// cuts or reinterprets what a file says. The figures of a diagnostic are listed with its
// check; unlisted ones are 0. Checks marked "fact" report no problem: they tell a checker
// what was read, so that it can judge the file as a whole.
enum class ZtOdPdsCheck : int {
    // --- Text readers ---
    // A NUL ends the text it stands in: `text` is what is kept. Figures: what was cut
    // (0 a block's name, 1 a block's value, 2 a line), and the characters lost behind it.
    kNulCut,
    // Text outside any block, which the block reader throws away at the line end.
    kStrayText,
    // A line longer than the line reader takes at once: the rest from `at` on arrives as a
    // line of its own. Figure: the length of the piece before it.
    kLineSplit,
    // A last line of one character without a line end, which the line reader drops.
    kLastLineDropped,

    // --- Block files: tag files and control files ---
    // A block whose key the reader does not know is skipped: `text` is the key. Figure:
    // where it stands (ZtOdPdsKeyPlace).
    kUnknownKey,
    // The input ends inside the block `text`, which is lost. Figures: 1 if it ends inside
    // a counted text, then that text's count; in a tag file, the lines beginning "tag{"
    // from the block on that were never read as tags. `related` is where the counted
    // text began.
    kUnclosedBlock,
    // A closing brace with no block open ends the reading of a tag file. Figure: the lines
    // beginning "tag{" from here on that were never read as tags.
    kStrayBrace,

    // --- Tag files ---
    // A key that is read but whose value has no effect (`up`, whose value is not read).
    kIgnoredKey,
    // A viewpoint key whose value does not scan; the value before it stays. `text` is the
    // key. Figure: the numbers it needs.
    kStickyValue,
    // A viewpoint key that no tag's view takes. Figure: 0 when a later key of the same
    // name (at `related`) replaces it first, 1 when no tag follows it.
    kStickyUnused,
    // A tag dropped because its first line does not scan. Figure: the values that did
    // scan of the seven. `text` is the tag's first line.
    kTagHead,
    // A tag dropped because its third value is not 0. Figure: that value.
    kTagKind,
    // A tag dropped because its `p` does not hold three numbers. `text` is the value.
    kTagPoint,
    // A tag dropped for want of a body. Figure: 0 no `text` block, 1 a `text` without a
    // line end, 2 an empty body.
    kTagText,
    // A tag dropped because the viewpoint gives no valid camera. Figures: the view angle
    // in whole degrees, and how many tags after it were dropped for the same reason
    // before a valid camera came; `related` is where the angle was set, if in a file.
    kTagCamera,
    // A tag dropped because the CRs its line ends add would pass its file's budget.
    // Figure: the budget.
    kTagLineEnds,
    // A counted text whose count does not cover its body: the body took in the tags behind
    // it, braces behind the count are read as braces, or a brace cut the body short and
    // `text` is what was left of it behind the brace. Figures: the count, the body's length,
    // and the lines of the body that begin "tag{" (tags taken in as text).
    kTextCount,
    // A tag identifier used before, at `related`; both tags come in. Figure: the
    // identifier.
    kTagIdRepeated,
    // Fact: a tag file was read to its end. Figures: its blocks of a known top-level key,
    // and of them its `tag` blocks.
    kFactBlocks,

    // --- Display-set files ---
    // A line of a definition that begins with no keyword, ignored. `text` is the line.
    kNotStatement,
    // A FIND in a scope that has one already (at `related`), dropped.
    kSecondFind,
    // A statement dropped for its criterion: `text` is the criterion text. Figure: 0 no
    // criterion, 1 a word that names no criterion, 2 a list that names nothing.
    kCriterion,
    // The one character behind a keyword or criterion word is skipped unread, and it is
    // not a blank. `text` is that character.
    kSeparator,
    // Text behind END FIND, ignored.
    kEndFindText,
    // A statement after the definition's outermost scope was closed, ignored. Figure: 1
    // for an END FIND.
    kNoScope,
    // A list entry of Level or Color that is not wholly a number. `text` is the entry.
    // Figures: the number it is read as, and 0 when it holds no number, 1 when it only
    // begins with one, 2 when the number lies outside 32 bits.
    kListNumber,
    // A Data criterion whose attribute is not what stands before the operator: the two
    // characters before the operator are taken as separators. `text` is the attribute
    // read. Figure: the non-blank characters lost, or 0 for an attribute that is empty or
    // keeps a blank at an end.
    kDataAttribute,
    // A Data criterion whose value is not what stands behind the operator. Figure: 0 the
    // character behind the operator, not a blank, is taken as a separator (`text` is the
    // value read), 1 there is no value.
    kDataValue,
    // A Data criterion's operator is not what its writer meant. Figure: 0 no operator at
    // all (the condition never matches), 1 an operator that stands later was taken (`text`
    // the one taken, at `at`), 2 a wildcard in the value makes any operator a pattern match.
    kDataOperator,
    // A reference to a display set that gives nothing. `text` is the name. Figures: 0 no
    // set of that name in the section (and 1 when one whose name differs in case alone
    // begins at `related`), 1 the set comes later (at `related`), 2 the set refers to
    // itself, 3 the set (at `related`) yields nothing.
    kSetReference,
    // A display set that yields no selection set; `at` is its "<Display Set>" line.
    // Figures: ZtOdPdsEmptySet, and for kZtOdPdsSetFileBudget the sets abandoned from it
    // on in its section, itself among them.
    kSetEmpty,
    // A header line read otherwise than written. Figure: 0 no number (its first word is
    // taken as the number), 1 no blank (the set has no name), 2 no header at all, 3 a name
    // used by an earlier set (at `related`), which references no longer find.
    kSetName,
    // A section line that is not "[DEFINITION SECTION]" but looks meant as one; the
    // section is not read. `text` is the line.
    kSection,
    // A "<Display Set>" line outside any definition section, not read.
    kSetOutsideSection,
    // A line that looks meant as "<Display Set>" or "<Definition>" but is not one, and is
    // read as an ordinary line. `text` is the line.
    kMarkerLine,
    // An angle line other than "<Definition>" in a set: the lines behind it are ignored
    // up to the next "<Definition>". Figure: how many were.
    kIgnoredLines,
    // Fact: the first line with text outside any section, and the first such line with a
    // brace. `text` is the line.
    kFactOutsideSection,
    // Fact: a section line was read. `text` is the line.
    kFactSection,

    // --- Control files ---
    // The file is no control file. Figure: 0 no block begins in it, 1 its first block is
    // `text`. `related` is a closing brace before the first block, if any.
    kNotControlFile,
    // A number block with another count of numbers than it takes. `text` is the key.
    // Figures: the numbers it takes, the numbers found (up to one more than it takes).
    kNumberCount,
    // A master unit that names no unit; metres are taken. `text` is the value.
    kUnknownUnit,
    // An old_origin that has no effect. Figure: 1 it comes after the new_origin it would
    // have moved, 2 no new_origin follows it.
    kOriginOrder,
    // A block whose value a later block of the same key (at `related`) replaces before it
    // is used. `text` is the key.
    kOverridden,
    // A `dgn` block that adds no model, or whose `name` is not read. Figure: 0 no `name`,
    // 1 an empty name, 2 a second `name` (ignored). Its other blocks are unknown keys.
    kModelName,
    // Blocks or text behind the end of the enclosing block, never read. `text` is the
    // first key, or the text.
    kTextAfterEnd,
    // Fact: a `dgn` block names a model. `text` is its name, `at` where it stands.
    kFactModel,
};

// Where an unknown key stands, the figure of ZtOdPdsCheck::kUnknownKey.
enum ZtOdPdsKeyPlace : int {
    kZtOdPdsKeyTagFile = 0,     // at the top of a tag file
    kZtOdPdsKeyInTag = 1,       // inside a `tag` block
    kZtOdPdsKeyControlFile = 2, // inside DesignReview_Control
    kZtOdPdsKeyInModel = 3,     // inside a `dgn` block
};

// Why a display set yields no selection set, the figure of ZtOdPdsCheck::kSetEmpty.
enum ZtOdPdsEmptySet : int {
    kZtOdPdsSetNoDefinition = 0, // it has no "<Definition>" line
    kZtOdPdsSetNoFind = 1,       // its outermost scope has no FIND
    kZtOdPdsSetNothing = 2,      // its rule evaluates to nothing
    kZtOdPdsSetIncomplete = 3,   // a reference in it gave nothing
    kZtOdPdsSetScopeDepth = 4,   // more scopes open at once than the limit
    kZtOdPdsSetTreeDepth = 5,    // its expression deeper than the limit
    kZtOdPdsSetConditions = 6,   // more conditions than the limit
    kZtOdPdsSetRewrite = 7,      // its rewriting passed its budget
    kZtOdPdsSetFileBudget = 8,   // the file's sets together passed their budget
};

// One thing the library ignored, dropped, cut or reinterpreted: where it stands, the
// text in question and the figures that say what became of it. Texts point into the
// reader's memory and live only for the call that reports them.
struct ZtOdPdsDiagnostic {
    ZtOdPdsCheck check = ZtOdPdsCheck::kStrayText;
    const wchar_t* file = nullptr;
    ZtOdPdsSourcePosition at;
    std::wstring_view text;
    std::int64_t figures[3] = {};
    // A second place the diagnostic refers to, if any; its file is `file` unless given.
    const wchar_t* relatedFile = nullptr;
    ZtOdPdsSourcePosition related;
};

// Where the library says what it does with its input. Everything that takes one takes
// it optionally: the plug-in module installs none, and without one the readers take
// their plain paths and report nothing.
class ZtOdPdsDiagnostics {
public:
    virtual void Report(const ZtOdPdsDiagnostic& diagnostic) = 0;

protected:
    ~ZtOdPdsDiagnostics() = default;
};

// Reports to `sink` one diagnostic of `file`, with up to three figures and a related
// place in the same file.
inline void ZtOdPdsReport(ZtOdPdsDiagnostics& sink, ZtOdPdsCheck check, const wchar_t* file,
                          ZtOdPdsSourcePosition at, std::wstring_view text = {},
                          std::initializer_list<std::int64_t> figures = {},
                          ZtOdPdsSourcePosition related = {}) {
    ZtOdPdsDiagnostic diagnostic;
    diagnostic.check = check;
    diagnostic.file = file;
    diagnostic.at = at;
    diagnostic.text = text;
    std::size_t i = 0;
    for (const std::int64_t figure : figures)
        if (i < 3)
            diagnostic.figures[i++] = figure;
    diagnostic.related = related;
    sink.Report(diagnostic);
}
