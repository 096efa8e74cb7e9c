#pragma once
#include "tags/ZtOdPdsCameraMaps.h"
#include "tags/ZtOdPdsTagExportPlugin.h"
#include "tags/ZtOdPdsTagImportAction.h"
#include "tools/ZtTestFiles.h"
#include "ztlddgn/ZtDgnModel.h"
#include "ztobject/ZtOaAttribute.h"
#include "ztobject/ZtOaShape.h"
#include "ztplugin/ZtOpRedlineTag.h"
#include "ztplugin/ZtOpSavedItemsElement.h"
#include "ztplugin/ZtOpState.h"
#include "ztplugin/ZtOpView.h"
#include "ztutil/ZtUWideString.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

// The units factor of most tag tests: a thousand UORs a master unit.
constexpr double kTagTestFactor = 1000.0;

// A document whose first, empty model gives the units factor, with a folder for tag
// files. Models of boxes made in memory and saved views with tags, all in master units,
// can be added to export them.
struct TagDocument {
    explicit TagDocument(double uorsPerMaster) {
        auto* units = new ZtDgnModel(L"", state.EditNameDict());
        units->SetUorsPerMaster(uorsPerMaster);
        state.GetRootNode()->AddChild(units);
    }

    // Writes `text` (UTF-8) as a tag file; its wide path.
    std::wstring Write(const std::string& text, const std::string& name = "t.tag") {
        ZtTestWriteBytes(dir.File(name), text);
        return dir.WideFile(name);
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
    // Switches on plane `index` of the view at `distance` from the eye along the view
    // direction, with the given normal.
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

inline void ExpectNear(const ZtLVec3f& actual, const ZtLVec3f& expected, double bound = 1e-12,
                       const std::string& what = "") {
    EXPECT_NEAR(actual.x, expected.x, bound) << what;
    EXPECT_NEAR(actual.y, expected.y, bound) << what;
    EXPECT_NEAR(actual.z, expected.z, bound) << what;
}

inline void ExpectNear(const ZtLPos2f& actual, const ZtLPos2f& expected, double bound = 1e-12,
                       const std::string& what = "") {
    EXPECT_NEAR(actual.x, expected.x, bound) << what;
    EXPECT_NEAR(actual.y, expected.y, bound) << what;
}

inline const ZtOpView& ViewAt(const ZtOdPdsTagImportAction& action, std::size_t index) {
    return *static_cast<const ZtOpView*>(action.GetFolder().GetChild(index));
}

inline const ZtOpRedlineTag& TagAt(const ZtOpView& view, std::size_t index) {
    return *static_cast<const ZtOpRedlineTag*>(view.GetRedlines().Get(index));
}

// The identifiers of the comments of each view of the action's folder, view by view.
inline std::vector<std::vector<unsigned long long>>
CommentIds(const ZtOdPdsTagImportAction& action) {
    std::vector<std::vector<unsigned long long>> out;
    for (std::size_t v = 0; v < action.GetFolder().GetNumChildren(); ++v) {
        const ZtOpView& view = ViewAt(action, v);
        out.emplace_back();
        for (std::size_t c = 0; c < view.GetComments().Size(); ++c)
            out.back().push_back(view.GetComments()[c]->GetId());
    }
    return out;
}

inline std::vector<int> EnabledPlanes(const ZtOpView& view) {
    std::vector<int> out;
    const ZtOaClipPlaneSet& planes = view.AnonView().GetClipPlaneSet();
    for (int i = 0; i < planes.Size(); ++i)
        if (planes.Get(i)->IsEnabled())
            out.push_back(i);
    return out;
}

// The tag head "tag{ID 1 0 0.000000 X Y Z" and a line end.
inline std::string Head(int id, int x = 0, int y = 0, int z = 0) {
    return "tag{" + std::to_string(id) + " 1 0 0.000000 " + std::to_string(x) + " " +
           std::to_string(y) + " " + std::to_string(z) + "\n";
}

// A whole tag with a one-line body "note ID" and no `p`.
inline std::string Tag(int id) {
    const std::string body = "note " + std::to_string(id);
    return Head(id) + "text{" + std::to_string(body.size()) + "\n" + body + "}}\n";
}
