#pragma once
#include "readers/ZtOdPdsDstContext.h"
#include "readers/ZtOdPdsInputConsumer.h"

// A consumer of a display-set file's lines; it shares its import's context.
class ZtOdPdsDstInputConsumer : public ZtOdPdsInputConsumer {
public:
    explicit ZtOdPdsDstInputConsumer(ZtOdPdsDstContext* context) : context_(context) {}
    virtual ~ZtOdPdsDstInputConsumer() = default;

    ZtOdPdsDstContext* GetContext() const { return context_; }

private:
    ZtOdPdsDstContext* context_;
};
