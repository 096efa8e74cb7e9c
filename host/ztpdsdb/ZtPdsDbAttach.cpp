#include "ztpdsdb/ZtPdsDbAttach.h"

#include "ztlddgn/ZtDgnAttributeBuilder.h"
#include "ztlddgn/ZtDgnModel.h"
#include "ztpdsdb/ZtPdsDbSource.h"

namespace {

class BuilderSink : public ZtPdsDbRowSink {
public:
    explicit BuilderSink(const ZtDgnModel& model) : builder(model) {}
    bool Row(std::int64_t entity, std::int64_t occurrence, std::string_view name,
             std::string_view value, std::string* why) override {
        return builder.AddRow(entity, occurrence, name, value, why);
    }

    ZtDgnAttributeBuilder builder;
};

} // namespace

bool ZtPdsDbAttach(ZtPdsDbSource& source, ZtDgnModel& model, std::string* error) {
    BuilderSink sink(model);
    if (!source.ReadRows(sink, error))
        return false;
    model.AttachAttributes(sink.builder.Finish(source.GetName()));
    return true;
}
