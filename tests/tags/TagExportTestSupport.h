#pragma once
#include "support/ZtTestFiles.h"
#include "tags/ZtOdPdsCameraMaps.h"
#include "tags/ZtOdPdsTagExportPlugin.h"
#include "ztlddgn/ZtDgnModel.h"
#include "ztobject/ZtOaAttribute.h"
#include "ztobject/ZtOaShape.h"
#include "ztplugin/ZtOpLock.h"
#include "ztplugin/ZtOpRedlineTag.h"
#include "ztplugin/ZtOpSavedItemsElement.h"
#include "ztplugin/ZtOpState.h"
#include "ztplugin/ZtOpView.h"
#include "ztutil/ZtUWideString.h"

#include <cstdint>
#include <string>

// A document to export from: a first, empty model that gives the units factor, models of
// boxes made in memory, and saved views with tags, all in master units.
struct ExportDocument {
    explicit ExportDocument(double uorsPerMaster) {
        auto* units = new ZtDgnModel(L"", state.EditNameDict());
        units->SetUorsPerMaster(uorsPerMaster);
        state.GetRootNode()->AddChild(units);
    }

    // A model partition loaded, as it were, from `path`.
    ZtOaPartition* AddModel(const wchar_t* path) {
        auto* model = new ZtOaPartition(L"model", path);
        state.GetRootNode()->AddChild(model);
        return model;
    }
    // An element box with a DMRS value (none for 0).
    static ZtOaShape* AddElement(ZtOaGroup* parent, const ZtLBox3f& box, std::uint64_t dmrs) {
        auto* shape = new ZtOaShape(box);
        if (dmrs)
            shape->AddAttribute(new ZtOaNat64Attribute("ZtDgnDMRSAttribute", dmrs));
        parent->AddChild(shape);
        return shape;
    }

    ZtOpFolderItem* Root() {
        return const_cast<ZtOpFolderItem*>(ZtOpSavedViewsElement::Get(&state)->Get());
    }
    // A view from `eye` towards `target` with the height field in radians, appended to
    // `folder` (the root folder if null).
    ZtOpView* AddView(const ZtLPos3f& eye, const ZtLPos3f& target,
                      double heightField = 0.7853981633974483, ZtOpGroupItem* folder = nullptr) {
        auto* view = new ZtOpView;
        ZtNvCamera camera;
        camera.SetPosition(eye);
        camera.PointAt(target);
        camera.SetHeightField(heightField);
        camera.AlignUp({0, 0, 1});
        view->AnonView().EditViewPoint()->SetCamera(camera);
        (folder ? folder : Root())->AddChild(view);
        return view;
    }
    // A tag with its comment; the second 2D position is that of `second` if given, else
    // that of the tag's own point.
    static ZtOpRedlineTag* AddTag(ZtOpView* view, std::uint64_t id, const ZtLPos3f& position,
                                  const wchar_t* body, const ZtLPos3f* second = nullptr,
                                  bool withComment = true, int pos3dValid = 1) {
        const ZtNvCamera& camera = view->AnonView().GetViewPoint().GetCamera();
        const ZtLPos2f a = ZtOdPdsModelToCameraSpace(position, camera);
        const ZtLPos2f b = second ? ZtOdPdsModelToCameraSpace(*second, camera) : a;
        auto* tag = new ZtOpRedlineTag(id, id, a, b, pos3dValid, position, 0, ZtLBox3f());
        view->EditRedlines().PushBack(tag);
        if (withComment) {
            auto* comment = new ZtOpComment(id);
            comment->SetBody(body);
            view->EditComments().PushBack(comment);
        }
        return tag;
    }
    // Switches on plane `index` of the view at `distance` from the eye, its normal along
    // the view direction turned by `direction` (1 along, -1 against) or as given.
    static void AddPlane(ZtOpView* view, int index, const ZtLVec3f& normal, double distance) {
        const ZtNvCamera& camera = view->AnonView().GetViewPoint().GetCamera();
        ZtOaClipPlane* plane = view->AnonView().EditClipPlaneSet()->Edit(index);
        plane->AlignToPick(ZtOaClipPlane::kAlignToNormal,
                           camera.GetPosition() + camera.ViewDir() * distance, normal, nullptr);
        plane->SetEnabled(true);
    }

    // Exports with `plugin` to a file of the folder; the status, and the file's text in
    // `text`.
    int Export(ZtOdPdsTagExportPlugin& plugin, std::string* text, ZtOpProgress* progress = nullptr,
               const std::string& name = "out.tag") {
        const ZtUWideString path(dir.WideFile(name).c_str());
        const int status = plugin.IExport(0, &state, progress, &path);
        if (text)
            *text = ZtTestReadBytes(dir.File(name));
        return status;
    }

    ZtOpState state;
    ZtTestTempDir dir;
};
