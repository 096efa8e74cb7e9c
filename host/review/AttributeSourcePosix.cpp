#include "review/AttributeSource.h"

#include "ztpdsdb/ZtPdsDbAttach.h"
#include "ztpdsdb/ZtPdsDbSource.h"

namespace {

class DatabaseSource : public AttributeSource {
public:
    explicit DatabaseSource(std::unique_ptr<ZtPdsDbSource> source) : source_(std::move(source)) {}
    const std::string& GetName() const override { return source_->GetName(); }
    bool Attach(ZtDgnModel& model, std::string* error) override {
        return ZtPdsDbAttach(*source_, model, error);
    }
    std::size_t GetRowsWithNull() const override { return source_->GetRowsWithNull(); }

private:
    std::unique_ptr<ZtPdsDbSource> source_;
};

} // namespace

std::unique_ptr<AttributeSource> AttributeSource::Open(const std::string& spec,
                                                       std::string* error) {
    std::unique_ptr<ZtPdsDbSource> source = ZtPdsDbSource::Open(spec, {}, error);
    if (!source)
        return nullptr;
    return std::make_unique<DatabaseSource>(std::move(source));
}

bool AttributeSource::Available() {
    return true;
}
