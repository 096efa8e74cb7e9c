// A SQLite file as the project database: opened as an attribute source, its rows attached
// to the sample's pipe model and every element's properties visited, as a select does. A
// source that opens and reads must leave the model with an attribute store; one that
// fails must say why and leave the model without one.

#include "ZtFuzzSampleModel.h"
#include "ZtFuzzSupport.h"

#include "ztlddgn/ZtDgnAttributeStore.h"
#include "ztlddgn/ZtDgnModel.h"
#include "ztobject/ZtOaNode.h"
#include "ztobject/ZtOaProperty.h"
#include "ztpdsdb/ZtPdsDbAttach.h"
#include "ztpdsdb/ZtPdsDbSource.h"
#include "ztplugin/ZtOpState.h"

#include <string>

namespace {

struct CountProperties : ZtOaPropertyVisitor {
    std::size_t count = 0;
    void Visit(ZtUName*, const ZtOaProperty& property) override {
        count += property.GetValue().GetWideString()[0] != 0;
    }
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    ZtFuzzWrite("input.db", data, size);
    const std::string path = ZtFuzzFile("input.db");
    ZtOpState state;
    ZtDgnModel* model = ZtFuzzAddSampleModel(state);
    std::string error;
    std::unique_ptr<ZtPdsDbSource> source = ZtPdsDbSource::Open(path, {}, &error);
    if (!source) {
        ZtFuzzCheck(!error.empty(), "a source that did not open, and no reason");
        return 0;
    }
    const bool attached = ZtPdsDbAttach(*source, *model, &error);
    ZtFuzzCheck(attached == (model->GetAttributeStore() != nullptr),
                "an attach that failed left attributes, or one that worked left none");
    ZtFuzzCheck(attached || !error.empty(), "a read that failed, and no reason");
    CountProperties visitor;
    for (std::size_t slot = 0; slot < model->GetNumElements(); ++slot)
        model->VisitElementProperties(static_cast<std::uint32_t>(slot), visitor);
    return 0;
}
