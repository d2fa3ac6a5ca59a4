#ifndef VELTRANE_TESTS_MODELS_ANSWERS_H
#define VELTRANE_TESTS_MODELS_ANSWERS_H

#include <string>
#include <vector>

/// Samples of models with one place changed, and the answers that a script beside their tests computes apart.
namespace veltrane::tests {

/// A line of a file of variants.
struct SampleVariant {
    std::string name;
    std::string sample; ///< without folder and ending
    std::string from;   ///< empty for the sample as it is; OUTPUTS for its NeuralOutputs
    std::string to;
};

std::vector<SampleVariant> ReadVariants(const std::string& path);

/// The document of a variant: the sample without white space between its elements, with the change. With coefficients
/// of fields it has no SupportVectors.
std::string DocumentOf(const SampleVariant& variant);

/// Scores the rows of a sample and compares what the outputs hold.
/// @param path a table of variant, row, output and answer; a row whose answers are all empty isn't scored
void ExpectVariantAnswers(const SampleVariant& variant, const std::string& path);

} // namespace veltrane::tests

#endif
