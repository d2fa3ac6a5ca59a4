#ifndef VELTRANE_TESTS_SUPPORT_FAULTS_CATALOGUE_H
#define VELTRANE_TESTS_SUPPORT_FAULTS_CATALOGUE_H

#include <string>
#include <vector>

namespace veltrane::tests {

/// A message as the copy of the catalogue has it that was made on its own: a line of tests/diagnostics/messages.tsv.
struct CataloguedMessage {
    int id;
    std::string name;
    std::string pattern;
    std::size_t parameters;
    std::string formatted; ///< the text with the parameters value0, value1 and so on
};

/// The copy, in the order of its file.
const std::vector<CataloguedMessage>& CopyOfTheCatalogue();

/// The text of a message with these parameters as the copy has it, or what is wrong with them.
std::string CataloguedText(int id, const std::vector<std::string>& parameters);

} // namespace veltrane::tests

#endif
