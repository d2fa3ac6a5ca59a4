#ifndef VELTRANE_TESTS_SUPPORT_STOPPED_XML_H
#define VELTRANE_TESTS_SUPPORT_STOPPED_XML_H

#include <xercesc/util/PlatformUtils.hpp>

namespace veltrane::tests {

/// Stops the XML platform for a test of what works without it, and starts it again where it was running.
class StoppedXml {
public:
    StoppedXml() : running(xercesc::XMLPlatformUtils::fgMemoryManager != nullptr) {
        if (running) {
            xercesc::XMLPlatformUtils::Terminate();
        }
    }
    ~StoppedXml() {
        if (running) {
            xercesc::XMLPlatformUtils::Initialize();
        }
    }
    StoppedXml(const StoppedXml&) = delete;
    StoppedXml& operator=(const StoppedXml&) = delete;

private:
    bool running;
};

} // namespace veltrane::tests

#endif
