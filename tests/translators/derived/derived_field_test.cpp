#include "support/faults/failure.h"
#include "support/rows.h"
#include "translators/derived/derived_fields.h"

#include <gtest/gtest.h>

// The DerivedField element itself: which are read, in what order, and what their attributes say.

namespace veltrane::tests {
namespace {

const std::string kContinuous = "optype='continuous' dataType='double'";
const std::string kRefToX = "<FieldRef field='x'/>";

struct OpenTranslator : PMMLTranslator {
    using PMMLTranslator::fFunctionMap;
    using PMMLTranslator::fNodeCounter;
};

TEST(DerivedField, NoneYieldsNullAndNoError) {
    EXPECT_EQ(DerivedFields("").derived, nullptr);
}

TEST(DerivedField, DefineFunctionElementsAreIgnored) {
    const DerivedFields fields("<DefineFunction name='f' optype='continuous'><ParameterField name='p'/>"
                               "<FieldRef field='p'/></DefineFunction>");
    EXPECT_EQ(fields.derived, nullptr);
}

TEST(DerivedField, ANullElementIsAMissingNode) {
    PMMLTranslator translator;
    ExpectFailure([&] { translator.HandleTransformationDictionary(nullptr, nullptr); }, {MISSING_NODE, "DerivedField"});
}

TEST(DerivedField, ReadingStartsTheNodeCounterAndFillsTheFunctionMap) {
    OpenTranslator translator;
    translator.fNodeCounter = 7;
    const ParsedXml document = ParseXml("<TransformationDictionary/>");
    EXPECT_EQ(translator.HandleTransformationDictionary(document.Root(), nullptr), nullptr);
    EXPECT_EQ(translator.fNodeCounter, 0);
    OpenTranslator filled;
    filled.InitFunctionMap();
    EXPECT_EQ(translator.fFunctionMap, filled.fFunctionMap);
    EXPECT_EQ(translator.fFunctionMap.at("lg10"), translator.fFunctionMap.at("log10"));
    EXPECT_EQ(translator.fFunctionMap.at("stdNormalIDF"), 78);
}

TEST(DerivedField, FieldsStandInDocumentOrder) {
    const DerivedFields fields(DerivedField("q", kContinuous, kRefToX) + DerivedField("b", kContinuous, kRefToX) +
                               DerivedField("k", kContinuous, kRefToX));
    const std::vector<std::string> order = {"q", "b", "k"};
    EXPECT_EQ(fields.derived->GetDerivedVarNames(), order);
    EXPECT_EQ(fields.derived->GetVarNames(), order);
}

TEST(DerivedField, FieldsAreFoundAtAnyDepthInDocumentOrder) {
    const DerivedFields fields("<Group>" + DerivedField("first", kContinuous, kRefToX) + "<Group>" +
                               DerivedField("second", kContinuous, "<FieldRef field='first'/>") + "</Group></Group>" +
                               DerivedField("third", kContinuous, "<FieldRef field='second'/>"));
    EXPECT_EQ(fields.derived->GetDerivedVarNames(), (std::vector<std::string>{"first", "second", "third"}));
}

TEST(DerivedField, AFieldInsideAnExtensionOfAFieldFollowsIt) {
    const DerivedFields fields(DerivedField(
        "outer", kContinuous,
        "<Extension>" + DerivedField("inner", kContinuous, "<FieldRef field='outer'/>") + "</Extension>" + kRefToX));
    EXPECT_EQ(fields.derived->GetDerivedVarNames(), (std::vector<std::string>{"outer", "inner"}));
}

TEST(DerivedField, TheOuterFieldDoesNotSeeTheInnerOne) {
    ExpectReadFailure(DerivedField("outer", kContinuous,
                                   "<Extension>" + DerivedField("inner", kContinuous, kRefToX) +
                                       "</Extension><FieldRef field='inner'/>"),
                      {MISSING_VARIABLE_IN_BOTH, "inner", "DataDictionary", "TransformationDictionary"});
}

TEST(DerivedField, AnAbsentNameIsRefused) {
    ExpectReadFailure("<DerivedField/>", {MISSING_ATTRIBUTE_OF, "name", "DerivedField"});
}

TEST(DerivedField, AnEmptyNameIsRefused) {
    ExpectReadFailure(DerivedField("", kContinuous, kRefToX), {NULL_ATTRIBUTE, "name", "DerivedField"});
}

TEST(DerivedField, TwoFieldsOfOneNameAreRefused) {
    ExpectReadFailure(DerivedField("z", kContinuous, kRefToX) + DerivedField("z", kContinuous, kRefToX),
                      {DUPLICATE_VARIABLE_IN, "z", "DataDictionary"});
}

TEST(DerivedField, AFieldWithTheNameOfADataFieldIsRefused) {
    ExpectReadFailure(DerivedField("x", kContinuous, kRefToX), {DUPLICATE_VARIABLE_IN, "x", "DataDictionary"});
}

TEST(DerivedField, AReferenceToALaterFieldIsRefused) {
    ExpectReadFailure(DerivedField("early", kContinuous, "<FieldRef field='late'/>") +
                          DerivedField("late", kContinuous, kRefToX),
                      {MISSING_VARIABLE_IN_BOTH, "late", "DataDictionary", "TransformationDictionary"});
}

TEST(DerivedField, AReferenceToAnEarlierFieldPasses) {
    DerivedFields fields(DerivedField("early", kContinuous, kRefToX) +
                         DerivedField("late", kContinuous, "<FieldRef field='early'/>"));
    EXPECT_EQ(fields.Score("late", {{"x", "2.5"}}), "2.5");
}

TEST(DerivedField, AReferenceToItselfIsRefused) {
    ExpectReadFailure(NumericField("<FieldRef field='z'/>"),
                      {MISSING_VARIABLE_IN_BOTH, "z", "DataDictionary", "TransformationDictionary"});
}

TEST(DerivedField, TheTranslatorStaysUsableAfterAFailure) {
    const ParsedXml bad = ParseXml("<T>" + DerivedField("a", kContinuous, "<Constant>1</Constant>") +
                                   DerivedField("b", kContinuous, kRefToX) + "</T>");
    const ParsedXml good = ParseXml("<T>" + DerivedField("a", kContinuous, "<Constant>1</Constant>") + "</T>");
    PMMLTranslator translator;
    ExpectFailure([&] { translator.HandleTransformationDictionary(bad.Root(), nullptr); },
                  {MISSING_VARIABLE_IN_BOTH, "x", "DataDictionary", "TransformationDictionary"});
    const std::unique_ptr<TransformationDictionary> derived(
        translator.HandleTransformationDictionary(good.Root(), nullptr));
    EXPECT_EQ(derived->Size(), 1);
}

TEST(DerivedField, TheLabelIsTheDisplayName) {
    const DerivedFields fields(DerivedField("z", kContinuous + " displayName='a name'", kRefToX));
    EXPECT_EQ(fields.Var("z").GetLabel(), "a name");
}

TEST(DerivedField, TheLabelIsTheNameWithoutADisplayName) {
    const DerivedFields fields(DerivedField("z", kContinuous + " displayName=''", kRefToX) +
                               DerivedField("w", kContinuous, kRefToX));
    EXPECT_EQ(fields.Var("z").GetLabel(), "z");
    EXPECT_EQ(fields.Var("w").GetLabel(), "w");
}

TEST(DerivedField, NamesAreInTheEncodingOfTheTranslator) {
    const DerivedFields fields(DerivedField("gr\u00F6\u00DFe", kContinuous, kRefToX));
    EXPECT_EQ(fields.Var("gr\u00F6\u00DFe").GetName(), "gr\u00F6\u00DFe");
}

struct LevelRow {
    const char* optype;
    int level;
};
class DerivedFieldLevel : public testing::TestWithParam<LevelRow> {};

TEST_P(DerivedFieldLevel, IsSetByOptype) {
    const DerivedFields fields(
        DerivedField("z", std::string("dataType='double' optype='") + GetParam().optype + "'", kRefToX));
    EXPECT_EQ(fields.Var("z").GetMLevel(), GetParam().level);
}

INSTANTIATE_TEST_SUITE_P(Words, DerivedFieldLevel,
                         testing::Values(LevelRow{"continuous", 0}, LevelRow{"ordinal", 1}, LevelRow{"categorical", 2}),
                         [](const auto& row) { return row.param.optype; });

TEST(DerivedField, AnAbsentOptypeIsRefused) {
    ExpectReadFailure(DerivedField("z", "dataType='double'", kRefToX), {NULL_ATTRIBUTE, "optype", "DerivedField"});
}

TEST(DerivedField, AnEmptyOptypeIsRefused) {
    ExpectReadFailure(DerivedField("z", "dataType='double' optype=''", kRefToX),
                      {NULL_ATTRIBUTE, "optype", "DerivedField"});
}

TEST(DerivedField, AnUnknownOptypeIsRefused) {
    ExpectReadFailure(DerivedField("z", "dataType='double' optype='Continuous'", kRefToX),
                      {INVALID_ATTRIBUTE_VALUE, "Continuous", "optype"});
}

TEST(DerivedField, AnAbsentDataTypeIsRefused) {
    ExpectReadFailure(DerivedField("z", "optype='continuous'", kRefToX),
                      {MISSING_ATTRIBUTE_OF, "dataType", "DerivedField"});
}

TEST(DerivedField, TheNameIsTestedBeforeTheLevelAndTheLevelBeforeTheType) {
    ExpectReadFailure(DerivedField("x", "optype='?'", kRefToX), {DUPLICATE_VARIABLE_IN, "x", "DataDictionary"});
    ExpectReadFailure(DerivedField("z", "optype='?'", kRefToX), {INVALID_ATTRIBUTE_VALUE, "?", "optype"});
}

struct TypeRow {
    const char* name;
    const char* dataType;
    int varType;
    int numericType;
    int dateTimeType;
};
class DerivedFieldType : public testing::TestWithParam<TypeRow> {};

TEST_P(DerivedFieldType, IsSetByDataType) {
    const DerivedFields fields(
        DerivedField("z", std::string("optype='ordinal' dataType='") + GetParam().dataType + "'", ""));
    const TransformVar& var = fields.Var("z");
    EXPECT_EQ(var.GetVarType(), GetParam().varType);
    EXPECT_EQ(var.GetNumericDataType(), GetParam().numericType);
    EXPECT_EQ(var.GetDateTimeType(), GetParam().dateTimeType);
}

INSTANTIATE_TEST_SUITE_P(Words, DerivedFieldType,
                         testing::Values(TypeRow{"String", "string", 1, 0, 0}, TypeRow{"Integer", "integer", 0, 1, 0},
                                         TypeRow{"Double", "double", 0, 2, 0},
                                         TypeRow{"FloatIsPlainNumeric", "float", 0, 0, 0},
                                         TypeRow{"EmptyIsPlainNumeric", "", 0, 0, 0}, TypeRow{"Date", "date", 4, 0, 1},
                                         TypeRow{"Time", "time", 4, 0, 2}, TypeRow{"DateTime", "dateTime", 4, 0, 3},
                                         TypeRow{"DaysSince0", "dateDaysSince[0]", 4, 0, 4},
                                         TypeRow{"DaysSince1960", "dateDaysSince[1960]", 4, 0, 5},
                                         TypeRow{"DaysSince1970", "dateDaysSince[1970]", 4, 0, 6},
                                         TypeRow{"DaysSince1980", "dateDaysSince[1980]", 4, 0, 7},
                                         TypeRow{"TimeSeconds", "timeSeconds", 4, 0, 8},
                                         TypeRow{"SecondsSince0", "dateTimeSecondsSince[0]", 4, 0, 9},
                                         TypeRow{"SecondsSince1960", "dateTimeSecondsSince[1960]", 4, 0, 10},
                                         TypeRow{"SecondsSince1970", "dateTimeSecondsSince[1970]", 4, 0, 11},
                                         TypeRow{"SecondsSince1980", "dateTimeSecondsSince[1980]", 4, 0, 12}),
                         NameOfRow());

} // namespace
} // namespace veltrane::tests
