#include "check/TagWording.h"

#include "check/Wording.h"
#include "ztutil/ZtUWideString.h"

#include <string>

namespace {

const char* const kDropped = "the tag is dropped";

} // namespace

Finding DescribeIgnoredKey(const ZtOdPdsDiagnostic& d) {
    return MakeFinding(d, "ignored-key", false, "the value of " + Quoted(d.text) + " is not read",
                       "views are always upright along +Z");
}

Finding DescribeStickyValue(const ZtOdPdsDiagnostic& d) {
    const std::string needs = d.figures[0] == 1
                                  ? "one whole number"
                                  : Counted(d.figures[0], "whole number", "whole numbers");
    return MakeFinding(d, "viewpoint-value", false,
                       Quoted(d.text) + " needs " + needs + ", which this value does not hold",
                       "the value is not read: the " + Quoted(d.text) +
                           " that stood before stays in force");
}

Finding DescribeStickyUnused(const ZtOdPdsDiagnostic& d) {
    if (d.figures[0] == 0) {
        Finding finding = MakeFinding(d, "viewpoint-unused", false,
                                      "this " + Quoted(d.text) +
                                          " is never used: a later one "
                                          "replaces it before any tag",
                                      "viewpoint keys take effect at the next tag");
        Relate(finding, d, "the " + Quoted(d.text) + " that replaces it");
        return finding;
    }
    return MakeFinding(d, "viewpoint-unused", false,
                       "this " + Quoted(d.text) + " is never used: no tag follows it",
                       "viewpoint keys take effect at the next tag");
}

Finding DescribeTagHead(const ZtOdPdsDiagnostic& d) {
    static const char* const kValues[] = {"the identifier", "the 1", "the 0", "the 0.0",
                                          "the point x y z"};
    const std::int64_t read = d.figures[0];
    if (ZtUTrimmedView(d.text).empty())
        return MakeFinding(d, "tag-head", true,
                           "the tag's first line is empty: it must hold its identifier, 1, 0, "
                           "0.0 and its point x y z",
                           kDropped);
    return MakeFinding(d, "tag-head", true,
                       "the tag's first line " + Quoted(d.text) +
                           " does not hold seven numbers (identifier, 1, 0, 0.0, x, y, z): " +
                           kValues[read < 0 || read > 4 ? 4 : read] + " is missing or no number",
                       kDropped);
}

Finding DescribeTagKind(const ZtOdPdsDiagnostic& d) {
    return MakeFinding(d, "tag-head", true,
                       "the tag's third value is " + std::to_string(d.figures[0]) +
                           ": only tags with 0 there are read",
                       kDropped);
}

Finding DescribeTagPoint(const ZtOdPdsDiagnostic& d) {
    return MakeFinding(d, "tag-point", true,
                       "p needs three whole numbers, not " + Quoted(ZtUTrimmedView(d.text)),
                       "the whole tag is dropped, its text too");
}

Finding DescribeTagText(const ZtOdPdsDiagnostic& d) {
    switch (d.figures[0]) {
    case 0:
        return MakeFinding(d, "tag-text", true, "the tag has no text{} block", kDropped);
    case 1:
        return MakeFinding(d, "tag-text", true, "the tag's text has no line end behind its count",
                           "the count stands alone on the text's first line; the tag is dropped");
    default:
        return MakeFinding(d, "tag-text", true, "the tag's text is empty", kDropped);
    }
}

Finding DescribeTagCamera(const ZtOdPdsDiagnostic& d) {
    const std::int64_t after = d.figures[1];
    Finding finding = MakeFinding(
        d, "tag-camera", true,
        "the viewpoint gives no camera: its view angle is " + std::to_string(d.figures[0]) +
            " degrees, and a view needs one above 0 and below 180",
        after == 0 ? std::string(kDropped)
                   : "the tag and the " + Counted(after, "tag", "tags") +
                         " after it are dropped until a viewpoint with a valid camera");
    Relate(finding, d, "the view angle is set here");
    return finding;
}

Finding DescribeTagLineEnds(const ZtOdPdsDiagnostic& d) {
    return MakeFinding(d, "line-end-budget", true,
                       "the tag's text would take the file's comments past their budget of line "
                       "ends",
                       "the line ends of one file's comments may add at most " +
                           std::to_string(d.figures[0]) + " characters; the tag is dropped");
}

Finding DescribeTextCount(const ZtOdPdsDiagnostic& d) {
    const std::int64_t count = d.figures[0];
    const std::int64_t length = d.figures[1];
    const std::int64_t swallowed = d.figures[2];
    if (swallowed > 0)
        return MakeFinding(d, "text-count", true,
                           "the text's count " + std::to_string(count) +
                               " runs past its body: the text takes in the " +
                               Counted(swallowed, "tag", "tags") + " behind it",
                           "they come in as part of this tag's text, not as tags");
    if (!d.text.empty())
        return MakeFinding(d, "text-count", true,
                           "a brace ends the text's body early: its count is " +
                               std::to_string(count) + ", and the body read has " +
                               Counted(length, "character", "characters"),
                           "the rest, " + Quoted(d.text) +
                               ", is ignored; the count must be the number of the body's "
                               "characters, or a brace in the body ends it");
    return MakeFinding(d, "text-count", false,
                       "the text's count is " + std::to_string(count) + ", but its body has " +
                           Counted(length, "character", "characters") +
                           ", and braces behind the counted part are read as braces",
                       "a brace there can end the text early or leave the tag open; the count is "
                       "the number of the body's characters");
}

Finding DescribeTagIdRepeated(const ZtOdPdsDiagnostic& d) {
    const std::string id = std::to_string(static_cast<std::uint64_t>(d.figures[0]));
    Finding finding = MakeFinding(d, "tag-id", false, "tag id " + id + " is used before",
                                  "both tags come in, as two comments with the same id");
    Relate(finding, d, "tag id " + id + " is first used here");
    return finding;
}
