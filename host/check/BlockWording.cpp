#include "check/BlockWording.h"

#include "check/Wording.h"
#include "ztutil/ZtUWideString.h"

#include <algorithm>
#include <array>
#include <string>

namespace {

struct KeyPlace {
    std::array<const wchar_t*, 8> keys; // null-ended
    const char* what;                   // where they stand
};

// The keys read at each place of ZtOdPdsKeyPlace.
const KeyPlace kKeyPlaces[] = {
    {{L"tag", L"target", L"eye", L"up", L"persp_ang", L"clip_near", L"clip_far", L"file"},
     "a tag file holds tag, target, eye, up, persp_ang, clip_near, clip_far and file blocks"},
    {{L"p", L"text", L"l", nullptr}, "a tag holds p, text and l blocks"},
    {{L"dgn", L"transform", L"old_origin", L"new_origin", L"master_unit", nullptr},
     "a control file holds dgn, transform, old_origin, new_origin and master_unit blocks"},
    {{L"name", nullptr}, "only the first name{} of a dgn block is read"},
};

// The known key that `key` differs from only in case, or null.
const wchar_t* SameButForCase(const KeyPlace& place, std::wstring_view key) {
    const std::wstring lowered = Lowered(key);
    for (const wchar_t* known : place.keys)
        if (known && lowered == known)
            return known;
    return nullptr;
}

// The known key that ends `name` behind a blank: a block that does not begin its line
// takes the text before it into its name.
const wchar_t* JoinedKey(const KeyPlace& place, std::wstring_view name) {
    const std::size_t blank = name.find_last_of(L" \t");
    if (blank == std::wstring_view::npos)
        return nullptr;
    const std::wstring_view last = name.substr(blank + 1);
    for (const wchar_t* known : place.keys)
        if (known && last == known)
            return known;
    return nullptr;
}

} // namespace

Finding DescribeNulCut(const ZtOdPdsDiagnostic& d) {
    const std::string lost = Counted(d.figures[1], "character", "characters");
    switch (d.figures[0]) {
    case 0:
        return MakeFinding(d, "nul", true, "a NUL character cuts this block's name",
                           "the name is read as " + Quoted(ZtUTrimmedView(d.text)) + ", and the " +
                               lost + " behind the NUL are lost");
    case 1:
        return MakeFinding(d, "nul", true, "a NUL character ends the block's value here",
                           "the " + lost + " behind it, up to the block's closing brace, are lost");
    default:
        return MakeFinding(d, "nul", true, "a NUL character cuts this line",
                           "the line is read as " + Quoted(d.text) + ", and the " + lost +
                               " behind the NUL are lost");
    }
}

Finding DescribeStrayText(const ZtOdPdsDiagnostic& d) {
    return MakeFinding(d, "stray-text", false,
                       "text outside any block is ignored: " + Quoted(ZtUTrimmedView(d.text)),
                       "only blocks of the form name{value} are read, and a block's name "
                       "stands on the line of its opening brace");
}

Finding DescribeLineSplit(const ZtOdPdsDiagnostic& d) {
    return MakeFinding(d, "long-line", true,
                       "this line is longer than " + std::to_string(d.figures[0]) + " characters",
                       "lines are read in pieces of " + std::to_string(d.figures[0]) +
                           " characters: the text from here on is read as a line of its own");
}

Finding DescribeLastLineDropped(const ZtOdPdsDiagnostic& d) {
    return MakeFinding(d, "last-line", true,
                       "the last line, " + Quoted(d.text) + ", is one character without a line end",
                       "it is not read");
}

Finding DescribeUnknownKey(const ZtOdPdsDiagnostic& d) {
    const int where = static_cast<int>(std::clamp<std::int64_t>(d.figures[0], 0, 3));
    const KeyPlace& place = kKeyPlaces[where];
    const std::wstring_view key = d.text;
    if (key.empty())
        return MakeFinding(d, "unknown-key", false, "a block without a name is skipped",
                           "a block's name stands on the same line as its opening brace");
    if (where == kZtOdPdsKeyTagFile && (key == L"p" || key == L"text" || key == L"l"))
        return MakeFinding(d, "unknown-key", false, Quoted(key) + " outside a tag is skipped",
                           "p, text and l belong inside a tag{} block");
    if (where == kZtOdPdsKeyInModel)
        return MakeFinding(d, "unknown-key", false, Quoted(key) + " in a dgn block is not read",
                           place.what);
    if (const wchar_t* known = JoinedKey(place, key))
        return MakeFinding(d, "unknown-key", true,
                           "the block " + Quoted(known) +
                               " does not begin its line, so its name "
                               "is read as " +
                               Quoted(key),
                           "the block is skipped: a block begins a line of its own");
    if (const wchar_t* known = SameButForCase(place, key)) {
        // A content block lost to a capital letter is data lost.
        const bool content =
            std::wstring_view(known) == L"tag" || std::wstring_view(known) == L"dgn" ||
            std::wstring_view(known) == L"text" || std::wstring_view(known) == L"p";
        return MakeFinding(d, "unknown-key", content, "unknown key " + Quoted(key) + " is skipped",
                           "keys are compared exactly: did you mean " + Quoted(known) + "?");
    }
    return MakeFinding(d, "unknown-key", false, "unknown key " + Quoted(key) + " is skipped",
                       place.what);
}

Finding DescribeUnclosedBlock(const ZtOdPdsDiagnostic& d) {
    const std::wstring_view name = d.text;
    const std::int64_t lost = d.figures[2];
    std::string what = "the block is lost";
    if (name == L"tag" && lost > 0)
        what = lost == 1
                   ? "the tag is lost"
                   : "the tag and the " + Counted(lost - 1, "tag", "tags") + " after it are lost";
    else if (lost > 0)
        what += ", and with it the " + Counted(lost, "tag", "tags") + " after it";
    if (d.figures[0] != 0) {
        const std::int64_t count = d.figures[1];
        Finding finding =
            count < 2 ? MakeFinding(d, "text-count", true,
                                    "the count " + std::to_string(count) +
                                        " of this block's text is below 2: everything behind it "
                                        "is taken as text, to the end of the file",
                                    what)
                      : MakeFinding(d, "text-count", true,
                                    "the count " + std::to_string(count) +
                                        " of this block's text runs past the end of the file",
                                    what);
        Relate(finding, d, "the count stands here");
        return finding;
    }
    if (name == L"DesignReview_Control")
        return MakeFinding(d, "unclosed-block", false,
                           "DesignReview_Control is not closed: its closing brace is missing",
                           "the blocks before the end of the file are read all the same");
    return MakeFinding(
        d, "unclosed-block", true,
        "the file ends inside the block " + Quoted(name) + ": its closing brace is missing", what);
}

Finding DescribeStrayBrace(const ZtOdPdsDiagnostic& d) {
    const std::int64_t lost = d.figures[0];
    return MakeFinding(d, "stray-brace", lost > 0,
                       "a closing brace with no block open ends the reading of the file",
                       lost > 0 ? "the rest of the file is not read, with its " +
                                      Counted(lost, "tag", "tags")
                                : "the rest of the file is not read");
}
