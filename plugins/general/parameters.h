#ifndef VELTRANE_PLUGINS_GENERAL_PARAMETERS_H
#define VELTRANE_PLUGINS_GENERAL_PARAMETERS_H

#include "kit/document/element.h"

#include <cstddef>
#include <string>
#include <unordered_map>
#include <vector>

namespace veltrane_general {

/// The ParameterList of a model.
class Parameters {
public:
    /// @throws VTException 260120, 260285, 260153 for attributes; 260203 for a name that comes twice; 260159 for an
    ///         element that has no place here
    explicit Parameters(const veltrane_kit::Element& list);

    std::size_t Count() const { return fReferencePoints.size(); }

    /// What the parameter's value is compared with in a Cox regression.
    double ReferencePoint(std::size_t parameter) const { return fReferencePoints[parameter]; }

    /// The place of the parameter that an attribute names.
    /// @throws VTException 260120, 260285 for the attribute, 260153 for a name that no parameter has
    std::size_t Require(const veltrane_kit::Element& element, const XMLCh* attribute) const;

private:
    std::unordered_map<std::string, std::size_t> fPlaces;
    std::vector<double> fReferencePoints;
};

} // namespace veltrane_general

#endif
