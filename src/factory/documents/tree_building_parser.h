#ifndef VELTRANE_FACTORY_TREE_BUILDING_PARSER_H
#define VELTRANE_FACTORY_TREE_BUILDING_PARSER_H

#include <xercesc/framework/XMLBuffer.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>

namespace veltrane::factory {

/// A DOM parser that builds the tree of the plain one faster.
///
/// The scanner hands a text over in pieces: up to each reference, behind it, and whenever its buffer is full. The plain
/// parser lets the node grow piece by piece, and each growth of a text walks the blocks of the whole document, which
/// makes the lists of quoted categories that some producers write quadratic. Here the pieces are gathered, and made a
/// node before anything else happens to the document.
///
/// Ordinary elements and texts are linked by what is known of their types; all else goes the plain way.
class TreeBuildingParser : public xercesc::XercesDOMParser {
public:
    explicit TreeBuildingParser(xercesc::MemoryManager* memory);

    void docCharacters(const XMLCh* const text, const XMLSize_t length, const bool isCdata) override;
    void ignorableWhitespace(const XMLCh* const text, const XMLSize_t length, const bool isCdata) override;
    void docComment(const XMLCh* const comment) override;
    void docPI(const XMLCh* const target, const XMLCh* const data) override;
    void startElement(const xercesc::XMLElementDecl& element, const unsigned int uriId, const XMLCh* const prefix,
                      const xercesc::RefVectorOf<xercesc::XMLAttr>& attributes, const XMLSize_t attributeCount,
                      const bool isEmpty, const bool isRoot) override;
    void endElement(const xercesc::XMLElementDecl& element, const unsigned int uriId, const bool isRoot,
                    const XMLCh* const prefix) override;
    void startEntityReference(const xercesc::XMLEntityDecl& entity) override;
    void endEntityReference(const xercesc::XMLEntityDecl& entity) override;
    void endDocument() override;
    void resetDocument() override;

protected:
    /// Makes a node of the text that was gathered.
    void FinishText();
    virtual void AddText(const XMLCh* text, XMLSize_t length);
    bool IsOrdinary(const xercesc::XMLElementDecl& element, const xercesc::RefVectorOf<xercesc::XMLAttr>& attributes,
                    XMLSize_t attributeCount) const;

private:
    bool IsInElement() const;
    xercesc::DOMElement* MakeElement(const XMLCh* name, const xercesc::RefVectorOf<xercesc::XMLAttr>& attributes,
                                     XMLSize_t attributeCount);

    xercesc::XMLBuffer fText;
    bool fHasText = false;
};

} // namespace veltrane::factory

#endif
