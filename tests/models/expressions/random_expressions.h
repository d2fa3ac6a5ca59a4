#ifndef VELTRANE_TESTS_MODELS_RANDOM_EXPRESSIONS_H
#define VELTRANE_TESTS_MODELS_RANDOM_EXPRESSIONS_H

#include "kit/document/document_text.h"
#include "kit/expressions/expression_reader.h"
#include "support/dom.h"

#include <array>
#include <memory>
#include <optional>
#include <random>
#include <string>

/// Random expressions over a few fields, and random values for these.
namespace veltrane::tests {

using Random = std::mt19937_64;

int Below(Random& random, int bound);

inline constexpr std::array kFieldNames{"x", "y", "n", "b", "s"};
inline constexpr std::array kFieldTypes{veltrane_kit::DataType::DOUBLE, veltrane_kit::DataType::DOUBLE,
                                        veltrane_kit::DataType::INTEGER, veltrane_kit::DataType::BOOLEAN,
                                        veltrane_kit::DataType::STRING};

/// @param depth how deep expressions lie within it at most
std::string RandomNumber(Random& random, int depth);
std::string RandomTruth(Random& random, int depth);

/// The call of a function.
std::string Apply(const std::string& function, const std::string& arguments);

/// A value of a field.
veltrane_kit::Value RandomValue(Random& random, veltrane_kit::DataType type);

/// An expression that was read, and what it needs for a case. The slots of the fields are their places.
struct ReadExpression {
    /// @param functions  elements DefineFunction
    /// @param areOrdinal whether the texts have an order, which lists some of them
    ReadExpression(const std::string& text, bool areTyped, const std::string& functions = {}, bool areOrdinal = false);

    ParsedXml document;
    veltrane_kit::FrameLayout layout;
    veltrane_kit::DefinedFunctions functions;
    veltrane_kit::ExpressionPtr expression;
    std::unique_ptr<veltrane_kit::Frame> frame;
};

} // namespace veltrane::tests

#endif
