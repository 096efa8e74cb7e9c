#pragma once
#include <string>
#include <string_view>

// A GUID made from a name, the same every time for the same name, so that a topic written
// twice is the same topic to the tools that read it. Lower-case hex, as BCF requires;
// marked as a name-based GUID of a custom kind (version 8).
std::string BcfNamedGuid(std::string_view name);
