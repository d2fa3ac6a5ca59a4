#ifndef VELTRANE_TESTS_TRANSLATORS_PLAIN_CONDITIONS_H
#define VELTRANE_TESTS_TRANSLATORS_PLAIN_CONDITIONS_H

#include <optional>
#include <string>
#include <vector>

/// Conditions as a reader of a document would work them out by hand: from operator and value alone, without splits.
namespace veltrane::tests {

enum class FieldKind { SCALE, ORDINAL_TEXT, ORDINAL_NUMBER, CATEGORICAL_TEXT, CATEGORICAL_NUMBER };

struct PlainField {
    std::string name;
    FieldKind kind;
    std::vector<std::string> categories; ///< none for a scale

    bool IsText() const { return kind == FieldKind::ORDINAL_TEXT || kind == FieldKind::CATEGORICAL_TEXT; }
    bool IsOrdinal() const { return kind == FieldKind::ORDINAL_TEXT || kind == FieldKind::ORDINAL_NUMBER; }
};

/// A value for each field, in their order; nothing for a missing one.
using PlainCase = std::vector<std::optional<std::string>>;

enum class Truth { IS_TRUE, IS_FALSE, UNKNOWN, TRUE_BY_SURROGATE };

struct PlainCondition {
    enum class Kind { COMPARISON, SET, COMPOUND, IS_TRUE, IS_FALSE };

    Kind kind;
    std::size_t field = 0;
    std::string op;                       ///< of a compound its boolean operator
    std::vector<std::string> values;      ///< the operand, or the elements of a set
    std::vector<PlainCondition> children; ///< of a compound
};

/// The condition as an element of a document.
std::string ToXml(const PlainCondition& condition, const std::vector<PlainField>& fields);

/// A DataDictionary of the fields.
std::string ToXml(const std::vector<PlainField>& fields);

/// A comparison with a missing value is unknown; a compound goes by three-valued logic, and "surrogate" by its first
/// child that is known.
/// @param ordinalAsScale whether ordinal numbers compare as numbers rather than by their place in the list
Truth Evaluate(const PlainCondition& condition, const std::vector<PlainField>& fields, const PlainCase& values,
               bool ordinalAsScale);

} // namespace veltrane::tests

#endif
