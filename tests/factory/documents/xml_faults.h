#ifndef VELTRANE_TESTS_FACTORY_XML_FAULTS_H
#define VELTRANE_TESTS_FACTORY_XML_FAULTS_H

#include <cstddef>

/// Faults of the XML parser that no document brings about. The test program has operations of the parser under their
/// own names in front of the parser's library, and each goes on to the real one unless its fault is set.
namespace veltrane::tests {

enum class XmlFault {
    NONE,
    PLATFORM_FAILS,               ///< the start of the XML platform throws an XMLException, having begun
    PLATFORM_HAS_NO_MEMORY,       ///< the start throws what the parser makes of memory that ran out
    PLATFORM_HAS_NO_MANAGER,      ///< the start throws std::bad_alloc
    PLATFORM_THROWS_ANYTHING,     ///< the start throws what nobody knows
    MEMORY_RUNS_OUT_IN_THE_START, ///< an allocation within the start fails
    PARSE_FAILS,                  ///< a parse throws an XMLException at its end
    TAG_IS_EMPTY,                 ///< an element has an empty tag name
    TAG_IS_NULL,                  ///< an element has no tag name
    LIST_HAS_NO_ELEMENT,          ///< a list of elements has no first one, whatever its length
};

/// The message of the exceptions that the faults throw.
extern const char* const kXmlFaultMessage;

/// Sets a fault for its lifetime.
class SetXmlFault {
public:
    /// @param before how many allocations go well within the start of the platform, for the fault of that kind
    explicit SetXmlFault(XmlFault fault, std::size_t before = 0);
    ~SetXmlFault();
    SetXmlFault(const SetXmlFault&) = delete;
    SetXmlFault& operator=(const SetXmlFault&) = delete;
};

/// How many scans of documents, which make no tree, were begun.
int ScansBegun();

/// How often the XML platform was started, and ended, less the other.
int PlatformsStarted();

/// The documents that parsers have made, well-formed or not, and how many of them are gone: a document goes with its
/// parser, unless somebody takes it.
struct Documents {
    int made = 0;
    int gone = 0;
};
Documents DocumentsSoFar();

} // namespace veltrane::tests

#endif
