// Of which kind a field has to be that an expression looks at, and what a document may look for in it.
#include "models/columns/column_document.h"
#include "models/kit/scoring.h"
#include "support/faults/failure.h"
#include "support/rows.h"

#include <gtest/gtest.h>

#include <string>

using namespace veltrane::tests;
using enum MCVeltrane_900::Message;

namespace {

/// A field f of a type, g which is derived of it, and a function with a parameter p of the type; what is asked for is
/// r.
std::string DictionaryOf(const std::string& type, const std::string& expression, const std::string& body) {
    return "<PMML version='4.4'><DataDictionary><DataField name='f' optype='categorical' dataType='" + type +
           "'/></DataDictionary><TransformationDictionary><DefineFunction name='called' dataType='double'>"
           "<ParameterField name='p' dataType='" +
           type + "'/>" + body + "</DefineFunction><DerivedField name='g' optype='categorical' dataType='" + type +
           "'><FieldRef field='f'/></DerivedField><DerivedField name='r' optype='continuous' dataType='double'>" +
           expression + "</DerivedField></TransformationDictionary>";
}

std::string DocumentOf(const std::string& type, const std::string& expression, const std::string& body) {
    return DictionaryOf(type, expression, body) +
           "<RegressionModel functionName='regression'><MiningSchema><MiningField name='f'/></MiningSchema>"
           "<RegressionTable intercept='0'><NumericPredictor name='r' coefficient='1'/></RegressionTable>"
           "</RegressionModel></PMML>";
}

const std::string kOne = "<Constant>1</Constant>";
const std::string kCall = "<Apply function='called'><FieldRef field='f'/></Apply>";

std::string Indicator(const std::string& field, const std::string& value) {
    return "<NormDiscrete field='" + field + "' value='" + value + "'/>";
}

std::string Norm(const std::string& field) {
    return "<NormContinuous field='" + field +
           "'><LinearNorm orig='0' norm='0'/><LinearNorm orig='2' norm='1'/></NormContinuous>";
}

std::string Bins(const std::string& field) {
    return "<Discretize field='" + field +
           "' defaultValue='0'><DiscretizeBin binValue='1'><Interval closure='closedOpen' leftMargin='1'/>"
           "</DiscretizeBin></Discretize>";
}

struct Sought {
    const char* name;
    const char* type;
    const char* value;
};

class SoughtValue : public testing::TestWithParam<Sought> {};

TEST_P(SoughtValue, IsOneOfTheFieldsType) {
    const char* const type = GetParam().type;
    const char* const value = GetParam().value;
    const Failure failure(INVALID_ATTRIBUTE_VALUE_IN, value, "value", "NormDiscrete");
    ExpectFailure([&] { ReadModel(DocumentOf(type, Indicator("f", value), kOne)); }, failure);
    ExpectFailure([&] { ReadModel(DocumentOf(type, Indicator("g", value), kOne)); }, failure);
    ExpectFailure([&] { ReadModel(DocumentOf(type, kCall, Indicator("p", value))); }, failure);
}

constexpr Sought kSought[] = {
    {"Number", "double", "abc"},
    {"EmptyNumber", "double", ""},
    {"Integer", "integer", "1.5"},
    {"TruthValue", "boolean", "yes"},
    {"Date", "date", "2020-02-30"},
    {"DateOfANumber", "date", "18262"},
    {"Time", "time", "24:00:00"},
    {"Moment", "dateTime", "2020-02-03"},
    {"CountOfDays", "dateDaysSince[1960]", "1960-01-01"},
    {"CountOfSeconds", "timeSeconds", "00:00:01"},
};
INSTANTIATE_TEST_SUITE_P(Types, SoughtValue, testing::ValuesIn(kSought), NameOfRow());

TEST(SoughtValueOfAnyType, IsReadCaseByCase) {
    const std::string body = Indicator("any", "abc");
    Scored scored(Replaced(DocumentOf("string", kCall, body), "name='p' dataType='string'", "name='any'"));
    ASSERT_TRUE(scored.Score({{"f", "abc"}}).IsOK());
    EXPECT_EQ(scored.Number(), 1);
    ASSERT_TRUE(scored.Score({{"f", "ab"}}).IsOK());
    EXPECT_EQ(scored.Number(), 0);
}

TEST(NumberOfAField, IsNotAskedOfATextForANorm) {
    ExpectFailureWithDetail([] { ReadModel(DocumentOf("string", Norm("f"), kOne)); }, {REQUIRES_NUMERIC, "f"},
                            " Attribute 'field' of 'NormContinuous'.");
    ExpectFailureWithDetail([] { ReadModel(DocumentOf("string", Norm("g"), kOne)); }, {REQUIRES_NUMERIC, "g"},
                            " Attribute 'field' of 'NormContinuous'.");
    ExpectFailureWithDetail([] { ReadModel(DocumentOf("string", kCall, Norm("p"))); }, {REQUIRES_NUMERIC, "p"},
                            " Attribute 'field' of 'NormContinuous'.");
}

TEST(NumberOfAField, IsNotAskedOfATextForABin) {
    ExpectFailureWithDetail([] { ReadModel(DocumentOf("string", Bins("f"), kOne)); }, {REQUIRES_NUMERIC, "f"},
                            " Attribute 'field' of 'Discretize'.");
    ExpectFailureWithDetail([] { ReadModel(DocumentOf("string", Bins("g"), kOne)); }, {REQUIRES_NUMERIC, "g"},
                            " Attribute 'field' of 'Discretize'.");
    ExpectFailureWithDetail([] { ReadModel(DocumentOf("string", kCall, Bins("p"))); }, {REQUIRES_NUMERIC, "p"},
                            " Attribute 'field' of 'Discretize'.");
}

struct Counted {
    const char* name;
    const char* type;
    const char* cell;
    double norm; ///< half the number
};

class NumberOfAValue : public testing::TestWithParam<Counted> {};

TEST_P(NumberOfAValue, GoesIntoNormsAndBins) {
    const auto& [name, type, cell, norm] = GetParam();
    Scored normed(DocumentOf(type, Norm("f"), kOne));
    ASSERT_TRUE(normed.Score({{"f", cell}}).IsOK());
    EXPECT_EQ(normed.Number(), norm);
    Scored binned(DocumentOf(type, kCall, Bins("p")));
    ASSERT_TRUE(binned.Score({{"f", cell}}).IsOK());
    EXPECT_EQ(binned.Number(), norm >= 0.5 ? 1 : 0);
}

TEST_P(NumberOfAValue, IsTheSameInColumns) {
    Random random(20281);
    for (const std::string& expression : {Norm("g"), Bins("g"), kCall}) {
        ColumnDocument document(DictionaryOf(GetParam().type, expression, Norm("p")) + "</PMML>");
        document.Fill(random, 50);
        document.Check(7, 3, false);
    }
}

constexpr Counted kCounted[] = {
    {"True", "boolean", "true", 0.5},
    {"False", "boolean", "false", 0.0},
    {"DaysOfADate", "date", "1970-01-04", 1.5},
    {"SecondsOfATime", "time", "00:01:00", 30.0},
    {"SecondsOfAMoment", "dateTime", "1970-01-02T00:00:00", 43200.0},
    {"Integer", "integer", "3", 1.5},
};
INSTANTIATE_TEST_SUITE_P(Types, NumberOfAValue, testing::ValuesIn(kCounted), NameOfRow());

} // namespace
