#ifndef VELTRANE_TRANSLATORS_DOCUMENT_TEXT_H
#define VELTRANE_TRANSLATORS_DOCUMENT_TEXT_H

#include <MCVeltrane_900/BaseTranslator.h>

#include <string>

namespace veltrane::translators {

/// The text of a document as one translator reads it, lent to readers that are not members of the translator. Borrows
/// the translator.
class DocumentText {
public:
    /// BaseTranslator::ToString, to which only translators have access.
    using Transcode = std::string (MCVeltrane_900::BaseTranslator::*)(const XMLCh*);

    DocumentText(MCVeltrane_900::BaseTranslator& translator, Transcode transcode)
        : fTranslator(translator), fTranscode(transcode) {}

    std::string operator()(const XMLCh* text) const { return (fTranslator.*fTranscode)(text); }

    /// An attribute's text; empty when it is absent.
    std::string Attribute(const xercesc::DOMElement* element, const char* name) const;

    /// An attribute's text, which may be empty.
    /// @throws VTException 260120 when the attribute is absent
    std::string Forced(const xercesc::DOMElement* element, const char* name) const;

    std::string Tag(const xercesc::DOMElement* element) const;

    /// The value of the node's first child; empty when it has no child, or one without a value.
    std::string FirstChildValue(const xercesc::DOMNode* node) const;

private:
    MCVeltrane_900::BaseTranslator& fTranslator;
    Transcode fTranscode;
};

} // namespace veltrane::translators

#endif
