#include "translators/dictionary/dictionary_reading.h"

namespace {

using namespace veltrane::tests;

using Texts = std::vector<std::string>;

std::string Valid(const std::string& value) {
    return "<Value property='valid' value='" + value + "'/>";
}
std::string Missing(const std::string& value) {
    return "<Value property='missing' value='" + value + "'/>";
}

class ContinuousField : public DictionaryReading {};

TEST_F(ContinuousField, ValidValuesBecomeLabelsAndTheLevelStays) {
    const ScoreDictVar* var =
        ReadField(Continuous(Valid("2") + "<Value property='valid' value='1' displayValue='one'/>"));
    EXPECT_EQ(Labels(var), (Texts{"2=2", "1=one"}));
    EXPECT_EQ(var->GetMLevel(), ScoreDictVar::LEVEL_CONTINUOUS);
    EXPECT_FALSE(var->IsEmptyCateValues());
    EXPECT_EQ(var->GetMissingValues(), nullptr);
}

TEST_F(ContinuousField, WithoutValuesHasEmptyCategories) {
    EXPECT_TRUE(ReadField(Continuous(""))->IsEmptyCateValues());
}

TEST_F(ContinuousField, MissingAndInvalidValuesBecomeRanges) {
    const ScoreDictVar* var = ReadField(Continuous(Missing("9") + "<Value property='invalid' value='-1'/>"));
    EXPECT_EQ(MissingRanges(var), (Texts{"[9, 9]", "[-1, -1]"}));
    EXPECT_TRUE(var->IsEmptyCateValues());
}

TEST_F(ContinuousField, DateTimeValuesAreNumbers) {
    const ScoreDictVar* var = ReadField(Continuous(Missing("3653") + Valid("3654"), "dataType='dateDaysSince[1960]'"));
    EXPECT_EQ(MissingRanges(var), Texts{"[0, 0]"});
    EXPECT_EQ(Labels(var), Texts{"1=3654"});
}

TEST_F(ContinuousField, RefusesTextAsNumbers) {
    constexpr Failure kFailure{INVALID_VALUE_OF_TYPE, "x", "double"};
    ExpectFault(Continuous(Missing("x")), kFailure);
    ExpectFault(Continuous(Valid("x")), kFailure);
    ExpectFault(Continuous(Missing("x"), "dataType='date'"), kFailure);
}

TEST_F(ContinuousField, RefusesAValueElementWithoutAValue) {
    ExpectFault(Continuous("<Value property='valid'/>"), {MISSING_ATTRIBUTE_OF, "value", "Value"});
    ExpectFault(Continuous("<Value property='missing'/>"), {MISSING_ATTRIBUTE_OF, "value", "Value"});
}

TEST_F(ContinuousField, RefusesEmptyValues) {
    constexpr Failure kNoNumber{INVALID_VALUE_OF_TYPE, "", "double"};
    ExpectFault(Continuous(Missing("")), kNoNumber);
    ExpectFault(Continuous(Missing(""), "dataType='double'"), kNoNumber);
    ExpectFault(Continuous(Valid("")), kNoNumber);
    ExpectFault(Continuous(Valid(""), "dataType='date'"), kNoNumber);
}

TEST_F(ContinuousField, RefusesAnEmptyValidValueAsNullOnceTheTypeIsExplicit) {
    constexpr Failure kNull{NULL_ATTRIBUTE, "value", "Value"};
    ExpectFault(Continuous(Valid(""), "dataType='double'"), kNull);
    ExpectFault(Continuous(Extension("x-storageType", "numeric") + Valid("")), kNull);
    ExpectFault(Continuous(Missing("1") + Valid("")), kNull);
    ExpectFault(Continuous(Valid("1") + Valid("")), kNull);
}

TEST_F(ContinuousField, RefusesATextThatIsValidAndMissing) {
    ExpectFault(Continuous(Valid("1e5") + Missing("1E5")), {VALUE_MISSING_OR_VALID_AND_INVALID, "1E5", "f"});
}

TEST_F(ContinuousField, RefusesALabelOfTheMissingNumber) {
    ExpectFault(Continuous(Valid("-1e999")), {VALUE_MISSING_OR_VALID_AND_INVALID, "Undefined", "f"});
}

TEST_F(ContinuousField, RefusesDuplicateLabels) {
    ExpectFault(Continuous(Valid("1") + Valid("1.0")), {DUPLICATE_DEFINITION, "value", "1", "DataDictionary"});
}

TEST_F(ContinuousField, AnIntervalMakesItsComplementMissing) {
    EXPECT_EQ(MissingRanges(ReadField(Continuous("<Interval closure='openOpen' leftMargin='1' rightMargin='2'/>"))),
              (Texts{"[-inf, 1]", "[2, inf]"}));
}

TEST_F(ContinuousField, RefusesASecondInterval) {
    ExpectFault(Continuous("<Interval leftMargin='1'/><Interval leftMargin='1'/>"),
                {MORE_THAN_ONE, "Interval", "DataField"});
}

TEST_F(ContinuousField, AnIntervalInsideAnExtensionIsMissingItself) {
    const ScoreDictVar* var =
        ReadField(Continuous("<Extension name='any'><X-DataField><Interval closure='closedOpen' leftMargin='1' "
                             "rightMargin='2'/></X-DataField></Extension>"));
    EXPECT_EQ(MissingRanges(var), Texts{"[1, 2)"});
}

TEST_F(ContinuousField, OtherExtensionsAreIgnored) {
    EXPECT_EQ(ReadField(Continuous("<Extension name='any'/><Extension><other/></Extension>"
                                   "<Extension><X-DataField/></Extension>"
                                   "<Extension><other/><X-DataField><Interval/></X-DataField></Extension>"))
                  ->GetMissingValues(),
              nullptr);
    EXPECT_EQ(ReadField(Continuous(Extension("flagTypeTrueValue", "x")))->GetFalgTypeTrueValue(), "");
}

TEST_F(ContinuousField, ExtensionsGiveTheFormat) {
    const ScoreDictVar* var = ReadField(Continuous(Extension("width", "8") + Extension("decimals", "2")));
    EXPECT_EQ(var->GetWidth(), 8);
    EXPECT_EQ(var->GetDecimal(), 2);
    EXPECT_EQ(ReadField(Continuous(Extension("stringLength", "3")))->GetWidth(), 3);
    for (const char* name : {"width", "stringLength", "decimals"}) {
        ExpectFault(Continuous(Extension(name, "x")), {INVALID_VALUE_OF_TYPE, "x", "integer"});
    }
}

TEST_F(ContinuousField, BoundsOfMissingValuesMakeARange) {
    EXPECT_EQ(MissingRanges(
                  ReadField(Continuous(Extension("invalidRangeLower", "-5") + Extension("invalidRangeUpper", "5")))),
              Texts{"[-5, 5]"});
    EXPECT_EQ(MissingRanges(ReadField(Continuous(Extension("invalidRangeLower", "1")))), Texts{"[1, inf]"});
    ExpectFault(Continuous(Extension("invalidRangeLower", "1") + Extension("invalidRangeLower", "1")),
                {MORE_THAN_ONE, "invalidRangeLower, invalidRangeUpper", "Value"});
    ExpectFault(Continuous(Extension("invalidRangeLower", "x")), {INVALID_VALUE_OF_TYPE, "x", "double"});
}

TEST_F(ContinuousField, BoundsStandBehindTheRangesOfTheChildren) {
    EXPECT_EQ(MissingRanges(ReadField(Continuous(Extension("invalidRangeLower", "5") + Missing("1")))),
              (Texts{"[1, 1]", "[5, inf]"}));
}

TEST_F(ContinuousField, OtherChildrenAreIgnored) {
    EXPECT_TRUE(ReadField(Continuous("<Taxonomy/>"))->IsEmptyCateValues());
}

class KeptContinuousField : public DictionaryReading {};

TEST_F(KeptContinuousField, IgnoresValuesWithoutAKnownProperty) {
    const ScoreDictVar* var =
        ReadField(Continuous("<Value value='1'/><Value property='' value='x'/><Value property='other'/><Value/>"));
    EXPECT_EQ(var->GetValueLabels(), nullptr);
    EXPECT_EQ(var->GetMissingValues(), nullptr);
    EXPECT_TRUE(var->IsEmptyCateValues());
}

TEST_F(KeptContinuousField, TakesWidthsAndDecimalsOfEitherSignAndDoesNotCheckTheFormat) {
    const ScoreDictVar* var =
        ReadField(Continuous(Extension("format", "x") + Extension("width", "-3") + Extension("decimals", "-2")));
    EXPECT_EQ(var->GetWidth(), -3);
    EXPECT_EQ(var->GetDecimal(), -2);
}

TEST_F(KeptContinuousField, AnOrdinaryExtensionNameHidesAnInterval) {
    const ScoreDictVar* var = ReadField(Continuous("<Extension name='format'><X-DataField><Interval leftMargin='1'/>"
                                                   "</X-DataField></Extension>"));
    EXPECT_EQ(var->GetMissingValues(), nullptr);
}

TEST_F(KeptContinuousField, TheFirstChildOfTheFieldInsideIsTakenAsIntervalWhateverItsTag) {
    const ScoreDictVar* var = ReadField(
        Continuous("<Extension><X-DataField><any leftMargin='1' rightMargin='2'/></X-DataField></Extension>"));
    EXPECT_EQ(MissingRanges(var), Texts{"(1, 2)"});
}

} // namespace
