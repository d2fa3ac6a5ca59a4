#ifndef VELTRANE_TESTS_SUPPORT_FAULTS_FAULT_H
#define VELTRANE_TESTS_SUPPORT_FAULTS_FAULT_H

#include "support/faults/failure.h"
#include "support/rows.h"

#include <ostream>
#include <string>

/// The rows of tables of faults. A table is the parameters of a suite, named by NameOfRow, whose one test reads what
/// the row has with ExpectFailure, so that each row is a test with a name of its own.
namespace veltrane::tests {

/// A document, or the part of one that is wrong, and the failure that it ends in.
struct Fault {
    const char* name;
    std::string document;
    Failure failure;
};

/// A change that Replaced makes in a good document, and the failure that it ends in.
struct FaultyChange {
    const char* name;
    const char* from;
    const char* to;
    Failure failure;
};

inline void PrintTo(const Fault& fault, std::ostream* out) {
    *out << fault.document;
}

inline void PrintTo(const FaultyChange& fault, std::ostream* out) {
    *out << fault.from << " -> " << fault.to;
}

} // namespace veltrane::tests

#endif
