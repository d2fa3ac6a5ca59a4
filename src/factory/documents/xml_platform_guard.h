#ifndef VELTRANE_FACTORY_XML_PLATFORM_GUARD_H
#define VELTRANE_FACTORY_XML_PLATFORM_GUARD_H

#include "platform/platform.h"

#include <string>
#include <vector>

namespace veltrane::factory {

/// The factory's one lock: process-wide, recursive, without time limit. It is there before anything can use the
/// factory, during static initialisation too.
platform::RecursiveMutex& ModelMutex();

/// Starts the XML platform for the life of the process or of a guard.
/// @throws xercesc::XMLException and what else the start fails with, as it comes; std::bad_alloc with the platform as
///         it was when there is not memory enough for it; xercesc::OutOfMemoryException ever after a start that broke
///         off half way
void StartXmlPlatform();

/// Unless ModelFactory::Initialize has run, starts the XML platform and holds the factory's lock for its scope.
class XMLPlatformGuard {
public:
    /// @throws VTException 260102 when the XML platform doesn't start, whatever its start throws, or when it was ended
    ///         after Initialize; platform and lock are then as they were
    XMLPlatformGuard();
    ~XMLPlatformGuard();
    XMLPlatformGuard(const XMLPlatformGuard&) = delete;
    XMLPlatformGuard& operator=(const XMLPlatformGuard&) = delete;

private:
    bool fStarted = false;
    bool fInitialized;
};

/// Makes `names` the process-wide list of model names, unless there is one.
void RememberModelNames(const std::vector<std::string>& names);

} // namespace veltrane::factory

#endif
