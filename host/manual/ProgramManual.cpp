#include "manual/ProgramManual.h"

#include <algorithm>

std::vector<std::string> ManualChoices(std::string_view alternatives) {
    std::vector<std::string> choices;
    for (std::size_t begin = 0; begin <= alternatives.size();) {
        const std::size_t bar = std::min(alternatives.find('|', begin), alternatives.size());
        choices.emplace_back(alternatives.substr(begin, bar - begin));
        begin = bar + 1;
    }
    return choices;
}
