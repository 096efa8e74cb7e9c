#include "app/SavedItemReport.h"

#include "app/JsonWriter.h"
#include "ztplugin/ZtOpSavedItemsElement.h"
#include "ztplugin/ZtOpSelectionSet.h"
#include "ztplugin/ZtOpState.h"
#include "ztutil/ZtUSysString.h"

namespace {

const char* KindName(const ZtOpSavedItem& item) {
    switch (item.GetType()) {
    case ZtOpSavedItem::kTypeView:
        return "view";
    case ZtOpSavedItem::kTypeSelectionSet:
        return "selectionSet";
    case ZtOpSavedItem::kTypeFolder:
        break;
    }
    return "folder";
}

void WriteNameJson(JsonWriter& json, const ZtUName* name) {
    if (!name) {
        json.Null();
        return;
    }
    json.BeginObject(true);
    json.Key("internal");
    json.String(name->GetInternal().Str());
    json.Key("display");
    json.WideString(name->GetDisplay().Str());
    json.EndObject();
}

void WriteDataJson(JsonWriter& json, const ZtUData& value) {
    switch (value.GetType()) {
    case ZtUData::kWideString:
        json.WideString(value.GetWideString());
        return;
    case ZtUData::kBool:
        json.Bool(value.GetBool());
        return;
    case ZtUData::kInt32:
    case ZtUData::kInt64:
        json.Int(value.GetInt64());
        return;
    case ZtUData::kUInt64:
        json.UInt(value.GetUInt64());
        return;
    case ZtUData::kDouble:
        json.Double(value.GetDouble());
        return;
    case ZtUData::kName:
        WriteNameJson(json, value.GetName());
        return;
    case ZtUData::kEmpty:
        break;
    }
    json.Null();
}

void WriteCommentsJson(JsonWriter& json, const ZtOpSavedItem& item) {
    json.Key("comments");
    json.BeginArray();
    const auto& comments = item.GetComments();
    for (std::size_t i = 0; i < comments.Size(); ++i) {
        json.BeginObject(true);
        json.Key("id");
        json.UInt(comments[i]->GetId());
        json.Key("body");
        json.WideString(comments[i]->GetBody().Str());
        json.EndObject();
    }
    json.EndArray();
}

void WriteFindSpecJson(JsonWriter& json, const ZtOpFindSpec* spec) {
    json.BeginObject();
    json.Key("selectAll");
    json.Bool(spec && spec->IsSelectAll());
    json.Key("conditions");
    json.BeginArray();
    for (std::size_t i = 0; spec && i < spec->GetNumConditions(); ++i) {
        const ZtOpFindCondition& condition = spec->GetCondition(i);
        json.BeginObject(true);
        json.Key("category");
        WriteNameJson(json, condition.GetCategory());
        json.Key("property");
        WriteNameJson(json, condition.GetProperty());
        json.Key("flags");
        json.UInt(condition.GetFlags());
        json.Key("op");
        json.Int(condition.GetCondition());
        json.Key("value");
        WriteDataJson(json, condition.GetValue());
        json.EndObject();
    }
    json.EndArray();
    json.EndObject();
}

const ZtOpFolderItem* SelectionSetsRoot(const ZtOpState& state) {
    const ZtOpSelectionSetsElement* element = ZtOpSelectionSetsElement::Get(&state);
    return element ? element->Get() : nullptr;
}

std::string Utf8(const std::wstring& text) {
    return ZtUSysString::WideToUtf8(text);
}

const char* OperatorText(int op) {
    static const char* const kTexts[] = {"(no operator)",
                                         "in category",
                                         "not in category",
                                         "exists",
                                         "is missing",
                                         "(operator 5)",
                                         "=",
                                         "<>",
                                         "<",
                                         "<=",
                                         ">=",
                                         ">",
                                         "(operator 12)",
                                         "matches"};
    return op >= 0 && op < 14 ? kTexts[op] : "(unknown operator)";
}

// "Level = \"Level 3\"", with "not" in front of a negated comparison.
std::string ConditionText(const ZtOpFindCondition& condition) {
    std::string text;
    if (condition.HasFlags(ZtOpFindConditionFlags::kNegate) &&
        condition.GetCondition() >= ZtOpFindConditionOp::kEqual)
        text += "not ";
    if (condition.GetCategory())
        text += Utf8(condition.GetCategory()->GetDisplay().Str()) + ".";
    text += condition.GetProperty() ? Utf8(condition.GetProperty()->GetDisplay().Str()) : "?";
    text += std::string(" ") + OperatorText(condition.GetCondition());
    if (condition.GetCondition() >= ZtOpFindConditionOp::kEqual) {
        const ZtUData& value = condition.GetValue();
        text += " \"" +
                (value.GetType() == ZtUData::kWideString ? Utf8(value.GetWideString()) : "") + "\"";
    }
    return text;
}

void AppendItemSummary(std::string& out, const ZtOpSavedItem& item, const std::string& indent) {
    out += indent + KindName(item) + " \"" + Utf8(item.GetName().Str()) + "\"";
    if (item.IsGroup()) {
        const auto& group = static_cast<const ZtOpGroupItem&>(item);
        out += ", " + std::to_string(group.GetNumChildren()) + " items\n";
        for (std::size_t i = 0; i < group.GetNumChildren(); ++i)
            AppendItemSummary(out, *group.GetChild(i), indent + "  ");
        return;
    }
    out += "\n";
    // A comment's lines are joined by LF CR; each goes on a line of its own here.
    const auto& comments = item.GetComments();
    for (std::size_t i = 0; i < comments.Size(); ++i) {
        std::string body = Utf8(comments[i]->GetBody().Str());
        std::size_t at = 0;
        while ((at = body.find("\n\r", at)) != std::string::npos)
            body.replace(at, 2, "\n" + indent + "           ");
        out += indent + "  comment: " + body + "\n";
    }
    if (item.GetType() != ZtOpSavedItem::kTypeSelectionSet)
        return;
    const ZtOpFindSpec* spec =
        static_cast<const ZtOpSelectionSet&>(item).GetImplicitSelection().GetImplicitFindSpec();
    for (std::size_t i = 0; spec && i < spec->GetNumConditions(); ++i) {
        const ZtOpFindCondition& condition = spec->GetCondition(i);
        if (i == 0)
            out += indent + "  rule: ";
        else if (condition.HasFlags(ZtOpFindConditionFlags::kNewAlternative))
            out += "\n" + indent + "    or: ";
        else
            out += " and ";
        out += ConditionText(condition);
    }
    if (spec && spec->GetNumConditions() > 0)
        out += "\n";
}

} // namespace

void WriteSavedItemJson(JsonWriter& json, const ZtOpSavedItem& item) {
    json.BeginObject();
    json.Key("kind");
    json.String(KindName(item));
    json.Key("name");
    json.WideString(item.GetName().Str());
    json.Key("guid");
    json.String(item.GetGuid().ToString());
    if (item.IsGroup()) {
        const auto& group = static_cast<const ZtOpGroupItem&>(item);
        json.Key("children");
        json.BeginArray();
        for (std::size_t i = 0; i < group.GetNumChildren(); ++i)
            WriteSavedItemJson(json, *group.GetChild(i));
        json.EndArray();
    } else {
        WriteCommentsJson(json, item);
    }
    if (item.GetType() == ZtOpSavedItem::kTypeSelectionSet) {
        json.Key("findSpec");
        WriteFindSpecJson(json, static_cast<const ZtOpSelectionSet&>(item)
                                    .GetImplicitSelection()
                                    .GetImplicitFindSpec());
    }
    json.EndObject();
}

void WriteSelectionSetsJson(JsonWriter& json, const ZtOpState& state) {
    json.BeginArray();
    if (const ZtOpFolderItem* root = SelectionSetsRoot(state))
        for (std::size_t i = 0; i < root->GetNumChildren(); ++i)
            WriteSavedItemJson(json, *root->GetChild(i));
    json.EndArray();
}

void AppendSelectionSetsSummary(std::string& out, const ZtOpState& state) {
    const ZtOpFolderItem* root = SelectionSetsRoot(state);
    const std::size_t count = root ? root->GetNumChildren() : 0;
    out += "Selection sets: " + std::to_string(count) + "\n";
    for (std::size_t i = 0; i < count; ++i)
        AppendItemSummary(out, *root->GetChild(i), "  ");
}
