#pragma once
#include "ztutil/ZtUComponent.h"

#include <initializer_list>

// A component and the name it is started under.
struct ZtOdPdsNamedComponent {
    ZtUComponent* component;
    const char* name;
};

// Starts the components in the order given. A start that gives 0 stops the chain and is
// the result; otherwise the result is that of the last start.
int ZtOdPdsStartComponents(std::initializer_list<ZtOdPdsNamedComponent> components);
// Ends the components in the order given (not in reverse), with the same rule.
int ZtOdPdsEndComponents(std::initializer_list<ZtUComponent*> components);
