#pragma once
#include "support/ZtTestFiles.h"
#include "tags/ZtOdPdsTagImportAction.h"
#include "ztlddgn/ZtDgnModel.h"
#include "ztplugin/ZtOpRedlineTag.h"
#include "ztplugin/ZtOpState.h"
#include "ztplugin/ZtOpView.h"

#include <string>
#include <vector>

inline std::wstring TagFixture(const char* name) {
    return ZtTestWide(std::string(ZT_TEST_DIR "/fixtures/") + name);
}

// A document with one empty model of the given units factor, and a folder for tag files.
struct TagDocument {
    explicit TagDocument(double uorsPerMaster) {
        auto* model = new ZtDgnModel(L"", state.EditNameDict());
        model->SetUorsPerMaster(uorsPerMaster);
        state.GetRootNode()->AddChild(model);
    }

    // Writes `text` (UTF-8) as a tag file; its wide path.
    std::wstring Write(const std::string& text, const std::string& name = "t.tag") {
        ZtTestWriteBytes(dir.File(name), text);
        return dir.WideFile(name);
    }

    ZtOpState state;
    ZtTestTempDir dir;
};

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
