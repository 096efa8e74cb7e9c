#include "report/ModelElementSource.h"

#include "report/ReadableText.h"
#include "ztlddgn/ZtDgnAttributeStore.h"
#include "ztlddgn/ZtDgnModel.h"
#include "ztutil/ZtUSysString.h"

#include <algorithm>

ModelElementSource::ModelElementSource(const std::vector<const ZtDgnModel*>& models) {
    std::size_t first = 0;
    for (const ZtDgnModel* model : models) {
        models_.push_back({model, first, nullptr});
        first += model->GetNumElements();
    }
}

ModelElementSource::~ModelElementSource() = default;

ModelElementSource::Model* ModelElementSource::Find(std::size_t element, std::size_t* slot) {
    auto after = std::upper_bound(models_.begin(), models_.end(), element,
                                  [](std::size_t e, const Model& m) { return e < m.first; });
    if (after == models_.begin())
        return nullptr;
    Model& model = *(after - 1);
    *slot = element - model.first;
    return *slot < model.model->GetNumElements() ? &model : nullptr;
}

bool ModelElementSource::Geometry(std::size_t element, ZtDgnGeometry* out) {
    std::size_t slot = 0;
    Model* m = Find(element, &slot);
    if (!m || m->unreadable)
        return false;
    if (!m->reader) {
        m->reader = std::make_unique<ZtDgnGeometryReader>();
        std::string reason;
        if (!m->reader->Open(ZtUSysString::WideToPath(m->model->GetSourceFilename().Str()),
                             m->model->GetHeader().dimension, &reason)) {
            m->unreadable = true;
            return false;
        }
    }
    if (!m->reader->Read(m->model->GetElement(slot), out))
        return false;
    // UORs to the model's master units, then where its partition places them.
    ZtLMatrix3f toMaster;
    const double f = 1.0 / m->model->GetUorsPerMaster();
    toMaster.SetValue(f, 0, 0, 0, f, 0, 0, 0, f);
    ZtLAffine3f map = m->model->GetTransform();
    map.MultRight(ZtLAffine3f(toMaster, {}));
    out->Transform(map);
    return true;
}

ReportElementFacts ModelElementSource::Facts(std::size_t element) {
    ReportElementFacts facts;
    std::size_t slot = 0;
    const Model* m = Find(element, &slot);
    if (!m)
        return facts;
    facts.index = m->model->GetElement(slot).index;
    if (const std::uint64_t dmrs = m->model->GetDmrs(slot))
        facts.dmrs = DmrsWords(dmrs);
    if (const ZtDgnAttributeStore* store = m->model->GetAttributeStore())
        for (const std::uint32_t pair : store->GetElementPairs(slot))
            facts.attributes.emplace_back(store->GetName(pair), store->GetValue(pair));
    return facts;
}
