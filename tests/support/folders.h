#ifndef VELTRANE_TESTS_SUPPORT_FOLDERS_H
#define VELTRANE_TESTS_SUPPORT_FOLDERS_H

#include <string>

namespace veltrane::tests {

/// The folder of the tests' sources. Only folders.cpp is compiled with this path, so that all other objects are the
/// same in every checkout and come from the compiler's cache.
std::string TestsFolder();

/// tests/samples: documents with rows and the values they must give.
std::string SamplesFolder();

/// tests/models/samples: the same for models.
std::string ModelSamplesFolder();

/// tests/documents: documents written for the tests in the shapes that modelling tools write, laid out as the real
/// ones.
std::string OwnDocumentsFolder();

/// The folder of the real documents, which stand outside the tree and may be missing.
std::string CasesFolder();

} // namespace veltrane::tests

#endif
