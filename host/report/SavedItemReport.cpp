#include "report/SavedItemReport.h"

#include "report/JsonWriter.h"
#include "report/ReadableText.h"
#include "report/ReportStream.h"
#include "report/RunReport.h"
#include "review/SavedItems.h"
#include "ztplugin/ZtOpFindCondition.h"
#include "ztplugin/ZtOpRedlineTag.h"
#include "ztplugin/ZtOpSelectionSet.h"
#include "ztplugin/ZtOpState.h"
#include "ztplugin/ZtOpView.h"
#include "ztutil/ZtUSysString.h"

#include <iterator>

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

void WriteClipPlanesJson(JsonWriter& json, const ZtOaClipPlaneSet& planes) {
    json.Key("clipPlanes");
    json.BeginArray();
    for (int i = 0; i < planes.Size(); ++i) {
        const ZtOaClipPlane& plane = *planes.Get(i);
        if (!plane.IsEnabled())
            continue;
        const ZtLPlane3f& plane3f = plane.GetPlane3f();
        json.BeginObject(true);
        json.Key("index");
        json.Int(i);
        json.Key("normal");
        json.Doubles({plane3f.GetNormal().x, plane3f.GetNormal().y, plane3f.GetNormal().z});
        json.Key("distance");
        json.Double(plane3f.GetDistance());
        json.EndObject();
    }
    json.EndArray();
}

void WriteRedlineJson(JsonWriter& json, const ZtOpRedline& redline) {
    json.BeginObject(true);
    json.Key("type");
    if (redline.GetRedlineType() != ZtOpRedline::kTypeTag) {
        json.String(std::to_string(redline.GetRedlineType()));
        json.EndObject();
        return;
    }
    const auto& tag = static_cast<const ZtOpRedlineTag&>(redline);
    json.String("tag");
    json.Key("tagId");
    json.UInt(tag.GetTagId());
    json.Key("commentId");
    json.UInt(tag.GetCommentId());
    json.Key("pos2dA");
    json.Doubles({tag.GetPos2dA().x, tag.GetPos2dA().y});
    json.Key("pos2dB");
    json.Doubles({tag.GetPos2dB().x, tag.GetPos2dB().y});
    json.Key("pos3dValid");
    json.Bool(tag.GetPos3dValid() != 0);
    json.Key("pos3d");
    json.Doubles({tag.GetPos3d().x, tag.GetPos3d().y, tag.GetPos3d().z});
    json.Key("lineColor");
    json.Doubles({tag.GetLineColor().r, tag.GetLineColor().g, tag.GetLineColor().b});
    json.Key("lineThickness");
    json.Int(tag.GetLineThickness());
    json.EndObject();
}

void WriteViewJson(JsonWriter& json, const ZtOpView& view) {
    json.Key("viewpoint");
    WriteViewPointJson(json, view.AnonView().GetViewPoint());
    WriteClipPlanesJson(json, view.AnonView().GetClipPlaneSet());
    json.Key("redlines");
    json.BeginArray();
    const auto& redlines = view.GetRedlines();
    for (std::size_t i = 0; i < redlines.Size(); ++i)
        WriteRedlineJson(json, *redlines[i]);
    json.EndArray();
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
    static_assert(std::size(kTexts) == ZtOpFindConditionOp::kWildcard + 1);
    return op >= 0 && static_cast<std::size_t>(op) < std::size(kTexts) ? kTexts[op]
                                                                       : "(unknown operator)";
}

// "Level = \"Level 3\"", with "not" in front of a negated comparison.
std::string ConditionText(const ZtOpFindCondition& condition) {
    std::string text;
    if (condition.HasFlags(ZtOpFindConditionFlags::kNegate) &&
        condition.GetCondition() >= ZtOpFindConditionOp::kEqual)
        text += "not ";
    if (condition.GetCategory())
        text += ZtUSysString::WideToUtf8(condition.GetCategory()->GetDisplay().Str()) + ".";
    text += condition.GetProperty()
                ? ZtUSysString::WideToUtf8(condition.GetProperty()->GetDisplay().Str())
                : "?";
    text += std::string(" ") + OperatorText(condition.GetCondition());
    if (condition.GetCondition() >= ZtOpFindConditionOp::kEqual) {
        const ZtUData& value = condition.GetValue();
        text += " \"" +
                (value.GetType() == ZtUData::kWideString
                     ? ZtUSysString::WideToUtf8(value.GetWideString())
                     : "") +
                "\"";
    }
    return text;
}

// The text in UTF-8 with each of its lines after the first on a line of its own behind
// `indent`. A line break is LF, CR, or a pair of them either way round: display sets
// join their comment lines by LF CR, tag import by CR LF.
void AppendIndentedLines(ReportStream& out, std::wstring_view text, const std::string& indent) {
    std::size_t start = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const wchar_t c = text[i];
        if (c != L'\n' && c != L'\r')
            continue;
        out += ZtUSysString::WideToUtf8(text.substr(start, i - start));
        out += '\n';
        out += indent;
        if (i + 1 < text.size() && (text[i + 1] == L'\n' || text[i + 1] == L'\r') &&
            text[i + 1] != c)
            ++i;
        start = i + 1;
    }
    out += ZtUSysString::WideToUtf8(text.substr(start));
}

// A camera's point or direction to six digits: enough to tell views apart at a glance.
std::string Point(const ZtLVec3f& p) {
    constexpr int kDigits = 6;
    return "(" + ReadableNumber(p.x, kDigits) + ", " + ReadableNumber(p.y, kDigits) + ", " +
           ReadableNumber(p.z, kDigits) + ")";
}

// The view's camera and clip planes on one line, then each tag with the text of its
// comment.
void AppendViewSummary(ReportStream& out, const ZtOpView& view, const std::string& indent) {
    const ZtNvCamera& camera = view.AnonView().GetViewPoint().GetCamera();
    int planes = 0;
    const ZtOaClipPlaneSet& set = view.AnonView().GetClipPlaneSet();
    for (int i = 0; i < set.Size(); ++i)
        planes += set.Get(i)->IsEnabled();
    out += indent + "  eye " + Point(camera.GetPosition()) + ", looking along " +
           Point(camera.ViewDir()) + ", " + std::to_string(planes) + " clip planes\n";
    const auto& redlines = view.GetRedlines();
    const auto comments = CommentsById(view);
    for (std::size_t i = 0; i < redlines.Size(); ++i) {
        if (redlines[i]->GetRedlineType() != ZtOpRedline::kTypeTag)
            continue;
        const auto& tag = static_cast<const ZtOpRedlineTag&>(*redlines[i]);
        std::string head = indent + "  tag " + std::to_string(tag.GetTagId());
        if (tag.GetPos3dValid())
            head += " at " + Point(tag.GetPos3d());
        head += ": ";
        out += head;
        if (const auto found = comments.find(tag.GetCommentId()); found != comments.end())
            AppendIndentedLines(out, found->second->GetBody().Str(), std::string(head.size(), ' '));
        out += '\n';
    }
}

// An item's own lines: a folder's the count of its items, which the walk shows after it.
void AppendItemSummary(ReportStream& out, const ZtOpSavedItem& item, const std::string& indent) {
    out += indent + KindName(item) + " \"";
    out += ReadableText(ZtUSysString::WideToUtf8(item.GetName().Str()));
    out += '"';
    if (item.IsGroup()) {
        out += ", " + std::to_string(static_cast<const ZtOpGroupItem&>(item).GetNumChildren()) +
               " items\n";
        return;
    }
    out += '\n';
    // A view's comments are the texts of its tags, and stand with them.
    if (item.GetType() == ZtOpSavedItem::kTypeView) {
        AppendViewSummary(out, static_cast<const ZtOpView&>(item), indent);
        return;
    }
    const auto& comments = item.GetComments();
    for (std::size_t i = 0; i < comments.Size(); ++i) {
        out += indent + "  comment: ";
        AppendIndentedLines(out, comments[i]->GetBody().Str(), indent + "           ");
        out += '\n';
    }
    if (item.GetType() != ZtOpSavedItem::kTypeSelectionSet)
        return;
    const ZtOpFindSpec* spec =
        static_cast<const ZtOpSelectionSet&>(item).GetImplicitSelection().GetImplicitFindSpec();
    // Written condition by condition: the rule of a large set is many times its file.
    for (std::size_t i = 0; spec && i < spec->GetNumConditions(); ++i) {
        const ZtOpFindCondition& condition = spec->GetCondition(i);
        if (i == 0)
            out += indent + "  rule: ";
        else if (condition.HasFlags(ZtOpFindConditionFlags::kNewAlternative))
            out += "\n" + indent + "    or: ";
        else
            out += " and ";
        out += ReadableText(ConditionText(condition));
    }
    if (spec && spec->GetNumConditions() > 0)
        out += '\n';
}

} // namespace

void WriteSavedItemsJson(JsonWriter& json, const ZtOpState& state, SavedItemTree tree) {
    json.BeginArray();
    WalkSavedItems(
        state, tree,
        [&json](const ZtOpSavedItem& item, int) {
            json.BeginObject();
            json.Key("kind");
            json.String(KindName(item));
            json.Key("name");
            json.WideString(item.GetName().Str());
            json.Key("guid");
            json.String(item.GetGuid().ToString());
            if (item.IsGroup()) {
                json.Key("children");
                json.BeginArray();
                return;
            }
            WriteCommentsJson(json, item);
            if (item.GetType() == ZtOpSavedItem::kTypeView)
                WriteViewJson(json, static_cast<const ZtOpView&>(item));
            if (item.GetType() == ZtOpSavedItem::kTypeSelectionSet) {
                json.Key("findSpec");
                WriteFindSpecJson(json, static_cast<const ZtOpSelectionSet&>(item)
                                            .GetImplicitSelection()
                                            .GetImplicitFindSpec());
            }
        },
        [&json](const ZtOpSavedItem& item, int) {
            if (item.IsGroup())
                json.EndArray();
            json.EndObject();
        });
    json.EndArray();
}

void AppendSavedItemsSummary(ReportStream& out, const ZtOpState& state, SavedItemTree tree) {
    const ZtOpFolderItem* root = SavedItemTreeRoot(state, tree);
    out += tree == SavedItemTree::kSavedViews ? "Saved views: " : "Selection sets: ";
    out += std::to_string(root ? root->GetNumChildren() : 0) + "\n";
    WalkSavedItems(state, tree, [&out](const ZtOpSavedItem& item, int depth) {
        AppendItemSummary(out, item, std::string(2 * (depth + 1), ' '));
    });
}

std::vector<std::string> FindSpecRuleLines(const ZtOpFindSpec* spec) {
    std::vector<std::string> lines;
    for (std::size_t i = 0; spec && i < spec->GetNumConditions(); ++i) {
        const ZtOpFindCondition& condition = spec->GetCondition(i);
        if (i == 0 || condition.HasFlags(ZtOpFindConditionFlags::kNewAlternative))
            lines.emplace_back();
        else
            lines.back() += " and ";
        lines.back() += ConditionText(condition);
    }
    return lines;
}
