#include "factory/documents/xml_faults.h"

#include "support/allocations.h"

#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMUserDataHandler.hpp>
#include <xercesc/dom/impl/DOMDeepNodeListImpl.hpp>
#include <xercesc/dom/impl/DOMElementImpl.hpp>
#include <xercesc/parsers/AbstractDOMParser.hpp>
#include <xercesc/parsers/SAX2XMLReaderImpl.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/RuntimeException.hpp>

#include <atomic>
#include <cstdlib>
#include <dlfcn.h>
#include <new>
#include <string>

#define VELTRANE_IN_FRONT __attribute__((visibility("default")))

namespace veltrane::tests {
namespace {

std::atomic<XmlFault> gFault{XmlFault::NONE};
std::atomic<std::size_t> gAllocationsBefore{0};
std::atomic<int> gStarted{0};
std::atomic<int> gScans{0};

/// Derives from nothing that could be caught by a name.
struct UnknownFault {};

std::atomic<int> gDocumentsMade{0};
std::atomic<int> gDocumentsGone{0};

/// Is told when a document goes.
class DocumentWatcher : public xercesc::DOMUserDataHandler {
public:
    void handle(DOMOperationType operation, const XMLCh*, void*, const xercesc::DOMNode*, xercesc::DOMNode*) override {
        gDocumentsGone += operation == NODE_DELETED ? 1 : 0;
    }
};

void WatchDocument(xercesc::DOMDocument* document) {
    static DocumentWatcher watcher;
    if (document != nullptr) {
        ++gDocumentsMade;
        document->setUserData(u"veltrane-tests-watcher", &watcher, &watcher);
    }
}

/// The parser's own operation. `name` is its mangled name behind that of the parser's namespace.
template <typename Function>
Function Real(const std::string& prefix, const std::string& name) {
    const std::string space =
        "xercesc_" + std::to_string(XERCES_VERSION_MAJOR) + "_" + std::to_string(XERCES_VERSION_MINOR);
    void* address = dlsym(RTLD_NEXT, (prefix + std::to_string(space.size()) + space + name).c_str());
    if (address == nullptr) {
        std::abort();
    }
    return reinterpret_cast<Function>(address);
}

} // namespace

const char* const kXmlFaultMessage = "NULL pointer";

SetXmlFault::SetXmlFault(XmlFault fault, std::size_t before) {
    gAllocationsBefore = before;
    gFault = fault;
}
SetXmlFault::~SetXmlFault() {
    gFault = XmlFault::NONE;
}

int ScansBegun() {
    return gScans;
}

int PlatformsStarted() {
    return gStarted;
}

Documents DocumentsSoFar() {
    return {gDocumentsMade, gDocumentsGone};
}

} // namespace veltrane::tests

using namespace veltrane::tests;

XERCES_CPP_NAMESPACE_BEGIN

VELTRANE_IN_FRONT void XMLPlatformUtils::Initialize(const char* const locale, const char* const nlsHome,
                                                    PanicHandler* const panicHandler,
                                                    MemoryManager* const memoryManager) {
    using Function = void (*)(const char*, const char*, PanicHandler*, MemoryManager*);
    static const auto real =
        Real<Function>("_ZN", "16XMLPlatformUtils10InitializeEPKcS2_PNS_12PanicHandlerEPNS_13MemoryManagerE");
    if (gFault == XmlFault::MEMORY_RUNS_OUT_IN_THE_START) {
        const veltrane::tests::FailingAllocation failing(veltrane::tests::gAllocationsBefore);
        return real(locale, nlsHome, panicHandler, memoryManager);
    }
    real(locale, nlsHome, panicHandler, memoryManager);
    ++gStarted;
    switch (gFault) {
    case XmlFault::PLATFORM_FAILS:
        throw RuntimeException(__FILE__, __LINE__, XMLExcepts::CPtr_PointerIsZero);
    case XmlFault::PLATFORM_HAS_NO_MEMORY:
        throw OutOfMemoryException();
    case XmlFault::PLATFORM_HAS_NO_MANAGER:
        throw std::bad_alloc();
    case XmlFault::PLATFORM_THROWS_ANYTHING:
        throw UnknownFault();
    default:
        break;
    }
}

VELTRANE_IN_FRONT void XMLPlatformUtils::Terminate() {
    static const auto real = Real<void (*)()>("_ZN", "16XMLPlatformUtils9TerminateEv");
    --gStarted;
    real();
}

VELTRANE_IN_FRONT void AbstractDOMParser::parse(const InputSource& source) {
    using Function = void (*)(AbstractDOMParser*, const InputSource&);
    static const auto real = Real<Function>("_ZN", "17AbstractDOMParser5parseERKNS_11InputSourceE");
    try {
        real(this, source);
    } catch (...) {
        veltrane::tests::WatchDocument(getDocument());
        throw;
    }
    veltrane::tests::WatchDocument(getDocument());
    if (gFault == XmlFault::PARSE_FAILS) {
        throw RuntimeException(__FILE__, __LINE__, XMLExcepts::CPtr_PointerIsZero);
    }
}

VELTRANE_IN_FRONT void SAX2XMLReaderImpl::parse(const InputSource& source) {
    using Function = void (*)(SAX2XMLReaderImpl*, const InputSource&);
    static const auto real = Real<Function>("_ZN", "17SAX2XMLReaderImpl5parseERKNS_11InputSourceE");
    ++gScans;
    real(this, source);
}

VELTRANE_IN_FRONT const XMLCh* DOMElementImpl::getTagName() const {
    using Function = const XMLCh* (*)(const DOMElementImpl*);
    static const auto real = Real<Function>("_ZNK", "14DOMElementImpl10getTagNameEv");
    if (gFault == XmlFault::TAG_IS_EMPTY) {
        return XMLUni::fgZeroLenString;
    }
    return gFault == XmlFault::TAG_IS_NULL ? nullptr : real(this);
}

VELTRANE_IN_FRONT DOMNode* DOMDeepNodeListImpl::item(XMLSize_t index) const {
    using Function = DOMNode* (*)(const DOMDeepNodeListImpl*, XMLSize_t);
    static const auto real = Real<Function>("_ZNK", "19DOMDeepNodeListImpl4itemEm");
    // The length of a list is found by asking for its last element.
    return gFault == XmlFault::LIST_HAS_NO_ELEMENT && index == 0 ? nullptr : real(this, index);
}

XERCES_CPP_NAMESPACE_END
