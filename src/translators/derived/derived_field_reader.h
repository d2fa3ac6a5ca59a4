#ifndef VELTRANE_TRANSLATORS_DERIVED_FIELD_READER_H
#define VELTRANE_TRANSLATORS_DERIVED_FIELD_READER_H

#include "transform/derivation/derivation_costs.h"
#include "translators/frame/document_text.h"
#include "translators/frame/field_lookup.h"

#include <MCVeltrane_900/PMMLTranslator.h>
#include <MCVeltrane_900/TransformVar.h>
#include <MCVeltrane_900/TransformationDictionary.h>

#include <memory>
#include <string>

namespace veltrane::translators {

/// Reads DerivedField elements one after another into a TransformationDictionary. Each field sees the data dictionary
/// and the fields read before it. All arguments are borrowed.
class DerivedFieldReader {
public:
    DerivedFieldReader(MCVeltrane_900::PMMLTranslator& translator, const DocumentText& text,
                       const MCVeltrane_900::ScoreDictionary* dictionary,
                       MCVeltrane_900::TransformationDictionary& derived)
        : fTranslator(translator), fText(text), fDictionary(dictionary), fDerived(derived) {}

    /// Adds one field. On a failure the dictionary holds the fields before it.
    void Read(xercesc::DOMElement* element);

private:
    /// One field while it is read.
    ///
    /// A text field that calls itself continuous has no variable. The conflict is not reported where it is found: the
    /// walk over the children goes on, and whichever child needs the variable first, or else the end of the field,
    /// reports it. So another fault in a child ahead of that one is the one that the caller hears of.
    struct Field {
        xercesc::DOMElement* element;
        std::string name;
        std::unique_ptr<MCVeltrane_900::TransformVar> var;
        bool valuesSeen = false;
        bool expressionSeen = false;

        /// @throws VTException 260211 when there is no variable
        MCVeltrane_900::TransformVar& Var() const;
    };

    using ReadExpression = void (DerivedFieldReader::*)(xercesc::DOMElement*, Field&);
    using SourcedReader = std::string (MCVeltrane_900::PMMLTranslator::*)(xercesc::DOMElement*,
                                                                          MCVeltrane_900::ScoreDictVar*,
                                                                          const MCVeltrane_900::ScoreDictionary*,
                                                                          const MCVeltrane_900::ScoreDictionary*);

    struct Expression {
        const char* tag;
        ReadExpression read;
    };
    static const Expression kExpressions[];

    static const Expression* FindExpression(const xercesc::DOMElement* child);

    std::string ReadName(xercesc::DOMElement* element) const;
    void CheckCosts(const Field& field);
    std::unique_ptr<MCVeltrane_900::TransformVar> MakeVar(xercesc::DOMElement* element, const std::string& name);
    bool SetDataType(xercesc::DOMElement* element, MCVeltrane_900::TransformVar& var);
    void ReadChild(xercesc::DOMElement* child, Field& field);
    void ReadExtension(xercesc::DOMElement* extension, Field& field);
    void ReadUsageType(xercesc::DOMElement* extension, Field& field);
    void ReadValues(Field& field);
    void ReadOther(xercesc::DOMElement* child, Field& field);

    void ReadApply(xercesc::DOMElement* apply, Field& field);
    void ReadAggregate(xercesc::DOMElement* aggregate, Field& field);
    void ReadConstant(xercesc::DOMElement* constant, Field& field);
    void ReadFieldRef(xercesc::DOMElement* fieldRef, Field& field);
    template <SourcedReader Reader, MCVeltrane_900::TransformationDictionary::TransExpression Kind>
    void ReadSourced(xercesc::DOMElement* expression, Field& field);

    MCVeltrane_900::PMMLTranslator& fTranslator;
    DocumentText fText;
    const MCVeltrane_900::ScoreDictionary* fDictionary;
    MCVeltrane_900::TransformationDictionary& fDerived;
    transform::DerivationCosts fCosts;
};

} // namespace veltrane::translators

#endif
