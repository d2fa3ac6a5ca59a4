#ifndef VELTRANE_TESTS_TRANSFORM_FIELDS_H
#define VELTRANE_TESTS_TRANSFORM_FIELDS_H

#include "support/numbers.h"

#include <MCVeltrane_900/CaseRecord.h>
#include <MCVeltrane_900/DateTimeValue.h>
#include <MCVeltrane_900/DictVar.h>
#include <MCVeltrane_900/MissingValueSet.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/Range.h>
#include <MCVeltrane_900/StringValue.h>
#include <MCVeltrane_900/TransformVar.h>
#include <MCVeltrane_900/TransformationDictionary.h>

#include <gtest/gtest.h>

#include <string>

/// Derived fields, the dictionaries they look into and a case to evaluate them on.
namespace veltrane::tests {

using namespace MCVeltrane_900;
using TD = TransformationDictionary;

constexpr auto kNumeric = ScoreDictVar::kNUMERIC_VAR;
constexpr auto kText = ScoreDictVar::STRING_VAR;
constexpr auto kDateTime = ScoreDictVar::DATETIME_VAR;

inline ScoreValue* Num(double number) {
    return new NumericValue(number);
}
inline ScoreValue* Txt(const std::string& text) {
    return new StringValue(text);
}

/// A value as one text: its kind, then its content. "null" for none.
std::string Written(const ScoreValue* value);

/// What Display writes of a field.
std::string Shown(const TransformVar& field);

class DerivedFields : public ::testing::Test {
protected:
    /// An input field in the data dictionary, and its value in the record unless that is null.
    DictVar& Input(const std::string& name, ScoreDictVar::VariableType type, ScoreValue* value);
    DictVar& Input(const std::string& name, double value) { return Input(name, kNumeric, Num(value)); }
    DictVar& Input(const std::string& name, const char* value) { return Input(name, kText, Txt(value)); }

    /// Makes one number of an input field user-missing.
    static void MakeMissing(DictVar& var, double number);
    static void MakeMissing(DictVar& var, const std::string& text);

    /// A derived field in the transformation dictionary.
    TransformVar& Derived(const std::string& name, ScoreDictVar::VariableType type, const std::string& source,
                          TD::TransExpression kind);

    const ScoreValue* Value(TransformVar& field) { return field.GetTransformedValue(&record, &dictionary, &derived); }
    std::string Result(TransformVar& field) { return Written(Value(field)); }

    CaseRecord record;
    BaseDictionary dictionary;
    TransformationDictionary derived;
};

} // namespace veltrane::tests

#endif
