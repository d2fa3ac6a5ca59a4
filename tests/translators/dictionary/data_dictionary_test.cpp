#include "support/dom.h"
#include "support/faults/failure.h"
#include "translators/dictionary/dictionary_reading.h"

#include <MCVeltrane_900/ScoreEncoder.h>

namespace {

using namespace veltrane::tests;

using Texts = std::vector<std::string>;

std::string Field(const std::string& attributes) {
    return "<DataField name='f' optype='ordinal' " + attributes + "/>";
}

class DataDictionary : public DictionaryReading {};

TEST_F(DataDictionary, KeepsItsFieldsInDocumentOrder) {
    const auto dictionary = Read("<DataField name='b' optype='continuous'/><Extension name='x'/>"
                                 "<DataField name='a' optype='ordinal'/>");
    EXPECT_EQ(dictionary->Size(), 2);
    EXPECT_EQ(dictionary->GetVarNames(), (Texts{"b", "a"}));
    EXPECT_EQ(dictionary->GetVar("a")->GetName(), "a");
    EXPECT_EQ(dictionary->GetVar("b")->GetName(), "b");
}

TEST_F(DataDictionary, WithoutFieldsIsEmpty) {
    EXPECT_EQ(ReadElement("<DataDictionary numberOfFields='0'/>")->Size(), 0);
}

TEST_F(DataDictionary, MakesTheTranscoderOnceAndOfTheTranslatorsEncoding) {
    EXPECT_EQ(translator.GetTranscoder(), nullptr);
    Read("");
    const auto* transcoder = translator.GetTranscoder();
    ASSERT_NE(transcoder, nullptr);
    Read("");
    EXPECT_EQ(translator.GetTranscoder(), transcoder);
    EXPECT_EQ(translator.ToString(u"\u00E4"), "\xC3\xA4");
}

TEST_F(DataDictionary, TranscodesNamesAndLabels) {
    const ScoreDictVar* var = ReadField("<DataField name='\xC3\xA4' displayName='\xC3\xB6' optype='continuous'/>");
    EXPECT_EQ(var->GetName(), "\xC3\xA4");
    EXPECT_EQ(var->GetLabel(), "\xC3\xB6");
}

TEST_F(DataDictionary, IsReadInCp1252ByDefault) {
    veltrane::tests::TestTranslator byDefault;
    const ParsedXml document = ParseXml(
        "<DataDictionary numberOfFields='1'><DataField name='\xE2\x82\xAC' optype='ordinal'/></DataDictionary>");
    const Dictionary dictionary(byDefault.ParseDictionary(document.Root(), false));
    EXPECT_EQ(dictionary->GetVarNames(), Texts{"\x80"});
}

TEST_F(DataDictionary, ReadsItsVocabularyUnderAnEncodingThatIsNoAscii) {
    veltrane::tests::TestTranslator ebcdic("IBM037");
    const ParsedXml document = ParseXml("<DataDictionary numberOfFields='1'><DataField name='A' optype='ordinal' "
                                        "dataType='string'/></DataDictionary>");
    const Dictionary dictionary(ebcdic.ParseDictionary(document.Root(), false));
    const ScoreDictVar* var = dictionary->GetVar("\xC1");
    ASSERT_NE(var, nullptr);
    EXPECT_EQ(var->GetMLevel(), ScoreDictVar::LEVEL_ORDINAL);
    EXPECT_EQ(var->GetVarType(), ScoreDictVar::STRING_VAR);
}

TEST_F(DataDictionary, HoldsNothingUnderAnUnknownEncoding) {
    veltrane::tests::TestTranslator unknown("no-such-encoding");
    const ParsedXml document = ParseXml("<DataDictionary numberOfFields='2'><DataField name='a' optype='ordinal'/>"
                                        "<DataField name='b' optype='ordinal'/></DataDictionary>");
    const Dictionary dictionary(unknown.ParseDictionary(document.Root(), true));
    EXPECT_EQ(dictionary->Size(), 0);
}

TEST_F(DataDictionary, LabelIsTheNameWhenDisplayNameIsAbsentOrEmpty) {
    EXPECT_EQ(ReadField(Field("displayName='Label'"))->GetLabel(), "Label");
    EXPECT_EQ(ReadField(Field(""))->GetLabel(), "f");
    EXPECT_EQ(ReadField(Field("displayName=''"))->GetLabel(), "f");
}

TEST_F(DataDictionary, OptypeGivesTheLevel) {
    EXPECT_EQ(ReadField(Continuous(""))->GetMLevel(), ScoreDictVar::LEVEL_CONTINUOUS);
    EXPECT_EQ(ReadField(Field(""))->GetMLevel(), ScoreDictVar::LEVEL_ORDINAL);
    EXPECT_EQ(ReadField(Categorical(""))->GetMLevel(), ScoreDictVar::LEVEL_NOMINAL);
}

struct TypeRow {
    const char* dataType;
    ScoreDictVar::VariableType type;
    ScoreDictVar::NumericDataType numeric;
    ScoreDictVar::DateTimeType dateTime;
};

class DataDictionaryTypes : public DictionaryReading, public testing::WithParamInterface<TypeRow> {};

TEST_P(DataDictionaryTypes, OfADataType) {
    const ScoreDictVar* var = ReadField(Field(std::string("dataType='") + GetParam().dataType + "'"));
    EXPECT_EQ(var->GetVarType(), GetParam().type);
    EXPECT_EQ(var->GetNumericDataType(), GetParam().numeric);
    EXPECT_EQ(var->GetDateTimeType(), GetParam().dateTime);
}

TypeRow DateTime(const char* dataType, int type) {
    return {dataType, ScoreDictVar::DATETIME_VAR, ScoreDictVar::NUM_UNSPECIFIED,
            static_cast<ScoreDictVar::DateTimeType>(type)};
}

TypeRow Number(const char* dataType, ScoreDictVar::NumericDataType numeric) {
    return {dataType, ScoreDictVar::kNUMERIC_VAR, numeric, ScoreDictVar::DT_NONE};
}

INSTANTIATE_TEST_SUITE_P(
    Words, DataDictionaryTypes,
    testing::Values(TypeRow{"string", ScoreDictVar::STRING_VAR, ScoreDictVar::NUM_UNSPECIFIED, ScoreDictVar::DT_NONE},
                    Number("integer", ScoreDictVar::NUM_INTEGER), Number("double", ScoreDictVar::NUM_DOUBLE),
                    Number("float", ScoreDictVar::NUM_UNSPECIFIED), Number("boolean", ScoreDictVar::NUM_UNSPECIFIED),
                    Number("", ScoreDictVar::NUM_UNSPECIFIED), Number("String", ScoreDictVar::NUM_UNSPECIFIED),
                    DateTime("date", 1), DateTime("time", 2), DateTime("dateTime", 3), DateTime("dateDaysSince[0]", 4),
                    DateTime("dateDaysSince[1960]", 5), DateTime("dateDaysSince[1970]", 6),
                    DateTime("dateDaysSince[1980]", 7), DateTime("timeSeconds", 8),
                    DateTime("dateTimeSecondsSince[0]", 9), DateTime("dateTimeSecondsSince[1960]", 10),
                    DateTime("dateTimeSecondsSince[1970]", 11), DateTime("dateTimeSecondsSince[1980]", 12),
                    Number("dateTimeSecdondsSince[0]", ScoreDictVar::NUM_UNSPECIFIED)));

TEST_F(DataDictionary, ParsesDateTimeTypesExactly) {
    EXPECT_EQ(translator.ParseDateTimeType(u"date"), ScoreDictVar::DT_DATE);
    EXPECT_EQ(translator.ParseDateTimeType(u"Date"), ScoreDictVar::DT_NONE);
    EXPECT_EQ(translator.ParseDateTimeType(u" date"), ScoreDictVar::DT_NONE);
    EXPECT_EQ(translator.ParseDateTimeType(u""), ScoreDictVar::DT_NONE);
    EXPECT_EQ(translator.ParseDateTimeType(nullptr), ScoreDictVar::DT_NONE);
}

TEST_F(DataDictionary, StorageTypeStringGoesBeforeTheDataType) {
    const ScoreDictVar* var = ReadField(Field("x-storageType='string' dataType='integer'"));
    EXPECT_EQ(var->GetVarType(), ScoreDictVar::STRING_VAR);
    EXPECT_EQ(var->GetNumericDataType(), ScoreDictVar::NUM_UNSPECIFIED);
}

TEST_F(DataDictionary, OtherStorageTypesLeaveTheDataType) {
    const ScoreDictVar* var = ReadField(Field("x-storageType='numeric' dataType='integer'"));
    EXPECT_EQ(var->GetVarType(), ScoreDictVar::kNUMERIC_VAR);
    EXPECT_EQ(var->GetNumericDataType(), ScoreDictVar::NUM_INTEGER);
}

TEST_F(DataDictionary, TheFirstStorageTypeExtensionReplacesTheAttribute) {
    EXPECT_EQ(ReadField(Categorical("<Extension name='x-storageType' value='string'/>"))->GetVarType(),
              ScoreDictVar::STRING_VAR);
    EXPECT_EQ(ReadField(Categorical("<Extension name='x-storageType' value='numeric'/>"
                                    "<Extension name='x-storageType' value='string'/>",
                                    "x-storageType='string'"))
                  ->GetVarType(),
              ScoreDictVar::kNUMERIC_VAR);
}

TEST_F(DataDictionary, BlankRulesComeFromExtensions) {
    const ScoreDictVar* plain = ReadField(Categorical(""));
    EXPECT_FALSE(plain->GetNoSpaceTrim());
    EXPECT_TRUE(plain->GetEmptyStringOK());
    const ScoreDictVar* set = ReadField(Categorical("<Extension name='noSpaceTrim' value='true'/>"
                                                    "<Extension name='emptyStringOk' value='true'/>"));
    EXPECT_TRUE(set->GetNoSpaceTrim());
    EXPECT_TRUE(set->GetEmptyStringOK());
    EXPECT_FALSE(ReadField(Categorical("<Extension name='noSpaceTrim' value='false'/>"))->GetNoSpaceTrim());
}

TEST_F(DataDictionary, MeasureIsKept) {
    EXPECT_EQ(ReadField(Categorical("<Extension name='x-measure' value='set'/>"))->GetXMeasure(), "set");
    EXPECT_EQ(ReadField(Categorical("<Extension name='measure' value='range'/>"))->GetXMeasure(), "range");
    EXPECT_FALSE(ReadField(Categorical("<Extension name='x-measure' value='set'/>"))->IsFlagVariable());
}

TEST_F(DataDictionary, MeasureFlagMakesAFlagVariable) {
    const ScoreDictVar* nominal = ReadField(Categorical("<Extension name='x-measure' value='flag'/>"));
    EXPECT_EQ(nominal->GetXMeasure(), "flag");
    EXPECT_TRUE(nominal->IsFlagVariable());
    EXPECT_TRUE(ReadField("<DataField name='f' optype='ordinal'><Extension name='measure' value='flag'/></DataField>")
                    ->IsFlagVariable());
}

TEST_F(DataDictionary, UsageTypeIsSwitchedOffByAChildOfAnExtension) {
    EXPECT_TRUE(ReadField(Categorical("<Extension/>"))->IsUsageTypeEnable());
    EXPECT_FALSE(ReadField(Categorical("<Extension><UsageType value='disable'/></Extension>"))->IsUsageTypeEnable());
    EXPECT_FALSE(ReadField(Continuous("<Extension name='x-measure' value='range'><other/>"
                                      "<UsageType value='disable'/><UsageType value='enable'/></Extension>"))
                     ->IsUsageTypeEnable());
    EXPECT_TRUE(ReadField(Categorical("<Extension><UsageType value='enable'/></Extension>"))->IsUsageTypeEnable());
    EXPECT_TRUE(ReadField(Categorical("<Extension><other value='disable'/></Extension>"))->IsUsageTypeEnable());
}

TEST_F(DataDictionary, UsageTypeOfNoExtensionDoesNothing) {
    translator.ParseUsageTypeExtension(nullptr, nullptr);
}

TEST_F(DataDictionary, StringFieldsGetEncodersWhenAsked) {
    const std::string field = Categorical("<Value value='x'/><Value value='y'/>", "dataType='string'");
    EXPECT_EQ(ReadField(field, false)->GetEncoder(), nullptr);
    const ScoreDictVar* var = ReadField(field, true);
    ASSERT_NE(var->GetEncoder(), nullptr);
    EXPECT_EQ(var->GetEncoder()->EncodeConst(std::string("y")), 1);
    EXPECT_EQ(ReadField(Categorical("<Value value='1'/>"), true)->GetEncoder(), nullptr);
    EXPECT_EQ(ReadField(Continuous(""), true)->GetEncoder(), nullptr);
}

TEST_F(DataDictionary, NumberOfFieldsMayHaveBlanks) {
    EXPECT_EQ(ReadElement("<DataDictionary numberOfFields=' 1 '><DataField name='f' optype='ordinal'/>"
                          "</DataDictionary>")
                  ->Size(),
              1);
}

class KeptDataDictionary : public DictionaryReading {};

TEST_F(KeptDataDictionary, EmptyStringOkIsNeverSwitchedOff) {
    EXPECT_TRUE(ReadField(Categorical("<Extension name='emptyStringOk' value='false'/>"))->GetEmptyStringOK());
}

TEST_F(KeptDataDictionary, ExtensionsInsideAValueCountForTheField) {
    const ScoreDictVar* var =
        ReadField(Categorical("<Value value='1'><Extension name='x-storageType' value='string'/></Value>"));
    EXPECT_EQ(var->GetVarType(), ScoreDictVar::STRING_VAR);
}

TEST_F(KeptDataDictionary, NumberOfFieldsIsCheckedBehindTheFields) {
    ExpectFailure([&] { ReadElement("<DataDictionary><DataField/></DataDictionary>"); },
                  {MISSING_ATTRIBUTE_OF, "name", "DataField"});
    ExpectFailure([&] { ReadElement("<DataDictionary><DataField name='f' optype='ordinal'/></DataDictionary>"); },
                  {MISSING_ATTRIBUTE_OF, "numberOfFields", "DataDictionary"});
}

TEST_F(KeptDataDictionary, AStrangeChildIsNamedAheadOfItsParentAndTheTagExpected) {
    ExpectFault("<Taxonomy/>", {UNEXPECTED_NODE_IN, "Taxonomy", "DataDictionary", "Extension"});
}

} // namespace
