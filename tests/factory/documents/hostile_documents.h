#ifndef VELTRANE_TESTS_FACTORY_HOSTILE_DOCUMENTS_H
#define VELTRANE_TESTS_FACTORY_HOSTILE_DOCUMENTS_H

#include <ostream>
#include <string>
#include <vector>

namespace veltrane::tests {

/// A document that is made to exhaust what reads it, or to reach for what it must not have.
struct HostileDocument {
    const char* name;
    bool refused; ///< else it is read, and holds neither a model nor a dictionary
    std::string (*make)();
};

inline void PrintTo(const HostileDocument& document, std::ostream* out) {
    *out << document.name;
}

const std::vector<HostileDocument>& HostileDocuments();

} // namespace veltrane::tests

#endif
