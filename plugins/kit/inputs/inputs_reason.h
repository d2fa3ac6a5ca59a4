#ifndef VELTRANE_PLUGINS_KIT_INPUTS_REASON_H
#define VELTRANE_PLUGINS_KIT_INPUTS_REASON_H

#include "kit/inputs/inputs.h"

#include <map>
#include <string>
#include <unordered_map>
#include <vector>

namespace veltrane_kit {

/// What only cases that aren't scored ask for.
struct Inputs::Explanations {
    std::unordered_map<std::string, long> fields;  ///< places in the data dictionary
    std::unordered_map<std::string, long> derived; ///< places among the derived fields
    std::map<int, std::vector<int>> inputsOf;      ///< by the slot of a derived field, those that it reads
};

} // namespace veltrane_kit

#endif
