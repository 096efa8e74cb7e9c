#include "check/CheckCatalog.h"

#include "check/BlockWording.h"
#include "check/ControlWording.h"
#include "check/RuleWording.h"
#include "check/TagWording.h"

#include <algorithm>

namespace {

constexpr CheckKind kKinds[] = {
    {"after-end", "blocks behind the end of DesignReview_Control, never read"},
    {"criterion", "statements dropped for a missing or unknown criterion"},
    {"data-attribute", "Data criteria whose attribute loses characters or keeps blanks"},
    {"data-operator", "Data criteria whose operator is missing or taken otherwise"},
    {"data-value", "Data criteria whose value loses its first character"},
    {"empty-set", "display sets that yield no selection set"},
    {"encoding", "files read as Windows-1252 because they are not UTF-8"},
    {"end-find", "text behind END FIND"},
    {"file-kind", "files that are not of the kind checked"},
    {"ignored-key", "keys whose value is not read"},
    {"ignored-lines", "lines of a display set ignored behind an angle line"},
    {"last-line", "a last line of one character, not read"},
    {"limit", "display sets abandoned at the limits of the rule language"},
    {"line-end-budget", "tags dropped over their file's budget of line ends"},
    {"list-number", "Level and Color entries that are not wholly a number"},
    {"long-line", "lines longer than the line reader takes at once"},
    {"marker", "lines meant as <Display Set> or <Definition> that are not"},
    {"model-file", "models that are missing or not DGN V7 design files"},
    {"model-name", "dgn blocks that name no model, or a second one"},
    {"nul", "NUL characters that cut names, values or lines"},
    {"number-count", "transform and origin blocks with too few or too many numbers"},
    {"origin-order", "an old_origin that no new_origin takes"},
    {"overridden", "blocks that a later one replaces before they are used"},
    {"scope", "statements outside the definition's outermost scope"},
    {"second-find", "a second FIND in one scope, dropped"},
    {"section", "sections meant as [DEFINITION SECTION] that are not, and sets outside one"},
    {"separator", "a character other than a blank skipped behind a keyword"},
    {"set-name", "display-set headers read otherwise than written"},
    {"set-reference", "references to later, unknown, own or empty display sets"},
    {"statement", "lines of a definition that begin with no keyword"},
    {"stray-brace", "a closing brace that ends the reading of a tag file"},
    {"stray-text", "text outside any block"},
    {"tag-camera", "tags dropped for a viewpoint without a valid camera"},
    {"tag-head", "tags dropped for a first line that does not scan or is not of kind 0"},
    {"tag-id", "tag identifiers used twice"},
    {"tag-point", "tags dropped for a p without three numbers"},
    {"tag-text", "tags dropped for want of text"},
    {"text-count", "counted texts whose count does not match their body"},
    {"unclosed-block", "blocks the file ends in"},
    {"unit", "unknown master units"},
    {"unknown-key", "blocks of an unknown key, skipped"},
    {"viewpoint-unused", "viewpoint keys that no tag takes"},
    {"viewpoint-value", "viewpoint keys whose value does not scan"},
};

} // namespace

std::span<const CheckKind> CheckKinds() {
    return kKinds;
}

const CheckKind* FindCheckKind(std::string_view name) {
    const auto found = std::find_if(std::begin(kKinds), std::end(kKinds),
                                    [&](const CheckKind& kind) { return name == kind.name; });
    return found == std::end(kKinds) ? nullptr : found;
}

std::optional<Finding> DescribeDiagnostic(const ZtOdPdsDiagnostic& d) {
    using C = ZtOdPdsCheck;
    switch (d.check) {
    case C::kNulCut:
        return DescribeNulCut(d);
    case C::kStrayText:
        return DescribeStrayText(d);
    case C::kLineSplit:
        return DescribeLineSplit(d);
    case C::kLastLineDropped:
        return DescribeLastLineDropped(d);
    case C::kUnknownKey:
        return DescribeUnknownKey(d);
    case C::kUnclosedBlock:
        return DescribeUnclosedBlock(d);
    case C::kStrayBrace:
        return DescribeStrayBrace(d);
    case C::kIgnoredKey:
        return DescribeIgnoredKey(d);
    case C::kStickyValue:
        return DescribeStickyValue(d);
    case C::kStickyUnused:
        return DescribeStickyUnused(d);
    case C::kTagHead:
        return DescribeTagHead(d);
    case C::kTagKind:
        return DescribeTagKind(d);
    case C::kTagPoint:
        return DescribeTagPoint(d);
    case C::kTagText:
        return DescribeTagText(d);
    case C::kTagCamera:
        return DescribeTagCamera(d);
    case C::kTagLineEnds:
        return DescribeTagLineEnds(d);
    case C::kTextCount:
        return DescribeTextCount(d);
    case C::kTagIdRepeated:
        return DescribeTagIdRepeated(d);
    case C::kNotStatement:
        return DescribeNotStatement(d);
    case C::kSecondFind:
        return DescribeSecondFind(d);
    case C::kCriterion:
        return DescribeCriterion(d);
    case C::kSeparator:
        return DescribeSeparator(d);
    case C::kEndFindText:
        return DescribeEndFindText(d);
    case C::kNoScope:
        return DescribeNoScope(d);
    case C::kListNumber:
        return DescribeListNumber(d);
    case C::kDataAttribute:
        return DescribeDataAttribute(d);
    case C::kDataValue:
        return DescribeDataValue(d);
    case C::kDataOperator:
        return DescribeDataOperator(d);
    case C::kSetReference:
        return DescribeSetReference(d);
    case C::kSetEmpty:
        return DescribeSetEmpty(d);
    case C::kSetName:
        return DescribeSetName(d);
    case C::kSection:
        return DescribeSection(d);
    case C::kSetOutsideSection:
        return DescribeSetOutsideSection(d);
    case C::kMarkerLine:
        return DescribeMarkerLine(d);
    case C::kIgnoredLines:
        return DescribeIgnoredLines(d);
    case C::kNotControlFile:
        return DescribeNotControlFile(d);
    case C::kNumberCount:
        return DescribeNumberCount(d);
    case C::kUnknownUnit:
        return DescribeUnknownUnit(d);
    case C::kOriginOrder:
        return DescribeOriginOrder(d);
    case C::kOverridden:
        return DescribeOverridden(d);
    case C::kModelName:
        return DescribeModelName(d);
    case C::kTextAfterEnd:
        return DescribeTextAfterEnd(d);
    case C::kFactBlocks:
    case C::kFactOutsideSection:
    case C::kFactSection:
    case C::kFactModel:
        break;
    }
    return std::nullopt;
}
