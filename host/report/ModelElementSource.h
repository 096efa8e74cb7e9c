#pragma once
#include "report/ReportScene.h"
#include "ztlddgn/ZtDgnGeometryReader.h"

#include <memory>
#include <vector>

class ZtDgnModel;

// The element source of a run's scene: each model's elements, numbered on from the last
// model's, read again from the model's file for their geometry (placed as the model's
// partition places them) and described from the model's records and nodes. The models
// must outlive it.
class ModelElementSource : public ReportElementSource {
public:
    explicit ModelElementSource(const std::vector<const ZtDgnModel*>& models);
    ~ModelElementSource() override;

    bool Geometry(std::size_t element, ZtDgnGeometry* out) override;
    ReportElementFacts Facts(std::size_t element) override;

private:
    struct Model {
        const ZtDgnModel* model;
        std::size_t first;                           // the number of its first element
        std::unique_ptr<ZtDgnGeometryReader> reader; // opened when first needed
        bool unreadable = false;
    };
    // The model that holds the element, with the element's slot; null past the last.
    Model* Find(std::size_t element, std::size_t* slot);

    std::vector<Model> models_;
};
