#ifndef VELTRANE_PLUGINS_KIT_VALIDITY_H
#define VELTRANE_PLUGINS_KIT_VALIDITY_H

#include "kit/document/element.h"

#include <limits>
#include <map>
#include <string>
#include <vector>

namespace veltrane_kit {

/// The bound of a range that has none.
constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// A range of numbers, each end open or closed.
struct ValidInterval {
    double left;
    double right;
    bool leftOpen;
    bool rightOpen;

    bool Holds(double number) const {
        return (leftOpen ? number > left : number >= left) && (rightOpen ? number < right : number <= right);
    }
};

/// What a DataField says of the values that are allowed, as the document has it: without any list everything is.
struct DeclaredValidity {
    std::vector<ValidInterval> intervals;
    std::vector<std::string> validTexts;   ///< Value with no property or "valid"
    std::vector<std::string> invalidTexts; ///< Value with the property "invalid"
};

/// By the name of the field.
using DeclaredValidities = std::map<std::string, DeclaredValidity>;

/// Reads the Interval and Value children of a DataField.
/// @throws VTException 260153 for a closure or a margin that isn't one, 260175 for an Interval without any margin,
///         260120 for a Value without a value
DeclaredValidity ReadValidity(const Element& dataField);

} // namespace veltrane_kit

#endif
