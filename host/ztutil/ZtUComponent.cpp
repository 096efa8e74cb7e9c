#include "ztutil/ZtUComponent.h"

int ZtUComponent::Initialise(const char* name) {
    if (starts_++ == 0)
        name_.SetString(name);
    return 1;
}

int ZtUComponent::Terminate() {
    if (starts_ == 0)
        return 0;
    --starts_;
    return 1;
}
