#include "BenchSupport.h"

#include "tags/ZtOdPdsCameraMaps.h"
#include "ztlddgn/ZtDgnModel.h"
#include "ztplugin/ZtOpRedlineTag.h"
#include "ztplugin/ZtOpSavedItemsElement.h"
#include "ztplugin/ZtOpState.h"
#include "ztplugin/ZtOpView.h"
#include "ztutil/ZtUSysFile.h"

#include <fstream>
#include <string>

void ZtBenchResetPeakMemory() {
    std::ofstream("/proc/self/clear_refs") << "5";
}

double ZtBenchStatusMiB(const char* key) {
    std::ifstream status("/proc/self/status");
    std::string line;
    while (std::getline(status, line))
        if (line.rfind(key, 0) == 0)
            return std::stod(line.substr(std::string(key).size())) / 1024.0;
    return 0;
}

unsigned ZtBenchDecodeFile(const wchar_t* path) {
    ZtUFile* file =
        ZtUSysFile::fopenW(path, ZtUSysFile::kAccessRead, ZtUSysFile::kOpenExisting,
                           ZtUSysFile::kTranslateText, ZtUSysFile::kShareReadWrite, 0, 384);
    if (!file)
        return 0;
    unsigned sum = 0;
    for (unsigned c; (c = ZtUSysFile::fgetwc(file)) != ZtUFile::kEnd;)
        sum += c;
    ZtUSysFile::fclose(file);
    return sum;
}

void ZtBenchAddOneViewOfTags(ZtOpState& document, std::uint64_t tags) {
    auto* units = new ZtDgnModel(L"", document.EditNameDict());
    units->SetUorsPerMaster(1000);
    document.GetRootNode()->AddChild(units);
    auto* view = new ZtOpView;
    ZtNvCamera camera;
    camera.SetPosition({0, 0, 20});
    camera.PointAt({0, 0, 0});
    view->AnonView().EditViewPoint()->SetCamera(camera);
    for (std::uint64_t id = 1; id <= tags; ++id) {
        const ZtLPos3f at(static_cast<double>(id % 100) / 10, static_cast<double>(id / 100) / 10,
                          0);
        const ZtLPos2f a = ZtOdPdsModelToCameraSpace(at, camera);
        view->EditRedlines().PushBack(new ZtOpRedlineTag(id, id, a, a, 1, at, 0, ZtLBox3f()));
        auto* comment = new ZtOpComment(id);
        comment->SetBody(L"Check the support here.");
        view->EditComments().PushBack(comment);
    }
    ZtOpSavedViewsElement::Require(document.EditElementList())->Edit()->AddChild(view);
}
