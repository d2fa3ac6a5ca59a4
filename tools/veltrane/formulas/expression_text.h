#ifndef VELTRANE_HOST_EXPRESSION_TEXT_H
#define VELTRANE_HOST_EXPRESSION_TEXT_H

#include "documents/xml_tree.h"

#include <map>
#include <string>
#include <string_view>

namespace veltrane::host {

/// The types of what expressions name, as far as the document states them: they tell texts from numbers.
struct StatedTypes {
    std::map<std::string, std::string> fields;
    std::map<std::string, std::string> functions; ///< of the document's own: the types of their results

    /// The type of a field; empty where none is stated.
    std::string_view OfField(const std::string& name) const;
};

/// The type that a field states; empty for none.
const std::string& StatedType(const XmlNode& field);

/// The expression among the children of a DerivedField, a DefineFunction or an OutputField; an element without a name
/// for none.
const XmlNode& ExpressionOf(const XmlNode& field);

/// The names of the fields that an expression reads first, as far as it names one by an attribute; else empty.
std::string SourceOf(const XmlNode& expression);

/// An expression of a document as people write it: `(x - 2) / 3`, `if(isMissing(x), 0, x)`. Texts stand in double
/// quotes, fields by their names; tables are cut after a few entries.
/// @param type of the field whose whole expression it is; empty where none is stated
std::string ExpressionText(const XmlNode& expression, const StatedTypes& types, std::string_view type);

} // namespace veltrane::host

#endif
