#ifndef VELTRANE_HOST_EXPRESSION_TEXT_H
#define VELTRANE_HOST_EXPRESSION_TEXT_H

#include "documents/xml_tree.h"

#include <string>

namespace veltrane::host {

/// The expression among the children of a DerivedField or an OutputField; an element without a name for none.
const XmlNode& ExpressionOf(const XmlNode& field);

/// The names of the fields that an expression reads first, as far as it names one by an attribute; else empty.
std::string SourceOf(const XmlNode& expression);

/// An expression of a document as people write it: `(x - 2) / 3`, `if(isMissing(x), 0, x)`. Texts stand in double
/// quotes, fields by their names; tables are cut after a few entries.
std::string ExpressionText(const XmlNode& expression);

} // namespace veltrane::host

#endif
