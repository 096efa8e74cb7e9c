#include "check/ControlWording.h"

#include "check/Wording.h"

#include <string>

namespace {

// What a file whose first block is `name` most likely is.
std::string KindOfFirstBlock(std::wstring_view name) {
    if (Lowered(name) == L"designreview_control")
        return "names are compared exactly, capitals counting";
    for (const wchar_t* key :
         {L"tag", L"target", L"eye", L"up", L"persp_ang", L"clip_near", L"clip_far", L"file"})
        if (name == key)
            return "it looks like a tag file: check it with --as tag";
    return "a control file is one block, DesignReview_Control{...}, around the others";
}

} // namespace

Finding DescribeNotControlFile(const ZtOdPdsDiagnostic& d) {
    Finding finding =
        d.figures[0] == 0
            ? MakeFinding(d, "file-kind", true, "this is not a control file: no block begins in it",
                          "a control file is one block, DesignReview_Control{...}, around the "
                          "others; nothing is read")
            : MakeFinding(d, "file-kind", true,
                          "this is not a control file: its first block is " + Quoted(d.text) +
                              ", not 'DesignReview_Control'",
                          KindOfFirstBlock(d.text));
    finding.severity = Severity::kError;
    Relate(finding, d, "a closing brace with no block open comes before the first block");
    return finding;
}

Finding DescribeNumberCount(const ZtOdPdsDiagnostic& d) {
    const std::int64_t needs = d.figures[0];
    const std::int64_t found = d.figures[1];
    const std::string key = Quoted(d.text);
    if (found < needs)
        return MakeFinding(d, "number-count", true,
                           key + " needs " + std::to_string(needs) + " numbers, and only " +
                               std::to_string(found) + " can be read",
                           "the block is not read: the " + key + " that stood before stays");
    return MakeFinding(d, "number-count", false,
                       key + " takes " + std::to_string(needs) + " numbers, and more follow",
                       "the numbers behind the first " + std::to_string(needs) + " are ignored");
}

Finding DescribeUnknownUnit(const ZtOdPdsDiagnostic& d) {
    return MakeFinding(d, "unit", false, "unknown master unit " + Quoted(d.text),
                       "metres are taken; the units are m, cm, mm, ft (or '), in (or \"), yd, "
                       "km, mi, um, mil and ui");
}

Finding DescribeOriginOrder(const ZtOdPdsDiagnostic& d) {
    // A new_origin with no old_origin before it is measured from 0 0 0, as its author
    // most likely meant; only an old_origin that can have no effect is told.
    if (d.figures[0] == 1)
        return MakeFinding(d, "origin-order", false,
                           "this old_origin comes after the new_origin it would move from",
                           "it has no effect: the shift is taken when new_origin is read");
    return MakeFinding(d, "origin-order", false,
                       "this old_origin has no effect: no new_origin follows it",
                       "the shift is taken when new_origin is read, from the old_origin before it");
}

Finding DescribeOverridden(const ZtOdPdsDiagnostic& d) {
    Finding finding = MakeFinding(d, "overridden", false,
                                  "this " + Quoted(d.text) + " is replaced by a later one",
                                  "only the last one counts");
    Relate(finding, d, "the " + Quoted(d.text) + " that counts");
    return finding;
}

Finding DescribeModelName(const ZtOdPdsDiagnostic& d) {
    switch (d.figures[0]) {
    case 0:
        return MakeFinding(d, "model-name", true, "this dgn block has no name{} block",
                           "it adds no model");
    case 1:
        return MakeFinding(d, "model-name", true, "the model's name is empty",
                           "the reference loads nothing");
    default:
        return MakeFinding(d, "model-name", false, "a second name in one dgn block is ignored",
                           "only the first name of a dgn block counts");
    }
}

Finding DescribeTextAfterEnd(const ZtOdPdsDiagnostic& d) {
    if (d.text.empty())
        return MakeFinding(d, "after-end", false,
                           "text behind the end of DesignReview_Control is never read");
    return MakeFinding(d, "after-end", true,
                       Quoted(d.text) + " stands behind the end of DesignReview_Control",
                       "nothing behind the enclosing block's closing brace is read");
}
