#include "support/failure.h"
#include "translators/dictionary/dictionary_reading.h"

namespace {

using veltrane::tests::Categorical;
using veltrane::tests::Continuous;
using veltrane::tests::DictionaryReading;
using veltrane::tests::ExpectFailure;

constexpr const char* kValid = "<DataField name='g' optype='ordinal'/>";
constexpr const char* kTwoLowerBounds =
    "<Extension name='invalidRangeLower' value='1'/><Extension name='invalidRangeLower' value='2'/>";

class DictionaryFailures : public DictionaryReading {};

TEST_F(DictionaryFailures, WithoutAnElement) {
    ExpectFailure([&] { translator.ParseDictionary(nullptr, false); }, 260115,
                  "Missing node of 'DataDictionary' element  in 'PMML'.");
}

TEST_F(DictionaryFailures, LeaveTheTranslatorUsable) {
    ExpectFault("<DataField/>", 260120, "Missing the attribute 'name' of 'DataField'.");
    EXPECT_EQ(Read(kValid)->Size(), 1);
}

TEST_F(DictionaryFailures, OfNumberOfFields) {
    ExpectFailure([&] { ReadElement("<DataDictionary numberOfFields=''/>"); }, 260285,
                  "The 'numberOfFields' of element 'DataDictionary' is null.");
    ExpectFailure(
        [&] {
            ReadElement("<DataDictionary numberOfFields='3'><DataField name='a' optype='ordinal'/><Extension/>"
                        "<DataField name='b' optype='ordinal'/></DataDictionary>");
        },
        260242,
        "The value: '3' of attribute 'numberOfFields' does not match the number: '2' of 'DataField' in "
        "'DataDictionary'.");
}

TEST_F(DictionaryFailures, OfANumberOfFieldsThatIsNoNumber) {
    const std::string tail = "' of attribute 'numberOfFields' does not match the number: '0' of 'DataField' in "
                             "'DataDictionary'.";
    ExpectFailure([&] { ReadElement("<DataDictionary numberOfFields='none'/>"); }, 260242, "The value: 'none" + tail);
    ExpectFailure([&] { ReadElement("<DataDictionary numberOfFields='99999999999999999999'/>"); }, 260242,
                  "The value: '99999999999999999999" + tail);
}

TEST_F(DictionaryFailures, OfNames) {
    ExpectFault("<DataField optype='ordinal'/>", 260120, "Missing the attribute 'name' of 'DataField'.");
    ExpectFault("<DataField name='' optype='ordinal'/>", 260285, "The 'name' of element 'DataField' is null.");
    ExpectFault(std::string(kValid) + kValid, 260202,
                "Duplicate definition of variable 'g', already in 'DataDictionary'.");
}

TEST_F(DictionaryFailures, OfLevels) {
    ExpectFault("<DataField name='f'/>", 260120, "Missing the attribute 'optype' of 'DataField'.");
    ExpectFault("<DataField name='f' optype=''/>", 260285, "The 'optype' of element 'DataField' is null.");
    ExpectFault("<DataField name='f' optype='nominal'/>", 260152, "Invalid value 'nominal' of attribute 'optype'.");
}

TEST_F(DictionaryFailures, OfAContinuousFlag) {
    ExpectFault(Continuous("<Extension name='measure' value='flag'/>"), 260282,
                "The type 'flag' is only supported by 'categorical'.");
}

TEST_F(DictionaryFailures, OfAContinuousString) {
    const std::string text = "Conflict setting between the value 'continuous' of attribute 'optype' and the value "
                             "'string' of attribute 'dataType'.";
    ExpectFault(Continuous("", "dataType='string'"), 260211, text);
    ExpectFault(Continuous("", "x-storageType='string'"), 260211, text);
    ExpectFault(Continuous("<Extension name='x-storageType' value='string'/>"), 260211, text);
}

struct TwoFaults {
    const char* name;
    std::string fields;
    int id;
};

std::ostream& operator<<(std::ostream& out, const TwoFaults& row) {
    return out << row.name;
}

class FirstOfTwoFaults : public DictionaryReading, public testing::WithParamInterface<TwoFaults> {};

TEST_P(FirstOfTwoFaults, IsReported) {
    try {
        Read(GetParam().fields);
        FAIL() << "no failure";
    } catch (const MCVeltrane_900::VTException& failure) {
        EXPECT_EQ(failure.GetErrorCode(), GetParam().id) << failure.GetErrorMessage();
    }
}

const TwoFaults kTwoFaults[] = {
    {"NameBeforeLevel", "<DataField name='' optype='x'/>", 260285},
    {"DuplicateBeforeLevel", std::string(kValid) + "<DataField name='g'/>", 260202},
    {"LevelBeforeFlag", "<DataField name='f' optype='x'><Extension name='measure' value='flag'/></DataField>", 260152},
    {"FlagBeforeContinuousString", Continuous("<Extension name='measure' value='flag'/>", "dataType='string'"), 260282},
    {"FlagBeforeChildren", Continuous("<Interval leftMargin='x'/><Extension name='measure' value='flag'/>"), 260282},
    {"ContinuousStringBeforeChildren", Continuous("<Interval leftMargin='x'/>", "dataType='string'"), 260211},
    {"FirstChildBeforeSecond", Categorical("<Value value='x'/><Interval/>"), 260151},
    {"SecondChildOnlyBehindTheFirst", Categorical("<Interval/><Value value='x'/>"), 260172},
    {"ValueBeforeProperty", Categorical("<Value property='x'/>"), 260120},
    {"BoundsBeforeConflict",
     Categorical(std::string("<Value value='1'/><Value value='1' property='missing'/>") + kTwoLowerBounds), 260272},
    {"ConflictBeforeFlag",
     Categorical("<Extension name='measure' value='flag'/><Value value='1'/><Value value='2'/><Value value='3'/>"
                 "<Value value='1' property='missing'/>"),
     260213},
    {"FlagBeforeDuplicate",
     Categorical("<Extension name='measure' value='flag'/><Value value='1'/><Value value='1'/><Value value='3'/>"),
     260271},
    {"DuplicateOfAnEarlierLabelBeforeMissing",
     Categorical("<Value value='1'/><Value value='-1e999'/><Value value='1'/>"), 260203},
    {"MissingOfAnEarlierLabelBeforeDuplicate",
     Categorical("<Value value='-1e999'/><Value value='1'/><Value value='1'/>"), 260294},
    {"MissingBeforeDuplicateOfTheSameLabel", Categorical("<Value value='-1e999'/><Value value='-1e998'/>"), 260294},
    {"ContinuousConflictBeforeDuplicate",
     Continuous("<Value property='valid' value='1'/><Value property='valid' value='1'/>"
                "<Value property='missing' value='1'/>"),
     260294},
    {"ContinuousDuplicateBeforeBounds",
     Continuous(std::string("<Value property='valid' value='1'/><Value property='valid' value='1'/>") +
                kTwoLowerBounds),
     260203},
    {"FieldBeforeNextField", "<DataField name='f' optype='x'/><DataField/>", 260152},
    {"FieldBeforeStrangeChild", "<DataField/><Taxonomy/>", 260120},
    {"StrangeChildBeforeField", "<Taxonomy/><DataField/>", 260178},
};

INSTANTIATE_TEST_SUITE_P(Rows, FirstOfTwoFaults, testing::ValuesIn(kTwoFaults),
                         [](const auto& info) { return std::string(info.param.name); });

} // namespace
