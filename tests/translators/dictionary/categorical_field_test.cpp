#include "translators/dictionary/dictionary_reading.h"

#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/ScoreValue.h>

namespace {

using MCVeltrane_900::NumericValue;
using MCVeltrane_900::ScoreDictVar;
using veltrane::tests::Categorical;
using veltrane::tests::DictionaryReading;

using Texts = std::vector<std::string>;

constexpr const char* kString = "dataType='string'";

std::string Extension(const std::string& name, const std::string& value) {
    return "<Extension name='" + name + "' value='" + value + "'/>";
}

class CategoricalField : public DictionaryReading {};

TEST_F(CategoricalField, ValuesBecomeLabelsInOrder) {
    const ScoreDictVar* var =
        ReadField(Categorical("<Value value='b' displayValue='B'/><Value value='a' property='valid'/>"
                              "<Value value='c' displayValue=''/>",
                              kString));
    EXPECT_EQ(Labels(var), (Texts{"'b'=B", "'a'=a", "'c'=c"}));
    EXPECT_FALSE(var->IsEmptyCateValues());
    EXPECT_EQ(var->GetMissingValues(), nullptr);
}

TEST_F(CategoricalField, OrdinalValuesBecomeLabelsToo) {
    const ScoreDictVar* var = ReadField("<DataField name='f' optype='ordinal'><Value value='2'/></DataField>");
    EXPECT_EQ(Labels(var), Texts{"2=2"});
}

TEST_F(CategoricalField, AValueWithoutAPropertyIsValid) {
    EXPECT_EQ(Labels(ReadField(Categorical("<Value value='1'/>"))), Texts{"1=1"});
}

TEST_F(CategoricalField, LabelsAreTranscoded) {
    const ScoreDictVar* var = ReadField(Categorical("<Value value='\xC3\xA4' displayValue='\xC3\xB6'/>", kString));
    EXPECT_EQ(Labels(var), Texts{"'\xC3\xA4'=\xC3\xB6"});
}

TEST_F(CategoricalField, ANumericLabelIsTheTextOfItsValue) {
    EXPECT_EQ(Labels(ReadField(Categorical("<Value value='1.50'/>"))), Texts{"1.5=1.50"});
}

TEST_F(CategoricalField, WithoutValuesHasEmptyCategories) {
    EXPECT_TRUE(ReadField(Categorical(""))->IsEmptyCateValues());
    const ScoreDictVar* missingOnly = ReadField(Categorical("<Value value='1' property='missing'/>"));
    EXPECT_TRUE(missingOnly->IsEmptyCateValues());
    EXPECT_EQ(missingOnly->GetValueLabels(), nullptr);
}

TEST_F(CategoricalField, MissingAndInvalidValuesBecomeRanges) {
    EXPECT_EQ(MissingRanges(ReadField(Categorical("<Value value='9' property='missing'/>"
                                                  "<Value value='-1' property='invalid'/><Value value='1'/>"))),
              (Texts{"[9, 9]", "[-1, -1]"}));
    EXPECT_EQ(MissingRanges(ReadField(Categorical("<Value value='?' property='missing'/>", kString))),
              Texts{"['?', '?']"});
}

TEST_F(CategoricalField, AMissingValueGivenTwiceIsOneRange) {
    EXPECT_EQ(MissingRanges(ReadField(Categorical("<Value value='9' property='missing'/>"
                                                  "<Value value='9' property='invalid'/>"))),
              Texts{"[9, 9]"});
}

TEST_F(CategoricalField, DateTimeValuesAreNumbers) {
    const ScoreDictVar* var = ReadField(
        Categorical("<Value value='3653'/><Value value='3654' property='missing'/>", "dataType='dateDaysSince[1960]'"));
    EXPECT_EQ(Labels(var), Texts{"0=3653"});
    EXPECT_EQ(MissingRanges(var), Texts{"[1, 1]"});
    ExpectFault(Categorical("<Value value='1970-01-01'/>", "dataType='date'"), 260151,
                "The value: '1970-01-01' is invalid of type: 'double'.");
}

TEST_F(CategoricalField, RefusesOtherProperties) {
    ExpectFault(Categorical("<Value value='1' property='Valid'/>"), 260153,
                "Invalid value: 'Valid' of attribute 'property' in 'Value'.");
}

TEST_F(CategoricalField, RefusesAValueElementWithoutAValue) {
    ExpectFault(Categorical("<Value/>"), 260120, "Missing the attribute 'value' of 'Value'.");
    ExpectFault(Categorical("<Value property='missing'/>"), 260120, "Missing the attribute 'value' of 'Value'.");
}

TEST_F(CategoricalField, RefusesTextInANumericField) {
    ExpectFault(Categorical("<Value value='x'/>"), 260151, "The value: 'x' is invalid of type: 'double'.");
    ExpectFault(Categorical("<Value value='x' property='missing'/>"), 260151,
                "The value: 'x' is invalid of type: 'double'.");
}

TEST_F(CategoricalField, RefusesOtherChildren) {
    ExpectFault(Categorical("<Interval closure='closedClosed'/>"), 260172,
                "The value: 'Interval' is invalid, expect: 'Extension, Value'.");
}

TEST_F(CategoricalField, AcceptsAnEmptyValueOfAStringField) {
    EXPECT_EQ(Labels(ReadField(Categorical("<Value value=''/>", kString))), Texts{"''="});
    EXPECT_EQ(MissingRanges(ReadField(Categorical("<Value value='' property='missing'/>", kString))),
              Texts{"['', '']"});
}

TEST_F(CategoricalField, RefusesANumericEmptyValueAsNoNumberWhileTheTypeIsNotExplicit) {
    const std::string noNumber = "The value: '' is invalid of type: 'double'.";
    ExpectFault(Categorical("<Value value=''/>"), 260151, noNumber);
    ExpectFault(Categorical("<Value value=''/>", "x-storageType='numeric'"), 260151, noNumber);
}

class KeptCategoricalField : public DictionaryReading {};

constexpr const char* kRefusedEmpty = "Invalid value: '' of attribute 'value' in 'MapValues'.";

TEST_F(KeptCategoricalField, RefusesAnEmptyMissingNumberInTheNameOfMapValues) {
    ExpectFault(Categorical("<Value value='' property='missing'/>"), 260153, kRefusedEmpty);
    ExpectFault(Categorical("<Value value='' property='invalid'/>"), 260153, kRefusedEmpty);
}

TEST_F(KeptCategoricalField, RefusesAnEmptyNumberInTheNameOfMapValuesOnceTheTypeIsExplicit) {
    ExpectFault(Categorical("<Value value=''/>", "dataType='integer'"), 260153, kRefusedEmpty);
    ExpectFault(Categorical("<Value value=''/>", "dataType='float'"), 260153, kRefusedEmpty);
    ExpectFault(Categorical(Extension("x-storageType", "numeric") + "<Value value=''/>"), 260153, kRefusedEmpty);
    ExpectFault(Categorical("<Value value='1'/><Value value='' property='valid'/>"), 260153, kRefusedEmpty);
    ExpectFault(Categorical("<Value value='1' property='missing'/><Value value=''/>"), 260153, kRefusedEmpty);
}

TEST_F(CategoricalField, RefusesATextThatIsValidAndMissing) {
    ExpectFault(Categorical("<Value value='1'/><Value value='1' property='missing'/>"), 260213,
                "Conflict definition, the value '1' is defined in both valid and invalid.");
}

TEST_F(CategoricalField, RefusesATextThatIsValidAndMissingWhateverItsCase) {
    ExpectFault(Categorical("<Value value='A' property='missing'/><Value value='a' property='valid'/>", kString),
                260213, "Conflict definition, the value 'A' is defined in both valid and invalid.");
    ExpectFault(Categorical("<Value value='\xC3\xA4'/><Value value='\xC3\x84' property='invalid'/>", kString), 260213,
                "Conflict definition, the value '\xC3\x84' is defined in both valid and invalid.");
}

TEST_F(CategoricalField, ReportsTheFirstMissingTextThatConflicts) {
    ExpectFault(Categorical("<Value value='1'/><Value value='2'/><Value value='3' property='missing'/>"
                            "<Value value='2' property='missing'/><Value value='1' property='missing'/>"),
                260213, "Conflict definition, the value '2' is defined in both valid and invalid.");
}

TEST_F(KeptCategoricalField, ComparesMissingWithValidAsTextsNotAsNumbers) {
    const ScoreDictVar* var = ReadField(Categorical("<Value value='1'/><Value value='1.0' property='missing'/>"));
    EXPECT_EQ(Labels(var), Texts{"1=1"});
    EXPECT_EQ(MissingRanges(var), Texts{"[1, 1]"});
}

TEST_F(CategoricalField, AFlagHasAtMostTwoValues) {
    const std::string flag = Extension("x-measure", "flag");
    EXPECT_EQ(Labels(ReadField(Categorical(flag + "<Value value='1'/><Value value='2'/>"))).size(), 2u);
    ExpectFault(Categorical(flag + "<Value value='1'/><Value value='2'/><Value value='3'/>"), 260271,
                "More than two 'categorical' defined when 'flag' is set.");
}

TEST_F(CategoricalField, RefusesALabelOfTheMissingNumber) {
    ExpectFault(Categorical("<Value value='-1e999'/>"), 260294,
                "The value: 'Undefined' in variable 'f' is defined as missing or both valid and invalid.");
}

std::string DuplicateOf(const std::string& text) {
    return "Duplicate definition of 'value': '" + text + "', already in 'DataDictionary'.";
}

TEST_F(CategoricalField, RefusesDuplicateNumbers) {
    ExpectFault(Categorical("<Value value='2'/><Value value='1'/><Value value='1.0'/>"), 260203, DuplicateOf("1"));
    ExpectFault(Categorical("<Value value='0.1'/><Value value='0.100000000000000001'/>"), 260203, DuplicateOf("0.1"));
}

TEST_F(CategoricalField, ComparesNumbersWithTheirTolerance) {
    ExpectFault(Categorical("<Value value='1'/><Value value='1.00000000000002'/>"), 260203, DuplicateOf("1"));
    EXPECT_EQ(Labels(ReadField(Categorical("<Value value='1'/><Value value='1.00000000000003'/>"))).size(), 2u);
    EXPECT_EQ(Labels(ReadField(Categorical("<Value value='0'/><Value value='1e-300'/>"))).size(), 2u);
}

TEST_F(CategoricalField, ReportsTheFirstLabelThatHasADuplicate) {
    ExpectFault(Categorical("<Value value='3'/><Value value='2'/><Value value='1'/><Value value='1'/>"
                            "<Value value='2'/>"),
                260203, DuplicateOf("2"));
}

TEST_F(CategoricalField, RefusesDuplicateTexts) {
    ExpectFault(Categorical("<Value value='a'/><Value value='b'/><Value value='a'/>", kString), 260203,
                DuplicateOf("a"));
    EXPECT_EQ(Labels(ReadField(Categorical("<Value value='a'/><Value value='A'/>", kString))).size(), 2u);
}

TEST_F(CategoricalField, TextsThatDifferInTrailingBlanksAreDuplicatesUnlessBlanksCount) {
    const std::string values = "<Value value='a'/><Value value='a  '/>";
    ExpectFault(Categorical(values, kString), 260203, DuplicateOf("a"));
    EXPECT_EQ(Labels(ReadField(Categorical(Extension("noSpaceTrim", "true") + values, kString))).size(), 2u);
    EXPECT_EQ(Labels(ReadField(Categorical("<Value value='a'/><Value value=' a'/>", kString))).size(), 2u);
}

TEST_F(CategoricalField, BlankTextsAreDuplicatesOfEachOtherButNotOfTheEmptyOne) {
    ExpectFault(Categorical("<Value value=' '/><Value value='   '/>", kString), 260203, DuplicateOf(" "));
    EXPECT_EQ(Labels(ReadField(Categorical("<Value value=''/><Value value=' '/>", kString))).size(), 2u);
}

TEST_F(CategoricalField, RefusesDuplicateDateTimes) {
    ExpectFault(Categorical("<Value value='5'/><Value value='5.0'/>", "dataType='dateTimeSecondsSince[1970]'"), 260203,
                DuplicateOf("Undefined"));
    EXPECT_EQ(Labels(ReadField(Categorical("<Value value='5'/><Value value='6'/>", "dataType='date'"))).size(), 2u);
}

TEST_F(CategoricalField, ExtensionsGiveTheFormat) {
    const ScoreDictVar* plain = ReadField(Categorical(""));
    EXPECT_EQ(plain->GetWidth(), -1);
    EXPECT_EQ(plain->GetDecimal(), -1);
    const ScoreDictVar* var = ReadField(Categorical(Extension("format", "5") + Extension("width", "8") +
                                                    Extension("decimals", "0") + Extension("other", "x")));
    EXPECT_EQ(var->GetWidth(), 8);
    EXPECT_EQ(var->GetDecimal(), 0);
    EXPECT_EQ(ReadField(Categorical(Extension("stringLength", "12"), kString))->GetWidth(), 12);
}

TEST_F(CategoricalField, IgnoresAWidthOfZeroAndNegativeDecimals) {
    const ScoreDictVar* var = ReadField(Categorical(Extension("width", "0") + Extension("decimals", "-2")));
    EXPECT_EQ(var->GetWidth(), -1);
    EXPECT_EQ(var->GetDecimal(), -1);
}

TEST_F(CategoricalField, RefusesFormatsThatAreNoIntegers) {
    for (const char* name : {"format", "width", "stringLength", "decimals"}) {
        ExpectFault(Categorical(Extension(name, "x")), 260151, "The value: 'x' is invalid of type: 'integer'.");
    }
    ExpectFault(Categorical("<Extension name='width'/>"), 260151, "The value: '' is invalid of type: 'integer'.");
}

TEST_F(CategoricalField, FlagTrueValueIsKept) {
    EXPECT_EQ(ReadField(Categorical(Extension("flagTypeTrueValue", "\xC3\xA4")))->GetFalgTypeTrueValue(), "\xC3\xA4");
    EXPECT_EQ(ReadField(Categorical(""))->GetFalgTypeTrueValue(), "");
}

TEST_F(CategoricalField, BoundsOfMissingValuesMakeARange) {
    EXPECT_EQ(MissingRanges(
                  ReadField(Categorical(Extension("invalidRangeUpper", "5") + Extension("invalidRangeLower", "-5")))),
              Texts{"[-5, 5]"});
    EXPECT_EQ(MissingRanges(ReadField(Categorical(Extension("invalidRangeLower", "1")))), Texts{"[1, inf]"});
    EXPECT_EQ(MissingRanges(ReadField(Categorical(Extension("invalidRangeUpper", "1")))), Texts{"[-inf, 1]"});
    ExpectFault(Categorical(Extension("invalidRangeUpper", "x")), 260151,
                "The value: 'x' is invalid of type: 'double'.");
}

TEST_F(CategoricalField, RefusesABoundThatCameTwice) {
    const std::string text = "More than one 'invalidRangeLower, invalidRangeUpper' defined in 'Value'.";
    ExpectFault(Categorical(Extension("invalidRangeLower", "1") + Extension("invalidRangeLower", "2")), 260272, text);
    ExpectFault(Categorical(Extension("invalidRangeUpper", "1") + Extension("invalidRangeUpper", "2")), 260272, text);
}

} // namespace
