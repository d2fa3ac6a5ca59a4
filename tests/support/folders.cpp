#include "support/folders.h"

namespace veltrane::tests {

std::string TestsFolder() {
    return VELTRANE_TESTS_FOLDER;
}

std::string SamplesFolder() {
    return TestsFolder() + "/samples";
}

std::string ModelSamplesFolder() {
    return TestsFolder() + "/models/samples";
}

std::string OwnDocumentsFolder() {
    return TestsFolder() + "/documents";
}

std::string CasesFolder() {
    return TestsFolder() + "/../../shared/cases";
}

} // namespace veltrane::tests
