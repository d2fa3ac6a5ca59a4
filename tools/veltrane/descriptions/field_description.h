#ifndef VELTRANE_HOST_FIELD_DESCRIPTION_H
#define VELTRANE_HOST_FIELD_DESCRIPTION_H

#include "documents/xml_tree.h"
#include "formulas/expression_text.h"

#include <nlohmann/json.hpp>

#include <string>
#include <vector>

namespace veltrane::host {

/// A DataField: name, label, type, level, the values that are missing, invalid and valid, and the ranges of valid
/// numbers, whose infinite bounds are null.
nlohmann::ordered_json DescribeDataField(const XmlNode& field);

/// The same with the part that the field plays in a model, and what is done with its values.
/// @param field     an element without a name where the dictionary has no such field
/// @param mining    its MiningField; an element without a name for none
/// @param otherRole its role where the MiningField doesn't tell one
nlohmann::ordered_json DescribeInput(const XmlNode& field, const XmlNode& mining, const std::string& otherRole);

/// A target with the adjustment of its predictions.
/// @param target its Target; an element without a name for none
nlohmann::ordered_json DescribeTarget(const XmlNode& field, const XmlNode& mining, const XmlNode& target);

/// A DerivedField with its expression as a formula.
/// @param isLocal whether it belongs to one model
nlohmann::ordered_json DescribeDerivedField(const XmlNode& field, bool isLocal, const StatedTypes& types);

/// A DefineFunction: name, type, level, parameters, and its expression as a formula.
/// @param types of the document; inside, a function knows its parameters alone
nlohmann::ordered_json DescribeFunction(const XmlNode& function, StatedTypes types);

} // namespace veltrane::host

#endif
