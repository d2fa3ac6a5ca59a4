#include "factory/documents/xml_platform_guard.h"

#include "diagnostics/raise.h"
#include "factory/documents/xml_text.h"

#include <MCVeltrane_900/ModelFactory.h>

#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLException.hpp>
#include <xercesc/util/XMLMsgLoader.hpp>
#include <xercesc/util/XMLUni.hpp>

#include <atomic>
#include <cstddef>
#include <mutex>
#include <new>

namespace veltrane::factory {

using MCVeltrane_900::ModelFactory;

platform::RecursiveMutex& ModelMutex() {
    static platform::RecursiveMutex mutex;
    return mutex;
}

namespace {

/// Makes the mutex while the library is loaded, so that it dies after every static object that is made later.
[[maybe_unused]] platform::RecursiveMutex& gModelMutex = ModelMutex();

/// More than the XML platform takes for itself. A start that runs out of memory half way can't be undone, and from some
/// point on it ends the process.
constexpr std::size_t kStartMemory = 1U << 20;

/// Set when a start broke off half way. The platform counts as started then, but it can be neither used nor ended.
std::atomic<bool> gHalfStarted{false};

using xercesc::XMLPlatformUtils;

/// The messages get their locale right before the part of a start that the end relies on, and lose it at the end.
bool IsWhole() {
    return XMLPlatformUtils::fgMemoryManager != nullptr && xercesc::XMLMsgLoader::getLocale() != nullptr;
}

/// Fails in front of a start that could not succeed; nothing is begun then.
void RequireStartable() {
    if (gHalfStarted) {
        throw xercesc::OutOfMemoryException();
    }
    ::operator delete(::operator new(kStartMemory));
}

void BeginStart() {
    try {
        XMLPlatformUtils::Initialize(xercesc::XMLUni::fgXercescDefaultLocale, nullptr, nullptr, nullptr);
    } catch (...) {
        gHalfStarted = XMLPlatformUtils::fgMemoryManager != nullptr && !IsWhole();
        throw;
    }
    if (XMLPlatformUtils::fgMemoryManager == nullptr) {
        // A start before this one failed at its first step.
        gHalfStarted = true;
        throw xercesc::OutOfMemoryException();
    }
}

/// How far a start of the XML platform came, and its message when it failed. The exception is gone by then: it has its
/// text in the memory of the platform that is ended next.
struct StartOutcome {
    bool done = false;
    bool mustBeEnded = false;
    std::string message;
};

StartOutcome TryToStart() {
    StartOutcome outcome;
    bool begun = false;
    try {
        RequireStartable();
        begun = true;
        BeginStart();
        outcome.done = true;
    } catch (const xercesc::XMLException& failure) {
        outcome.message = ToUtf8(failure.getMessage());
        outcome.mustBeEnded = !gHalfStarted;
    } catch (const xercesc::OutOfMemoryException& failure) {
        outcome.message = ToUtf8(failure.getMessage());
    } catch (const std::bad_alloc&) {
        outcome.message = ToUtf8(xercesc::OutOfMemoryException().getMessage());
    } catch (...) {
        // it has no message that is known here
    }
    if (!outcome.done) {
        outcome.mustBeEnded = outcome.mustBeEnded || (begun && IsWhole());
    }
    return outcome;
}

} // namespace

void StartXmlPlatform() {
    RequireStartable();
    BeginStart();
}

XMLPlatformGuard::XMLPlatformGuard() : fInitialized(ModelFactory::fInitialized) {
    if (fInitialized) {
        if (XMLPlatformUtils::fgMemoryManager == nullptr) {
            diagnostics::Raise<diagnostics::Message::CANNOT_START_PARSER>();
        }
        return;
    }
    std::unique_lock lock(ModelMutex());
    const StartOutcome outcome = TryToStart();
    fStarted = outcome.done;
    if (!fStarted) {
        if (outcome.mustBeEnded) {
            XMLPlatformUtils::Terminate();
        }
        diagnostics::RaiseWithDetail<diagnostics::Message::CANNOT_START_PARSER>(outcome.message);
    }
    lock.release();
}

XMLPlatformGuard::~XMLPlatformGuard() {
    if (!fInitialized) {
        XMLPlatformUtils::Terminate();
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
