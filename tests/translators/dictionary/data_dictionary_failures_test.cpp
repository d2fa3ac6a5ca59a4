#include "support/faults/fault.h"
#include "support/rows.h"
#include "translators/dictionary/dictionary_reading.h"

namespace {

using namespace veltrane::tests;

constexpr const char* kValid = "<DataField name='g' optype='ordinal'/>";
constexpr const char* kTwoLowerBounds =
    "<Extension name='invalidRangeLower' value='1'/><Extension name='invalidRangeLower' value='2'/>";

class DictionaryFailures : public DictionaryReading {};

TEST_F(DictionaryFailures, WithoutAnElement) {
    ExpectFailure([&] { translator.ParseDictionary(nullptr, false); }, {MISSING_NODE_IN, "DataDictionary", "PMML"});
}

TEST_F(DictionaryFailures, LeaveTheTranslatorUsable) {
    ExpectFault("<DataField/>", {MISSING_ATTRIBUTE_OF, "name", "DataField"});
    EXPECT_EQ(Read(kValid)->Size(), 1);
}

TEST_F(DictionaryFailures, OfNumberOfFields) {
    ExpectFailure([&] { ReadElement("<DataDictionary numberOfFields=''/>"); },
                  {NULL_ATTRIBUTE, "numberOfFields", "DataDictionary"});
    ExpectFailure(
        [&] {
            ReadElement("<DataDictionary numberOfFields='3'><DataField name='a' optype='ordinal'/><Extension/>"
                        "<DataField name='b' optype='ordinal'/></DataDictionary>");
        },
        {NUMBER_MISMATCH, "3", "numberOfFields", "2", "DataField", "DataDictionary"});
}

TEST_F(DictionaryFailures, OfANumberOfFieldsThatIsNoNumber) {
    ExpectFailure([&] { ReadElement("<DataDictionary numberOfFields='none'/>"); },
                  {NUMBER_MISMATCH, "none", "numberOfFields", "0", "DataField", "DataDictionary"});
    ExpectFailure([&] { ReadElement("<DataDictionary numberOfFields='99999999999999999999'/>"); },
                  {NUMBER_MISMATCH, "99999999999999999999", "numberOfFields", "0", "DataField", "DataDictionary"});
}

TEST_F(DictionaryFailures, OfNames) {
    ExpectFault("<DataField optype='ordinal'/>", {MISSING_ATTRIBUTE_OF, "name", "DataField"});
    ExpectFault("<DataField name='' optype='ordinal'/>", {NULL_ATTRIBUTE, "name", "DataField"});
    ExpectFault(std::string(kValid) + kValid, {DUPLICATE_VARIABLE_IN, "g", "DataDictionary"});
}

TEST_F(DictionaryFailures, OfLevels) {
    ExpectFault("<DataField name='f'/>", {MISSING_ATTRIBUTE_OF, "optype", "DataField"});
    ExpectFault("<DataField name='f' optype=''/>", {NULL_ATTRIBUTE, "optype", "DataField"});
    ExpectFault("<DataField name='f' optype='nominal'/>", {INVALID_ATTRIBUTE_VALUE, "nominal", "optype"});
}

TEST_F(DictionaryFailures, OfAContinuousFlag) {
    ExpectFault(Continuous("<Extension name='measure' value='flag'/>"),
                {TYPE_SUPPORTED_ONLY_BY, "flag", "categorical"});
}

TEST_F(DictionaryFailures, OfAContinuousString) {
    constexpr Failure kFailure{CONFLICTING_VALUES, "continuous", "optype", "string", "dataType"};
    ExpectFault(Continuous("", "dataType='string'"), kFailure);
    ExpectFault(Continuous("", "x-storageType='string'"), kFailure);
    ExpectFault(Continuous("<Extension name='x-storageType' value='string'/>"), kFailure);
}

class FirstOfTwoFaults : public DictionaryReading, public testing::WithParamInterface<Fault> {};

TEST_P(FirstOfTwoFaults, IsReported) {
    ExpectFault(GetParam().document, GetParam().failure);
}

const Fault kTwoFaults[] = {
    {"NameBeforeLevel", "<DataField name='' optype='x'/>", Failure(NULL_ATTRIBUTE, "name", "DataField")},
    {"DuplicateBeforeLevel", std::string(kValid) + "<DataField name='g'/>",
     Failure(DUPLICATE_VARIABLE_IN, "g", "DataDictionary")},
    {"LevelBeforeFlag", "<DataField name='f' optype='x'><Extension name='measure' value='flag'/></DataField>",
     Failure(INVALID_ATTRIBUTE_VALUE, "x", "optype")},
    {"FlagBeforeContinuousString", Continuous("<Extension name='measure' value='flag'/>", "dataType='string'"),
     Failure(TYPE_SUPPORTED_ONLY_BY, "flag", "categorical")},
    {"FlagBeforeChildren", Continuous("<Interval leftMargin='x'/><Extension name='measure' value='flag'/>"),
     Failure(TYPE_SUPPORTED_ONLY_BY, "flag", "categorical")},
    {"ContinuousStringBeforeChildren", Continuous("<Interval leftMargin='x'/>", "dataType='string'"),
     Failure(CONFLICTING_VALUES, "continuous", "optype", "string", "dataType")},
    {"FirstChildBeforeSecond", Categorical("<Value value='x'/><Interval/>"),
     Failure(INVALID_VALUE_OF_TYPE, "x", "double")},
    {"SecondChildOnlyBehindTheFirst", Categorical("<Interval/><Value value='x'/>"),
     Failure(UNEXPECTED_VALUE, "Interval", "Extension, Value")},
    {"ValueBeforeProperty", Categorical("<Value property='x'/>"), Failure(MISSING_ATTRIBUTE_OF, "value", "Value")},
    {"BoundsBeforeConflict",
     Categorical(std::string("<Value value='1'/><Value value='1' property='missing'/>") + kTwoLowerBounds),
     Failure(MORE_THAN_ONE, "invalidRangeLower, invalidRangeUpper", "Value")},
    {"ConflictBeforeFlag",
     Categorical("<Extension name='measure' value='flag'/><Value value='1'/><Value value='2'/><Value value='3'/>"
                 "<Value value='1' property='missing'/>"),
     Failure(VALID_AND_INVALID, "1")},
    {"FlagBeforeDuplicate",
     Categorical("<Extension name='measure' value='flag'/><Value value='1'/><Value value='1'/><Value value='3'/>"),
     Failure(MORE_THAN_TWO, "categorical", "flag")},
    {"DuplicateOfAnEarlierLabelBeforeMissing",
     Categorical("<Value value='1'/><Value value='-1e999'/><Value value='1'/>"),
     Failure(DUPLICATE_DEFINITION, "value", "1", "DataDictionary")},
    {"MissingOfAnEarlierLabelBeforeDuplicate",
     Categorical("<Value value='-1e999'/><Value value='1'/><Value value='1'/>"),
     Failure(VALUE_MISSING_OR_VALID_AND_INVALID, "Undefined", "f")},
    {"MissingBeforeDuplicateOfTheSameLabel", Categorical("<Value value='-1e999'/><Value value='-1e998'/>"),
     Failure(VALUE_MISSING_OR_VALID_AND_INVALID, "Undefined", "f")},
    {"ContinuousConflictBeforeDuplicate",
     Continuous("<Value property='valid' value='1'/><Value property='valid' value='1'/>"
                "<Value property='missing' value='1'/>"),
     Failure(VALUE_MISSING_OR_VALID_AND_INVALID, "1", "f")},
    {"ContinuousDuplicateBeforeBounds",
     Continuous(std::string("<Value property='valid' value='1'/><Value property='valid' value='1'/>") +
                kTwoLowerBounds),
     Failure(DUPLICATE_DEFINITION, "value", "1", "DataDictionary")},
    {"FieldBeforeNextField", "<DataField name='f' optype='x'/><DataField/>",
     Failure(INVALID_ATTRIBUTE_VALUE, "x", "optype")},
    {"FieldBeforeStrangeChild", "<DataField/><Taxonomy/>", Failure(MISSING_ATTRIBUTE_OF, "name", "DataField")},
    {"StrangeChildBeforeField", "<Taxonomy/><DataField/>",
     Failure(UNEXPECTED_NODE_IN, "Taxonomy", "DataDictionary", "Extension")},
};

INSTANTIATE_TEST_SUITE_P(Rows, FirstOfTwoFaults, testing::ValuesIn(kTwoFaults), veltrane::tests::NameOfRow());

} // namespace
