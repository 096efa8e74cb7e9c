#include "report/ReportScene.h"

#include "report/ModelElementSource.h"
#include "report/ReadableText.h"
#include "report/SavedItemReport.h"
#include "review/ModelLoad.h"
#include "review/OpenRoad.h"
#include "review/ReviewRun.h"
#include "review/SavedItems.h"
#include "review/SelectionEvaluation.h"
#include "ztcore/ZtOcContext.h"
#include "ztcore/ZtOcPickFrustumTraversal.h"
#include "ztlddgn/ZtDgnElementNode.h"
#include "ztlddgn/ZtDgnModel.h"
#include "ztlinear/ZtLFrustum3f.h"
#include "ztlinear/ZtLMatrix4f.h"
#include "ztobject/ZtOaClipPlaneSet.h"
#include "ztobject/ZtOaTraversal.h"
#include "ztobject/ZtOaUnit.h"
#include "ztplugin/ZtOpRedlineTag.h"
#include "ztplugin/ZtOpSelectionSet.h"
#include "ztplugin/ZtOpView.h"
#include "ztutil/ZtUParallel.h"
#include "ztutil/ZtUSysString.h"

#include <algorithm>

namespace {

// The slot of the element of that file index; slots run in file order.
std::size_t SlotOfIndex(const ZtDgnModel& model, std::int64_t index) {
    std::size_t lo = 0, hi = model.GetNumElements();
    while (lo < hi) {
        const std::size_t mid = lo + (hi - lo) / 2;
        if (model.GetElement(mid).index < index)
            lo = mid + 1;
        else
            hi = mid;
    }
    return lo;
}

// For each element of the model, by slot, how many elements after it are its components:
// a depth-first walk meets every group's components right after it, in slot order, so a
// group's count is the last slot met before it closes less its own.
std::vector<std::uint32_t> ComponentCounts(const ZtDgnModel& model) {
    std::vector<std::uint32_t> counts(model.GetNumElements(), 0);
    struct Open {
        const ZtOaGroup* group;
        int next;
        std::int64_t slot; // -1 for the model itself
    };
    std::vector<Open> open = {{&model, 0, -1}};
    std::int64_t last = -1;
    while (!open.empty()) {
        Open& top = open.back();
        if (top.next >= top.group->GetNumChildren()) {
            if (top.slot >= 0)
                counts[static_cast<std::size_t>(top.slot)] =
                    static_cast<std::uint32_t>(last - top.slot);
            open.pop_back();
            continue;
        }
        const ZtOaNode* child = top.group->GetChild(top.next++);
        if (const auto* group = dynamic_cast<const ZtDgnGroupNode*>(child)) {
            last = group->GetSlot();
            open.push_back({group, 0, last});
        } else if (const auto* leaf = dynamic_cast<const ZtDgnElementNode*>(child)) {
            last = leaf->GetSlot();
        }
    }
    return counts;
}

// Picks as the tag export does, so that the page names the element the export writes:
// along the view's direction, through a tiny window about the tag's point, from the tag's
// depth to a fifth beyond it. Notes the model and DMRS value of the nearest element hit:
// the lowest element with a value on the picked shape's path, below the lowest model.
void PickTag(const ZtOpState& state, const ZtOpView& view,
             const std::vector<std::pair<const ZtOaPartition*, std::size_t>>& firstElement,
             ReportTag* tag) {
    const ZtOaPartition* root = state.GetRootNode();
    if (!root || !tag->placed)
        return;
    ZtNvCamera camera = view.AnonView().GetViewPoint().GetRenderCamera();
    const ZtLVec3f& u = camera.ViewDir();
    const double depth = u.Dot(tag->position) - u.Dot(camera.GetPosition());
    camera.SetNear(depth - ZtLVec::GetResabs());
    camera.SetFar(depth + depth * 0.2);
    ZtLFrustum3f frustum;
    if (!(depth > 0) || !camera.Frustum(&frustum, 0.0))
        return;
    const ZtLPos3f at = tag->position * frustum.GetMatrix();
    const double x = (at.x + 1.0) * 0.5, y = (at.y + 1.0) * 0.5, half = 0.0001;
    frustum.Narrow(x - half, x + half, y - half, y + half);
    ZtOcContext context;
    ZtOcPickFrustumTraversal pick(&context);
    pick.SetFrustum(ZtLPickFrustum3f(frustum));
    pick.SetRequiredPropertyBits(ZtOaNode::kGeometryBit);
    root->ApplyTraversal(&pick);
    const ZtOaFragment* shape = pick.GetPickedShape();
    for (const ZtOaPathLink* link = shape ? shape->GetFragPath() : nullptr; link;
         link = link->GetParent()) {
        const auto* model = dynamic_cast<const ZtDgnModel*>(link->GetNode());
        if (!model)
            continue;
        tag->modelFile = ZtUSysString::WideToUtf8(model->GetName().Str());
        for (const ZtOaPathLink* up = shape->GetFragPath(); up != link; up = up->GetParent()) {
            const std::int64_t index = up->GetNode() ? up->GetNode()->GetElementIndex() : -1;
            const std::size_t slot = SlotOfIndex(*model, index);
            if (index >= 0 && slot < model->GetNumElements() && model->GetDmrs(slot)) {
                tag->dmrs = DmrsWords(model->GetDmrs(slot));
                for (const auto& [partition, first] : firstElement)
                    if (partition == model)
                        tag->element = static_cast<std::int64_t>(first + slot);
                break;
            }
        }
        return;
    }
}

// The model's elements where its partition places them in the scene, into `out` by slot,
// and the extent of them all.
void GatherElements(const ZtDgnModel& model, ReportElement* out, ZtLBox3f* extent) {
    const ZtLAffine3f& placement = model.GetTransform();
    const std::vector<std::uint32_t> components = ComponentCounts(model);
    for (std::size_t slot = 0; slot < model.GetNumElements(); ++slot) {
        const ZtDgnElement& e = model.GetElement(slot);
        out[slot] = {placement.TransformBox(model.GetElementBox(slot)),
                     static_cast<std::uint8_t>(e.GetLevel()), e.colour, e.type, components[slot]};
        extent->Extend(out[slot].box);
    }
}

void GatherView(const ZtOpState& state, const ZtOpSavedItem& item,
                const std::vector<std::pair<const ZtOaPartition*, std::size_t>>& firstElement,
                std::vector<ReportView>* views) {
    if (item.GetType() != ZtOpSavedItem::kTypeView)
        return;
    const auto& view = static_cast<const ZtOpView&>(item);
    const ZtNvCamera& camera = view.AnonView().GetViewPoint().GetCamera();
    ReportView out{ZtUSysString::WideToUtf8(item.GetName().Str()),
                   camera,
                   {},
                   {},
                   view.AnonView().GetViewPoint().GetFocalDistance()};
    const ZtOaClipPlaneSet& planes = view.AnonView().GetClipPlaneSet();
    for (int i = 0; i < planes.Size(); ++i)
        if (planes.Get(i)->IsEnabled())
            out.clipPlanes.push_back(planes.Get(i)->GetPlane3f());
    const auto& redlines = view.GetRedlines();
    const auto comments = CommentsById(view);
    for (std::size_t i = 0; i < redlines.Size(); ++i) {
        if (redlines[i]->GetRedlineType() != ZtOpRedline::kTypeTag)
            continue;
        const auto& redline = static_cast<const ZtOpRedlineTag&>(*redlines[i]);
        ReportTag tag;
        tag.id = redline.GetTagId();
        tag.placed = redline.GetPos3dValid() != 0;
        tag.position = redline.GetPos3d();
        tag.window = ZtOpRedline::CameraToWindowSpace(camera, false, redline.GetPos2dA());
        tag.windowB = ZtOpRedline::CameraToWindowSpace(camera, false, redline.GetPos2dB());
        if (const auto found = comments.find(redline.GetCommentId()); found != comments.end())
            tag.text = ZtUSysString::WideToUtf8(found->second->GetBody().Str());
        PickTag(state, view, firstElement, &tag);
        out.tags.push_back(std::move(tag));
    }
    views->push_back(std::move(out));
}

} // namespace

ReportScene GatherReportScene(const ReviewRun& run, std::size_t threads) {
    ReportScene scene;
    scene.producer = "pdsreview " ZTODPDS_VERSION;
    for (const StepResult& step : run.steps)
        if (step.step == "open" && step.status == 0)
            scene.controlFile = step.file;
    const OpenedSceneSet* set = run.sceneSet.get();
    const ZtOaUnit::Linear sceneUnits = set ? set->set.GetLinearUnits() : ZtOaUnit::Linear(-1);
    scene.sceneUnits = set ? UnitName(sceneUnits) : "master units";
    if (set && ZtOaUnit::IsValid(sceneUnits))
        scene.metresPerUnit = ZtOaUnit::SizeInMetres(sceneUnits);

    // Where each model's elements begin in the scene's list, for the selections.
    std::vector<std::pair<const ZtOaPartition*, std::size_t>> firstElement;
    const std::vector<const ZtDgnModel*> models = SceneModels(run.state);
    std::size_t elements = 0;
    for (const ZtDgnModel* model : models) {
        const ZtDgnModelHeader& header = model->GetHeader();
        ReportModel out;
        out.file = ZtUSysString::WideToUtf8(model->GetName().Str());
        out.units = header.masterUnitName + " / " + header.subUnitName + ", " +
                    ReadableNumber(model->GetUorsPerMaster()) + " UORs per master unit";
        // A model of a `model` step stands where its file puts it.
        out.placement = "not placed";
        for (std::size_t i = 0; set && i < set->refs.size(); ++i)
            if (set->refs[i].model == model) {
                const ZtOpSceneRef& ref = *set->set.GetSceneRefs()[i];
                out.placement =
                    PlacementWords(ref.GetTransform(), ref.GetLinearUnits(), sceneUnits);
                break;
            }
        out.firstElement = elements;
        out.elements = model->GetNumElements();
        scene.models.push_back(std::move(out));
        firstElement.emplace_back(model, elements);
        elements += model->GetNumElements();
    }
    // Each model fills its own part of the list, so the models are gathered at once.
    scene.elements.resize(elements);
    ZtUParallelFor(models.size(), ZtUThreadsFor(threads), [&](std::size_t m) {
        GatherElements(*models[m], scene.elements.data() + scene.models[m].firstElement,
                       &scene.models[m].extent);
    });
    for (std::size_t i = 0; set && i < set->refs.size(); ++i)
        if (!set->refs[i].model)
            scene.failed.push_back(
                {ZtUSysString::WideToUtf8(set->set.GetSceneRefs()[i]->GetSourceName().Str()),
                 set->refs[i].notLoaded});

    MakeIndexesForTagPicks(run.state, threads);
    WalkSavedItems(run.state, SavedItemTree::kSavedViews, [&](const ZtOpSavedItem& item, int) {
        GatherView(run.state, item, firstElement, &scene.views);
    });

    // The step's selections where it ran; the walk is made here only where it did not.
    std::vector<SelectionResult> computed;
    if (!run.selections)
        computed = ComputeSelections(run.state);
    const std::vector<SelectionResult>& selections = run.selections ? *run.selections : computed;
    const std::vector<const ZtOpSelectionSet*> sets = DocumentSelectionSets(run.state);
    for (std::size_t i = 0; i < sets.size(); ++i) {
        ReportSet out;
        out.name = ZtUSysString::WideToUtf8(sets[i]->GetName().Str());
        const auto& comments = sets[i]->GetComments();
        for (std::size_t c = 0; c < comments.Size(); ++c)
            out.comment += (c ? "\n" : "") + ZtUSysString::WideToUtf8(comments[c]->GetBody().Str());
        out.rule = FindSpecRuleLines(sets[i]->GetImplicitSelection().GetImplicitFindSpec());
        const SelectionResult* selected = i < selections.size() ? &selections[i] : nullptr;
        std::size_t k = 0;
        for (std::size_t r = 0; selected && r < selected->runs.size(); ++r) {
            const SelectedRun& selectedRun = selected->runs[r];
            std::size_t m = 0;
            while (m < models.size() && firstElement[m].first != selectedRun.partition)
                ++m;
            for (; m < models.size() && k < selectedRun.end; ++k) {
                const std::size_t slot = SlotOfIndex(*models[m], selected->indices[k]);
                if (slot < models[m]->GetNumElements())
                    out.elements.push_back(
                        static_cast<std::uint32_t>(firstElement[m].second + slot));
            }
            k = selectedRun.end;
        }
        std::sort(out.elements.begin(), out.elements.end());
        scene.sets.push_back(std::move(out));
    }
    scene.source = std::make_shared<ModelElementSource>(models);
    return scene;
}
