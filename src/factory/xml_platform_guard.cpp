#include "factory/xml_platform_guard.h"

#include "diagnostics/raise.h"
#include "factory/xml_text.h"

#include <MCVeltrane_900/ModelFactory.h>

#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLException.hpp>
#include <xercesc/util/XMLUni.hpp>

#include <mutex>

namespace veltrane::factory {

using MCVeltrane_900::ModelFactory;

platform::RecursiveMutex& ModelMutex() {
    static platform::RecursiveMutex mutex;
    return mutex;
}

namespace {

/// Makes the mutex while the library is loaded, so that it dies after every static object that is made later.
[[maybe_unused]] platform::RecursiveMutex& gModelMutex = ModelMutex();

/// Whether the XML platform started, and its message when it didn't. The exception is gone when this returns: it has
/// its text in the memory of the platform that is ended next.
bool TryToStart(std::string& message) {
    try {
        StartXmlPlatform();
        return true;
    } catch (const xercesc::XMLException& failure) {
        message = ToUtf8(failure.getMessage());
        return false;
    }
}

} // namespace

void StartXmlPlatform() {
    xercesc::XMLPlatformUtils::Initialize(xercesc::XMLUni::fgXercescDefaultLocale, nullptr, nullptr, nullptr);
}

XMLPlatformGuard::XMLPlatformGuard() : fInitialized(ModelFactory::fInitialized) {
    if (fInitialized) {
        if (xercesc::XMLPlatformUtils::fgMemoryManager == nullptr) {
            diagnostics::Raise(260102);
        }
        return;
    }
    ModelMutex().lock();
    std::string message;
    fStarted = TryToStart(message);
    if (!fStarted) {
        xercesc::XMLPlatformUtils::Terminate();
        ModelMutex().unlock();
        diagnostics::RaiseWithDetail(260102, message);
    }
}

XMLPlatformGuard::~XMLPlatformGuard() {
    if (!fInitialized) {
        xercesc::XMLPlatformUtils::Terminate();
        ModelMutex().unlock();
    }
}

void RememberModelNames(const std::vector<std::string>& names) {
    const std::scoped_lock lock(ModelMutex());
    if (ModelFactory::fModelNames.empty()) {
        ModelFactory::fModelNames = names;
    }
}

} // namespace veltrane::factory
