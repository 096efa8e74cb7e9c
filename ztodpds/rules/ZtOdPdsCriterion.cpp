#include "rules/ZtOdPdsCriterion.h"

#include "plugin/ZtOdPdsComponents.h"
#include "readers/ZtOdPdsDstContext.h"
#include "rules/ZtOdPdsCriterionChecks.h"
#include "rules/ZtOdPdsDisplaySet.h"
#include "rules/ZtOdPdsDisplaySetDict.h"
#include "rules/ZtOdPdsOperation.h"
#include "rules/ZtOdPdsRuleReporter.h"
#include "rules/ZtOdPdsStatement.h"
#include "ztplugin/ZtOpFindCondition.h"
#include "ztutil/ZtUResource.h"
#include "ztutil/ZtUSysString.h"

#include <algorithm>
#include <climits>
#include <cstdint>
#include <cwchar>
#include <iterator>

namespace {

// Flags of the conditions that criteria make.
constexpr unsigned kDataConditionFlags =
    ZtOpFindConditionFlags::kIgnoreCase | ZtOpFindConditionFlags::kFlag8;
constexpr unsigned kListConditionFlags =
    ZtOpFindConditionFlags::kIgnoreCase | ZtOpFindConditionFlags::kFlag4;
static_assert(kDataConditionFlags == 9 && kListConditionFlags == 5);

ZtUNameDict* NamesOf(ZtOdPdsDstContext* context) {
    return context ? context->names : nullptr;
}

// A resource text, never null.
const wchar_t* Resource(const char* key) {
    const wchar_t* text = ZtUResource::FindString(key, nullptr);
    return text ? text : L"";
}

// Statements joined into (((e0 OR e1) OR e2) ...), deep on the left; null for no entries.
// An entry may be null: the operation that takes it has a null operand then.
template <class MakeEntry> ZtOdPdsNode* MakeChain(std::size_t count, MakeEntry makeEntry) {
    if (count == 0)
        return nullptr;
    ZtOdPdsUnheldNode chain(makeEntry(0));
    for (std::size_t i = 1; i < count; ++i) {
        ZtOdPdsNode* entry = makeEntry(i);
        chain.Reset(ZtOdPdsOperation::Make(chain.Take(), ZtOdPdsOperation::kOr, entry));
    }
    return chain.Take();
}

ZtOdPdsStatement* MakeListStatement(ZtOdPdsDstContext* context, int standardName,
                                    const wchar_t* name, const wchar_t* value) {
    ZtUData data;
    data.SetWideString(value);
    const ZtOpFindCondition condition(
        nullptr, ZtUName::StandardName(standardName, NamesOf(context)),
        static_cast<ZtOpFindConditionFlags::Enum>(kListConditionFlags), ZtOpFindConditionOp::kEqual,
        data);
    return new ZtOdPdsStatement(name, condition);
}

// A level or colour: the value is the resource text, a blank and the number; the name is
// `prefix` and the number.
ZtOdPdsStatement* MakeNumberStatement(ZtOdPdsDstContext* context, int standardName,
                                      const char* resourceKey, const wchar_t* namePrefix,
                                      std::int32_t number) {
    ZtUWideStringBuffer value;
    value.Format(L"%s %d", Resource(resourceKey), number);
    ZtUWideStringBuffer name;
    name.Format(L"%s%d", namePrefix, number);
    return MakeListStatement(context, standardName, name.GetString(), value.GetString());
}

// Each entry trimmed; `noted(index, offset)` hears where each entry's text begins.
template <class Noted>
void ParseTrimmedList(const wchar_t* text, ZtUOwnPtrVector<ZtUWideString>* out, Noted noted) {
    ZtUWideStringTokeniser tokeniser(text, L",");
    ZtUWideStringBuffer token;
    for (std::size_t start; tokeniser.MoreTokens();) {
        start = tokeniser.GetPosition();
        if (!tokeniser.NextToken(&token))
            break;
        std::size_t lead = 0;
        while (lead < token.GetLength() && ZtUIsWhiteSpace(token.CharAtPos(lead)))
            ++lead;
        noted(out->Size(), start + lead);
        token.Trim();
        out->PushBack(new ZtUWideString(token.GetString()));
    }
}

// Each entry read as a decimal number as far as it goes, blanks before it skipped: no
// number gives 0.
void ParseNumberList(const wchar_t* text, ZtUInt32Vector* out, const ZtOdPdsCriterionSpot* spot) {
    ZtUWideStringTokeniser tokeniser(text, L",");
    ZtUWideStringBuffer token;
    for (std::size_t start; tokeniser.MoreTokens();) {
        start = tokeniser.GetPosition();
        if (!tokeniser.NextToken(&token))
            break;
        out->PushBack(ZtOdPdsParseInt32(token.GetString()));
        if (spot)
            ZtOdPdsCheckNumberEntry(*spot, token.Str(), start);
    }
    if (spot && out->Size() == 0)
        ZtOdPdsCheckEmptyList(*spot, text);
}

bool StartsWith(const wchar_t* text, const wchar_t* word, std::size_t* wordLength) {
    const std::size_t length = ZtUSysString::WideStrlen(word);
    if (ZtUSysString::WideStrlen(text) < length ||
        ZtUSysString::WideStrncmp(text, word, length) != 0)
        return false;
    *wordLength = length;
    return true;
}

} // namespace

std::int32_t ZtOdPdsParseInt32(const wchar_t* text) {
    const long value = std::wcstol(text, nullptr, 10);
    return static_cast<std::int32_t>(std::clamp<long>(value, INT32_MIN, INT32_MAX));
}

ZtUComponent& ZtOdPdsCriterion::GetComponent() {
    static ZtUComponent component;
    return component;
}

int ZtOdPdsCriterion::StartComponent() {
    return ZtOdPdsStartComponents({{&GetComponent(), "ZtOdPdsCriterion"}});
}

int ZtOdPdsCriterion::EndComponent() {
    return ZtOdPdsEndComponents({&GetComponent()});
}

ZtOdPdsDataCriterion::ZtOdPdsDataCriterion(const wchar_t* text, const ZtOdPdsCriterionSpot* spot)
    : ZtOdPdsCriterion(kData) {
    struct Operator {
        const wchar_t* text;
        int comparison;
    };
    // The first of these that occurs anywhere wins, wherever the others stand.
    static const Operator kOperators[] = {
        {L">=", kGreaterEqual}, {L"<=", kLessEqual}, {L"=", kEqual},
        {L">", kGreater},       {L"<", kLess},
    };
    const ZtUWideStringBuffer whole(text);
    for (const Operator& op : kOperators) {
        const wchar_t* at = whole.Find(op.text, 0);
        if (!at)
            continue;
        const std::size_t index = static_cast<std::size_t>(at - whole.GetString());
        // Two characters before the operator and one behind it are separators.
        ZtUWideStringBuffer part;
        if (index >= 2) {
            whole.ExtractSubString(0, index - 2, &part);
            attribute_.SetString(part.GetString());
        }
        const std::size_t valueStart = index + ZtUSysString::WideStrlen(op.text) + 1;
        if (valueStart < whole.GetLength()) {
            whole.ExtractSubString(valueStart, whole.GetLength() - valueStart, &part);
            value_.SetString(part.GetString());
        }
        const ZtUWideStringBuffer value(value_.GetString());
        comparison_ = value.Find(L"*", 0) || value.Find(L"?", 0) ? kWildcard : op.comparison;
        if (spot)
            ZtOdPdsCheckDataText(*spot, whole.Str(), index, op.text, comparison_);
        return;
    }
    if (spot)
        ZtOdPdsCheckDataText(*spot, whole.Str(), std::wstring_view::npos, {}, comparison_);
}

ZtOdPdsNode* ZtOdPdsDataCriterion::Evaluate(ZtOdPdsDstContext* context) {
    static const ZtOpFindConditionOp::Enum kHostOperators[] = {
        ZtOpFindConditionOp::kNone,     ZtOpFindConditionOp::kEqual,
        ZtOpFindConditionOp::kGreater,  ZtOpFindConditionOp::kGreaterEqual,
        ZtOpFindConditionOp::kLess,     ZtOpFindConditionOp::kLessEqual,
        ZtOpFindConditionOp::kWildcard,
    };
    // One host operator for each comparison, by its number.
    static_assert(std::size(kHostOperators) == kWildcard + 1);
    ZtUNameDict* names = NamesOf(context);
    const ZtUName* category =
        names ? names->Find(Resource("ztlddgn_pds_compdata"), "ZtDgnPDSAttributes") : nullptr;
    const ZtUName* property =
        names ? names->Find(attribute_.GetString(), "ZtDgnPDSAttribute") : nullptr;
    ZtUData data;
    data.SetWideString(value_.GetString());
    const ZtOpFindCondition condition(
        category, property, static_cast<ZtOpFindConditionFlags::Enum>(kDataConditionFlags),
        kHostOperators[comparison_], data);
    ZtUWideStringBuffer name;
    name.Format(L"%s=%s", attribute_.GetString(), value_.GetString());
    return new ZtOdPdsStatement(name.GetString(), condition);
}

ZtOdPdsFileCriterion::ZtOdPdsFileCriterion(const wchar_t* text, const ZtOdPdsCriterionSpot* spot)
    : ZtOdPdsCriterion(kFile) {
    ParseTrimmedList(text, &files_, [](std::size_t, std::size_t) {});
    if (spot && files_.Size() == 0)
        ZtOdPdsCheckEmptyList(*spot, text);
}

ZtOdPdsNode* ZtOdPdsFileCriterion::Evaluate(ZtOdPdsDstContext* context) {
    return MakeChain(files_.Size(), [&](std::size_t i) -> ZtOdPdsNode* {
        const wchar_t* file = files_[i]->GetString();
        return MakeListStatement(context, ZtUName::kStandardSourceFile, file, file);
    });
}

ZtOdPdsLevelCriterion::ZtOdPdsLevelCriterion(const wchar_t* text, const ZtOdPdsCriterionSpot* spot)
    : ZtOdPdsCriterion(kLevel) {
    ParseNumberList(text, &levels_, spot);
}

ZtOdPdsNode* ZtOdPdsLevelCriterion::Evaluate(ZtOdPdsDstContext* context) {
    return MakeChain(levels_.Size(), [&](std::size_t i) -> ZtOdPdsNode* {
        return MakeNumberStatement(context, ZtUName::kStandardLevel, "ztlddgn_level", L"L",
                                   levels_[i]);
    });
}

ZtOdPdsColourCriterion::ZtOdPdsColourCriterion(const wchar_t* text,
                                               const ZtOdPdsCriterionSpot* spot)
    : ZtOdPdsCriterion(kColour) {
    ParseNumberList(text, &colours_, spot);
}

ZtOdPdsNode* ZtOdPdsColourCriterion::Evaluate(ZtOdPdsDstContext* context) {
    return MakeChain(colours_.Size(), [&](std::size_t i) -> ZtOdPdsNode* {
        return MakeNumberStatement(context, ZtUName::kStandardColour, "ztlddgn_mat_colour", L"C",
                                   colours_[i]);
    });
}

ZtOdPdsDisplaySetCriterion::ZtOdPdsDisplaySetCriterion(const wchar_t* text,
                                                       const ZtOdPdsCriterionSpot* spot)
    : ZtOdPdsCriterion(kDisplaySet) {
    ParseTrimmedList(text, &sets_, [&](std::size_t index, std::size_t offset) {
        if (spot)
            spot->reporter->NoteReference(this, index, spot->reporter->At(spot->offset + offset));
    });
    if (spot && sets_.Size() == 0)
        ZtOdPdsCheckEmptyList(*spot, text);
}

// The context is read only for its reporter, which hears what each name found.
ZtOdPdsNode* ZtOdPdsDisplaySetCriterion::Evaluate(ZtOdPdsDstContext* context) {
    ZtOdPdsDisplaySetDict* dict = ZtOdPdsDisplaySetDict::Instance();
    ZtOdPdsRuleReporter* reporter = context ? context->reporter : nullptr;
    return MakeChain(sets_.Size(), [&](std::size_t i) -> ZtOdPdsNode* {
        ZtOdPdsDisplaySet* set = dict->Find(sets_[i]->GetString());
        if (reporter)
            reporter->Resolved(this, i, sets_[i]->Str(), set);
        return set ? set->GetTree() : nullptr;
    });
}

ZtOdPdsCriterion* ZtOdPdsMakeCriterion(const wchar_t* text, const ZtOdPdsCriterionSpot* spot) {
    if (!text || !*text)
        return nullptr;
    std::size_t length = 0;
    // The word is followed by one separator character, which is skipped unread.
    auto rest = [&]() { return text[length] ? text + length + 1 : text + length; };
    // What the criterion's own text hears: where it begins, behind the word's separator.
    ZtOdPdsCriterionSpot restSpot{};
    auto spotOfRest = [&]() -> const ZtOdPdsCriterionSpot* {
        if (!spot)
            return nullptr;
        ZtOdPdsCheckSeparator(*spot, text, length);
        restSpot = {spot->reporter, spot->offset + static_cast<std::size_t>(rest() - text)};
        return &restSpot;
    };
    if (StartsWith(text, L"Data", &length))
        return new ZtOdPdsDataCriterion(rest(), spotOfRest());
    if (StartsWith(text, L"File", &length))
        return new ZtOdPdsFileCriterion(rest(), spotOfRest());
    if (StartsWith(text, L"Level", &length))
        return new ZtOdPdsLevelCriterion(rest(), spotOfRest());
    if (StartsWith(text, L"Color", &length))
        return new ZtOdPdsColourCriterion(rest(), spotOfRest());
    if (StartsWith(text, L"Display Set", &length))
        return new ZtOdPdsDisplaySetCriterion(rest(), spotOfRest());
    return new ZtOdPdsCriterion;
}
