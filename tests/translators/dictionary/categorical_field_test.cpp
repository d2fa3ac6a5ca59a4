#include "translators/dictionary/dictionary_reading.h"

#include <MCVeltrane_900/ScoreValue.h>

namespace {

using namespace veltrane::tests;

using Texts = std::vector<std::string>;

constexpr const char* kString = "dataType='string'";

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
    ExpectFault(Categorical("<Value value='1970-01-01'/>", "dataType='date'"),
                {INVALID_VALUE_OF_TYPE, "1970-01-01", "double"});
}

TEST_F(CategoricalField, RefusesOtherProperties) {
    ExpectFault(Categorical("<Value value='1' property='Valid'/>"),
                {INVALID_ATTRIBUTE_VALUE_IN, "Valid", "property", "Value"});
}

TEST_F(CategoricalField, RefusesAValueElementWithoutAValue) {
    ExpectFault(Categorical("<Value/>"), {MISSING_ATTRIBUTE_OF, "value", "Value"});
    ExpectFault(Categorical("<Value property='missing'/>"), {MISSING_ATTRIBUTE_OF, "value", "Value"});
}

TEST_F(CategoricalField, RefusesTextInANumericField) {
    ExpectFault(Categorical("<Value value='x'/>"), {INVALID_VALUE_OF_TYPE, "x", "double"});
    ExpectFault(Categorical("<Value value='x' property='missing'/>"), {INVALID_VALUE_OF_TYPE, "x", "double"});
}

TEST_F(CategoricalField, RefusesOtherChildren) {
    ExpectFault(Categorical("<Interval closure='closedClosed'/>"), {UNEXPECTED_VALUE, "Interval", "Extension, Value"});
}

TEST_F(CategoricalField, AcceptsAnEmptyValueOfAStringField) {
    EXPECT_EQ(Labels(ReadField(Categorical("<Value value=''/>", kString))), Texts{"''="});
    EXPECT_EQ(MissingRanges(ReadField(Categorical("<Value value='' property='missing'/>", kString))),
              Texts{"['', '']"});
}

TEST_F(CategoricalField, RefusesANumericEmptyValueAsNoNumberWhileTheTypeIsNotExplicit) {
    constexpr Failure kNoNumber{INVALID_VALUE_OF_TYPE, "", "double"};
    ExpectFault(Categorical("<Value value=''/>"), kNoNumber);
    ExpectFault(Categorical("<Value value=''/>", "x-storageType='numeric'"), kNoNumber);
}

class KeptCategoricalField : public DictionaryReading {};

constexpr Failure kRefusedEmpty{INVALID_ATTRIBUTE_VALUE_IN, "", "value", "MapValues"};

TEST_F(KeptCategoricalField, RefusesAnEmptyMissingNumberInTheNameOfMapValues) {
    ExpectFault(Categorical("<Value value='' property='missing'/>"), kRefusedEmpty);
    ExpectFault(Categorical("<Value value='' property='invalid'/>"), kRefusedEmpty);
}

TEST_F(KeptCategoricalField, RefusesAnEmptyNumberInTheNameOfMapValuesOnceTheTypeIsExplicit) {
    ExpectFault(Categorical("<Value value=''/>", "dataType='integer'"), kRefusedEmpty);
    ExpectFault(Categorical("<Value value=''/>", "dataType='float'"), kRefusedEmpty);
    ExpectFault(Categorical(Extension("x-storageType", "numeric") + "<Value value=''/>"), kRefusedEmpty);
    ExpectFault(Categorical("<Value value='1'/><Value value='' property='valid'/>"), kRefusedEmpty);
    ExpectFault(Categorical("<Value value='1' property='missing'/><Value value=''/>"), kRefusedEmpty);
}

TEST_F(CategoricalField, RefusesATextThatIsValidAndMissing) {
    ExpectFault(Categorical("<Value value='1'/><Value value='1' property='missing'/>"), {VALID_AND_INVALID, "1"});
}

TEST_F(CategoricalField, RefusesATextThatIsValidAndMissingWhateverItsCase) {
    ExpectFault(Categorical("<Value value='A' property='missing'/><Value value='a' property='valid'/>", kString),
                {VALID_AND_INVALID, "A"});
    ExpectFault(Categorical("<Value value='\xC3\xA4'/><Value value='\xC3\x84' property='invalid'/>", kString),
                {VALID_AND_INVALID, "\xC3\x84"});
}

TEST_F(CategoricalField, ReportsTheFirstMissingTextThatConflicts) {
    ExpectFault(Categorical("<Value value='1'/><Value value='2'/><Value value='3' property='missing'/>"
                            "<Value value='2' property='missing'/><Value value='1' property='missing'/>"),
                {VALID_AND_INVALID, "2"});
}

TEST_F(KeptCategoricalField, ComparesMissingWithValidAsTextsNotAsNumbers) {
    const ScoreDictVar* var = ReadField(Categorical("<Value value='1'/><Value value='1.0' property='missing'/>"));
    EXPECT_EQ(Labels(var), Texts{"1=1"});
    EXPECT_EQ(MissingRanges(var), Texts{"[1, 1]"});
}

TEST_F(CategoricalField, AFlagHasAtMostTwoValues) {
    const std::string flag = Extension("x-measure", "flag");
    EXPECT_EQ(Labels(ReadField(Categorical(flag + "<Value value='1'/><Value value='2'/>"))).size(), 2u);
    ExpectFault(Categorical(flag + "<Value value='1'/><Value value='2'/><Value value='3'/>"),
                {MORE_THAN_TWO, "categorical", "flag"});
}

TEST_F(CategoricalField, RefusesALabelOfTheMissingNumber) {
    ExpectFault(Categorical("<Value value='-1e999'/>"), {VALUE_MISSING_OR_VALID_AND_INVALID, "Undefined", "f"});
}

constexpr Failure DuplicateOf(const char* text) {
    return {DUPLICATE_DEFINITION, "value", text, "DataDictionary"};
}

TEST_F(CategoricalField, RefusesDuplicateNumbers) {
    ExpectFault(Categorical("<Value value='2'/><Value value='1'/><Value value='1.0'/>"), DuplicateOf("1"));
    ExpectFault(Categorical("<Value value='0.1'/><Value value='0.100000000000000001'/>"), DuplicateOf("0.1"));
}

TEST_F(CategoricalField, ComparesNumbersWithTheirTolerance) {
    ExpectFault(Categorical("<Value value='1'/><Value value='1.00000000000002'/>"), DuplicateOf("1"));
    EXPECT_EQ(Labels(ReadField(Categorical("<Value value='1'/><Value value='1.00000000000003'/>"))).size(), 2u);
    EXPECT_EQ(Labels(ReadField(Categorical("<Value value='0'/><Value value='1e-300'/>"))).size(), 2u);
}

TEST_F(CategoricalField, ReportsTheFirstLabelThatHasADuplicate) {
    ExpectFault(Categorical("<Value value='3'/><Value value='2'/><Value value='1'/><Value value='1'/>"
                            "<Value value='2'/>"),
                DuplicateOf("2"));
}

TEST_F(CategoricalField, RefusesDuplicateTexts) {
    ExpectFault(Categorical("<Value value='a'/><Value value='b'/><Value value='a'/>", kString), DuplicateOf("a"));
    EXPECT_EQ(Labels(ReadField(Categorical("<Value value='a'/><Value value='A'/>", kString))).size(), 2u);
}

TEST_F(CategoricalField, TextsThatDifferInTrailingBlanksAreDuplicatesUnlessBlanksCount) {
    const std::string values = "<Value value='a'/><Value value='a  '/>";
    ExpectFault(Categorical(values, kString), DuplicateOf("a"));
    EXPECT_EQ(Labels(ReadField(Categorical(Extension("noSpaceTrim", "true") + values, kString))).size(), 2u);
    EXPECT_EQ(Labels(ReadField(Categorical("<Value value='a'/><Value value=' a'/>", kString))).size(), 2u);
}

TEST_F(CategoricalField, BlankTextsAreDuplicatesOfEachOtherButNotOfTheEmptyOne) {
    ExpectFault(Categorical("<Value value=' '/><Value value='   '/>", kString), DuplicateOf(" "));
    EXPECT_EQ(Labels(ReadField(Categorical("<Value value=''/><Value value=' '/>", kString))).size(), 2u);
}

TEST_F(CategoricalField, RefusesDuplicateDateTimes) {
    ExpectFault(Categorical("<Value value='5'/><Value value='5.0'/>", "dataType='dateTimeSecondsSince[1970]'"),
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
        ExpectFault(Categorical(Extension(name, "x")), {INVALID_VALUE_OF_TYPE, "x", "integer"});
    }
    ExpectFault(Categorical("<Extension name='width'/>"), {INVALID_VALUE_OF_TYPE, "", "integer"});
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
    ExpectFault(Categorical(Extension("invalidRangeUpper", "x")), {INVALID_VALUE_OF_TYPE, "x", "double"});
}

TEST_F(CategoricalField, RefusesABoundThatCameTwice) {
    constexpr Failure kFailure{MORE_THAN_ONE, "invalidRangeLower, invalidRangeUpper", "Value"};
    ExpectFault(Categorical(Extension("invalidRangeLower", "1") + Extension("invalidRangeLower", "2")), kFailure);
    ExpectFault(Categorical(Extension("invalidRangeUpper", "1") + Extension("invalidRangeUpper", "2")), kFailure);
}

} // namespace
