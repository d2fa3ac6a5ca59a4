#include "translators/dictionary/dictionary_reading.h"

namespace {

using MCVeltrane_900::ScoreDictVar;
using veltrane::tests::Continuous;
using veltrane::tests::DictionaryReading;

using Texts = std::vector<std::string>;

std::string Extension(const std::string& name, const std::string& value) {
    return "<Extension name='" + name + "' value='" + value + "'/>";
}

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
    const std::string text = "The value: 'x' is invalid of type: 'double'.";
    ExpectFault(Continuous(Missing("x")), 260151, text);
    ExpectFault(Continuous(Valid("x")), 260151, text);
    ExpectFault(Continuous(Missing("x"), "dataType='date'"), 260151, text);
}

TEST_F(ContinuousField, RefusesAValueElementWithoutAValue) {
    ExpectFault(Continuous("<Value property='valid'/>"), 260120, "Missing the attribute 'value' of 'Value'.");
    ExpectFault(Continuous("<Value property='missing'/>"), 260120, "Missing the attribute 'value' of 'Value'.");
}

TEST_F(ContinuousField, RefusesEmptyValues) {
    const std::string noNumber = "The value: '' is invalid of type: 'double'.";
    ExpectFault(Continuous(Missing("")), 260151, noNumber);
    ExpectFault(Continuous(Missing(""), "dataType='double'"), 260151, noNumber);
    ExpectFault(Continuous(Valid("")), 260151, noNumber);
    ExpectFault(Continuous(Valid(""), "dataType='date'"), 260151, noNumber);
}

TEST_F(ContinuousField, RefusesAnEmptyValidValueAsNullOnceTheTypeIsExplicit) {
    const std::string null = "The 'value' of element 'Value' is null.";
    ExpectFault(Continuous(Valid(""), "dataType='double'"), 260285, null);
    ExpectFault(Continuous(Extension("x-storageType", "numeric") + Valid("")), 260285, null);
    ExpectFault(Continuous(Missing("1") + Valid("")), 260285, null);
    ExpectFault(Continuous(Valid("1") + Valid("")), 260285, null);
}

TEST_F(ContinuousField, RefusesATextThatIsValidAndMissing) {
    ExpectFault(Continuous(Valid("1e5") + Missing("1E5")), 260294,
                "The value: '1E5' in variable 'f' is defined as missing or both valid and invalid.");
}

TEST_F(ContinuousField, RefusesALabelOfTheMissingNumber) {
    ExpectFault(Continuous(Valid("-1e999")), 260294,
                "The value: 'Undefined' in variable 'f' is defined as missing or both valid and invalid.");
}

TEST_F(ContinuousField, RefusesDuplicateLabels) {
    ExpectFault(Continuous(Valid("1") + Valid("1.0")), 260203,
                "Duplicate definition of 'value': '1', already in 'DataDictionary'.");
}

TEST_F(ContinuousField, AnIntervalMakesItsComplementMissing) {
    EXPECT_EQ(MissingRanges(ReadField(Continuous("<Interval closure='openOpen' leftMargin='1' rightMargin='2'/>"))),
              (Texts{"[-inf, 1]", "[2, inf]"}));
}

TEST_F(ContinuousField, RefusesASecondInterval) {
    ExpectFault(Continuous("<Interval leftMargin='1'/><Interval leftMargin='1'/>"), 260272,
                "More than one 'Interval' defined in 'DataField'.");
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
        ExpectFault(Continuous(Extension(name, "x")), 260151, "The value: 'x' is invalid of type: 'integer'.");
    }
}

TEST_F(ContinuousField, BoundsOfMissingValuesMakeARange) {
    EXPECT_EQ(MissingRanges(
                  ReadField(Continuous(Extension("invalidRangeLower", "-5") + Extension("invalidRangeUpper", "5")))),
              Texts{"[-5, 5]"});
    EXPECT_EQ(MissingRanges(ReadField(Continuous(Extension("invalidRangeLower", "1")))), Texts{"[1, inf]"});
    ExpectFault(Continuous(Extension("invalidRangeLower", "1") + Extension("invalidRangeLower", "1")), 260272,
                "More than one 'invalidRangeLower, invalidRangeUpper' defined in 'Value'.");
    ExpectFault(Continuous(Extension("invalidRangeLower", "x")), 260151,
                "The value: 'x' is invalid of type: 'double'.");
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
