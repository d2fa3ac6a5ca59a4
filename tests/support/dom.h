#ifndef VELTRANE_TESTS_SUPPORT_DOM_H
#define VELTRANE_TESTS_SUPPORT_DOM_H

#include <xercesc/dom/DOM.hpp>

#include <memory>
#include <string>

/// Documents from strings, for tests of what reads a DOM.
namespace veltrane::tests {

/// Starts the XML platform once for the process. Safe to call again; the platform stays until the process ends.
void StartXml();

/// Owner of a parsed document. The document dies with it.
class ParsedXml {
public:
    explicit ParsedXml(const std::string& text);
    ~ParsedXml();
    ParsedXml(ParsedXml&&) noexcept;
    ParsedXml& operator=(ParsedXml&&) noexcept;

    xercesc::DOMDocument* Document() const;
    xercesc::DOMElement* Root() const;

    /// The first element with this tag in document order, the root included; null when there is none.
    xercesc::DOMElement* Find(const char* tag) const;

    xercesc::DOMDocument* operator->() const { return Document(); }

private:
    struct State;
    std::unique_ptr<State> state;
};

/// Parses a document, starting the XML platform if need be. Text that is not well-formed throws std::runtime_error.
ParsedXml ParseXml(const std::string& text);

} // namespace veltrane::tests

#endif
