#include "support/dom.h"

#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/sax/HandlerBase.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLString.hpp>

#include <stdexcept>

namespace veltrane::tests {
namespace {

struct ThrowingHandler : xercesc::HandlerBase {
    void error(const xercesc::SAXParseException& failure) override { Fail(failure); }
    void fatalError(const xercesc::SAXParseException& failure) override { Fail(failure); }

    [[noreturn]] static void Fail(const xercesc::SAXParseException& failure) {
        char* text = xercesc::XMLString::transcode(failure.getMessage());
        std::string message = text;
        xercesc::XMLString::release(&text);
        throw std::runtime_error("not well-formed: " + message);
    }
};

} // namespace

void StartXml() {
    static const bool started = (xercesc::XMLPlatformUtils::Initialize(), true);
    static_cast<void>(started);
}

struct ParsedXml::State {
    xercesc::XercesDOMParser parser;
    ThrowingHandler handler;
};

ParsedXml::ParsedXml(const std::string& text) {
    StartXml();
    state = std::make_unique<State>();
    state->parser.setErrorHandler(&state->handler);
    state->parser.setCreateEntityReferenceNodes(false);
    xercesc::MemBufInputSource source(reinterpret_cast<const XMLByte*>(text.data()), text.size(), "test", false);
    state->parser.parse(source);
}

ParsedXml::~ParsedXml() = default;
ParsedXml::ParsedXml(ParsedXml&&) noexcept = default;
ParsedXml& ParsedXml::operator=(ParsedXml&&) noexcept = default;

xercesc::DOMDocument* ParsedXml::Document() const {
    return state->parser.getDocument();
}

xercesc::DOMElement* ParsedXml::Root() const {
    return Document()->getDocumentElement();
}

xercesc::DOMElement* ParsedXml::Find(const char* tag) const {
    XMLCh* name = xercesc::XMLString::transcode(tag);
    xercesc::DOMNodeList* found = Document()->getElementsByTagName(name);
    xercesc::XMLString::release(&name);
    return static_cast<xercesc::DOMElement*>(found->item(0));
}

ParsedXml ParseXml(const std::string& text) {
    return ParsedXml(text);
}

} // namespace veltrane::tests
