#ifndef VELTRANE_TRANSLATORS_PREDICATE_OPERAND_H
#define VELTRANE_TRANSLATORS_PREDICATE_OPERAND_H

#include "translators/frame/document_text.h"

#include <string>

namespace veltrane::translators {

/// The child index of every split that a document makes: some child means true, none means false.
inline constexpr int kOnlyChild = 0;

/// What a SimplePredicate asks for, before its variable is looked at.
enum class OperandForm {
    IS_MISSING,     ///< "isMissing", without a value
    IS_NOT_MISSING, ///< "isNotMissing", without a value
    EMPTY,          ///< "equal" with an empty value
    COMPARISON,     ///< everything else; the operator can be any text and the value absent
};

/// The operator and the value of a SimplePredicate as they stand in the document.
struct PredicateOperand {
    OperandForm form;
    const XMLCh* op;
    const XMLCh* value; ///< null when the attribute is absent
};

/// Reads the two attributes.
/// @param[out] op, value their texts; `value` stays as it is when the attribute is absent
/// @throws VTException 260120 without an operator, 260212 for a value beside an operator that takes none, 260171 for an
///         empty value under another operator than "equal"
PredicateOperand ReadOperand(const DocumentText& text, const xercesc::DOMElement* predicate, std::string& op,
                             std::string& value);

/// The node as an element, when it is one of this tag; else null. The node may be null.
xercesc::DOMElement* AsElement(xercesc::DOMNode* node, const char* tag);

/// The node as an element of any tag.
/// @param tag the tag that was expected, for the message
/// @throws VTException 260114 when it is null or no element
xercesc::DOMElement* RequireElement(xercesc::DOMNode* node, const char* tag);

} // namespace veltrane::translators

#endif
