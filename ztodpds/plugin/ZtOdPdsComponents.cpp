#include "plugin/ZtOdPdsComponents.h"

int ZtOdPdsStartComponents(std::initializer_list<ZtOdPdsNamedComponent> components) {
    int result = 0;
    for (const ZtOdPdsNamedComponent& entry : components)
        if ((result = entry.component->Initialise(entry.name)) == 0)
            break;
    return result;
}

int ZtOdPdsEndComponents(std::initializer_list<ZtUComponent*> components) {
    int result = 0;
    for (ZtUComponent* component : components)
        if ((result = component->Terminate()) == 0)
            break;
    return result;
}
