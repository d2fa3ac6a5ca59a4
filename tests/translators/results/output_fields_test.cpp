#include "support/dom.h"
#include "support/faults/failure.h"

#include <MCVeltrane_900/PMMLTranslator.h>
#include <MCVeltrane_900/ResultVar.h>
#include <MCVeltrane_900/ScoreDictionary.h>
#include <MCVeltrane_900/ScoreValue.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

using namespace veltrane::tests;

namespace {

using Names = std::vector<std::string>;

class OutputFields : public testing::Test {
protected:
    void SetUp() override {
        veltrane::tests::StartXml();
        translator.CreateTranscoder("UTF-8");
    }

    std::unique_ptr<ScoreDictionary> Read(const std::string& fields) {
        const ParsedXml xml = ParseXml("<Output>" + fields + "</Output>");
        return std::unique_ptr<ScoreDictionary>(translator.ParseResultDictionary(xml.Root()));
    }

    /// Reads one ResultField with a name and a feature beside these attributes.
    const ResultVar& ReadOne(const std::string& attributes) {
        read = Read("<ResultField name='r' feature='predictedValue' " + attributes + "/>");
        return dynamic_cast<const ResultVar&>(*read->GetVar("r"));
    }

    void ExpectFault(const std::string& fields, const Failure& failure) {
        ExpectFailure([&] { Read(fields); }, failure);
    }

    PMMLTranslator translator{"UTF-8"};
    std::unique_ptr<ScoreDictionary> read;
};

struct FeatureRow {
    const char* text;
    int feature;
};

class OutputFeatures : public OutputFields, public testing::WithParamInterface<FeatureRow> {};

TEST_P(OutputFeatures, HasItsNumber) {
    const auto dictionary = Read("<ResultField name='r' feature='" + std::string(GetParam().text) + "'/>");
    EXPECT_EQ(dynamic_cast<const ResultVar&>(*dictionary->GetVar("r")).GetFeature(), GetParam().feature);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, OutputFeatures,
    testing::Values(FeatureRow{"predictedValue", 1}, FeatureRow{"predictedDisplayValue", 2},
                    FeatureRow{"probability", 3}, FeatureRow{"residual", 4}, FeatureRow{"standardError", 5},
                    FeatureRow{"clusterId", 6}, FeatureRow{"clusterAffinity", 7}, FeatureRow{"entityId", 8},
                    FeatureRow{"entityAffinity", 9}, FeatureRow{"warning", 10}, FeatureRow{"ruleValue", 11},
                    FeatureRow{"standardDeviation", 12}, FeatureRow{"", 0}),
    [](const auto& info) { return *info.param.text == 0 ? std::string("empty") : std::string(info.param.text); });

TEST_F(OutputFields, NameIsTheKeyAndTheLabelWithoutOne) {
    const ResultVar& var = ReadOne("");
    EXPECT_EQ(var.GetName(), "r");
    EXPECT_EQ(var.GetLabel(), "r");
    EXPECT_EQ(var.GetMLevel(), ScoreDictVar::LEVEL_CONTINUOUS);
    EXPECT_EQ(var.GetVarType(), ScoreDictVar::kNUMERIC_VAR);
    EXPECT_EQ(var.GetDefValue(), nullptr);
}

TEST_F(OutputFields, DisplayNameIsTheLabel) {
    EXPECT_EQ(ReadOne("displayName='the result'").GetLabel(), "the result");
}

TEST_F(OutputFields, EmptyDisplayNameCountsAsAbsent) {
    EXPECT_EQ(ReadOne("displayName=''").GetLabel(), "r");
}

TEST_F(OutputFields, OptypeIsTheLevel) {
    EXPECT_EQ(ReadOne("optype='continuous'").GetMLevel(), 0);
    EXPECT_EQ(ReadOne("optype='ordinal'").GetMLevel(), 1);
    EXPECT_EQ(ReadOne("optype='categorical'").GetMLevel(), 2);
    EXPECT_EQ(ReadOne("optype=''").GetMLevel(), 0);
}

TEST_F(OutputFields, StringIsTheOneDataTypeThatCounts) {
    EXPECT_EQ(ReadOne("dataType='string'").GetVarType(), 1);
    EXPECT_EQ(ReadOne("dataType='' ").GetVarType(), 0);
}

TEST_F(OutputFields, ContinuousStringIsNoConflictHere) {
    const ResultVar& var = ReadOne("optype='continuous' dataType='string'");
    EXPECT_EQ(var.GetVarType(), 1);
    EXPECT_EQ(var.GetMLevel(), 0);
}

TEST_F(OutputFields, ValueIsTheDefaultValue) {
    const ResultVar& var = ReadOne("dataType='string' value='yes'");
    ASSERT_NE(var.GetDefValue(), nullptr);
    EXPECT_EQ(var.GetDefValue()->GetType(), ScoreValue::STRING_VALUE);
    EXPECT_EQ(var.GetDefValue()->GetString(), "yes");
    EXPECT_EQ(ReadOne("value=''").GetDefValue(), nullptr);
}

TEST_F(OutputFields, ComeInDocumentOrder) {
    read = Read("<ResultField name='b' feature='probability'/><ResultField name='a' feature='residual'/>");
    EXPECT_EQ(read->GetVarNames(), Names({"b", "a"}));
    EXPECT_EQ(read->Size(), 2);
}

TEST_F(OutputFields, AreFoundAtAnyDepth) {
    read = Read("<ResultField name='a' feature=''/><x><y><ResultField name='b' feature=''>"
                "<ResultField name='c' feature=''/></ResultField></y></x><ResultField name='d' feature=''/>");
    EXPECT_EQ(read->GetVarNames(), Names({"a", "b", "c", "d"}));
}

TEST_F(OutputFields, NoneGiveNoDictionary) {
    EXPECT_EQ(Read(""), nullptr);
    EXPECT_EQ(Read("<x><y/></x>"), nullptr);
}

TEST_F(OutputFields, ElementItselfDoesNotCount) {
    const ParsedXml xml = ParseXml("<ResultField/>");
    EXPECT_EQ(translator.ParseResultDictionary(xml.Root()), nullptr);
}

TEST_F(OutputFields, ClonesStayOutputFields) {
    read = Read("<ResultField name='r' feature='warning'/>");
    const std::unique_ptr<ScoreDictionary> clone(read->Clone());
    EXPECT_EQ(dynamic_cast<const ResultVar&>(*clone->GetVar("r")).GetFeature(), 10);
}

TEST_F(OutputFields, TextsAreInTheTranslatorsEncoding) {
    PMMLTranslator western("CP1252");
    western.CreateTranscoder("CP1252");
    const ParsedXml xml = ParseXml("<Output><ResultField name='\xC3\xA4' displayName='\xC3\xB6' value='\xE2\x82\xAC' "
                                   "feature='probability'/></Output>");
    read.reset(western.ParseResultDictionary(xml.Root()));
    const ScoreDictVar* var = read->GetVar("\xE4");
    ASSERT_NE(var, nullptr);
    EXPECT_EQ(var->GetLabel(), "\xF6");
    EXPECT_EQ(var->GetDefValue()->GetString(), "\x80");
}

// Emptiness is the attribute's, not that of its text in an encoding that lacks the characters.
TEST_F(OutputFields, TextsThatTheEncodingLacksAreNotEmpty) {
    PMMLTranslator western("CP1252");
    western.CreateTranscoder("CP1252");
    const ParsedXml xml = ParseXml("<Output><ResultField name='\xD0\x96' feature='probability'/>"
                                   "<ResultField name='r' displayName='\xD0\x96' value='\xD0\x96' "
                                   "feature='probability'/></Output>");
    read.reset(western.ParseResultDictionary(xml.Root()));
    EXPECT_EQ(read->Size(), 1); // a dictionary takes no variable without a name
    const ScoreDictVar* var = read->GetVar("r");
    ASSERT_NE(var, nullptr);
    EXPECT_EQ(var->GetLabel(), "");
    ASSERT_NE(var->GetDefValue(), nullptr);
    EXPECT_EQ(var->GetDefValue()->GetString(), "");
}

TEST_F(OutputFields, NoElement) {
    ExpectFailure([&] { translator.ParseResultDictionary(nullptr); }, {MISSING_NODE, "ResultField"});
}

TEST_F(OutputFields, NoName) {
    ExpectFault("<ResultField feature='x' optype='x'/>", {MISSING_ATTRIBUTE_OF, "name", "ResultField"});
}

TEST_F(OutputFields, EmptyName) {
    ExpectFault("<ResultField name='' feature='x' optype='x'/>", {NULL_ATTRIBUTE, "name", "ResultField"});
}

TEST_F(OutputFields, UnknownOptypeComesBeforeTheFeature) {
    ExpectFault("<ResultField name='r' optype='Ordinal'/>", {INVALID_ATTRIBUTE_VALUE, "Ordinal", "optype"});
}

TEST_F(OutputFields, NoFeature) {
    ExpectFault("<ResultField name='r' optype='ordinal' value='v'/>", {MISSING_ATTRIBUTE_OF, "feature", "ResultField"});
}

TEST_F(OutputFields, UnknownFeature) {
    ExpectFault("<ResultField name='r' feature='PredictedValue' value='v'/>",
                {INVALID_ATTRIBUTE_VALUE_IN, "PredictedValue", "feature", "ResultField"});
}

TEST_F(OutputFields, FirstFaultInDocumentOrderCounts) {
    ExpectFault("<ResultField name='a' feature='warning'/><ResultField name='b' optype='one' feature=''/>"
                "<ResultField name='c' optype='two' feature=''/>",
                {INVALID_ATTRIBUTE_VALUE, "one", "optype"});
}

TEST_F(OutputFields, TranslatorStaysUsableAfterAFault) {
    ExpectFault("<ResultField name='a' feature='warning'/><ResultField name='b' feature='two'/>",
                {INVALID_ATTRIBUTE_VALUE_IN, "two", "feature", "ResultField"});
    EXPECT_EQ(Read("<ResultField name='a' feature='warning'/>")->Size(), 1);
}

class KeptOutputFields : public OutputFields {};

TEST_F(KeptOutputFields, CategoricalIsAFeatureTooTheSameAsTheDisplayValue) {
    read = Read("<ResultField name='r' feature='categorical'/>");
    EXPECT_EQ(dynamic_cast<const ResultVar&>(*read->GetVar("r")).GetFeature(), 2);
}

TEST_F(KeptOutputFields, OtherDataTypesLeaveAPlainNumber) {
    for (const char* type : {"date", "dateDaysSince[1970]", "integer", "double", "String"}) {
        const ResultVar& var = ReadOne("dataType='" + std::string(type) + "'");
        EXPECT_EQ(var.GetVarType(), ScoreDictVar::kNUMERIC_VAR) << type;
        EXPECT_EQ(var.GetDateTimeType(), ScoreDictVar::DT_NONE) << type;
        EXPECT_EQ(var.GetNumericDataType(), ScoreDictVar::NUM_UNSPECIFIED) << type;
    }
}

TEST_F(KeptOutputFields, DefaultValueOfANumericFieldIsATextToo) {
    const ResultVar& var = ReadOne("value='1.5'");
    EXPECT_EQ(var.GetVarType(), ScoreDictVar::kNUMERIC_VAR);
    EXPECT_EQ(var.GetDefValue()->GetType(), ScoreValue::STRING_VALUE);
    EXPECT_EQ(var.GetDefValue()->GetString(), "1.5");
}

TEST_F(KeptOutputFields, SecondFieldOfANameIsListedAndDropped) {
    read = Read("<ResultField name='r' feature='warning'/><ResultField name='r' feature='residual' value='v'/>");
    EXPECT_EQ(read->GetVarNames(), Names({"r", "r"}));
    EXPECT_EQ(read->Size(), 1);
    EXPECT_EQ(dynamic_cast<const ResultVar&>(*read->GetVar("r")).GetFeature(), 10);
    EXPECT_EQ(read->GetVar("r")->GetDefValue(), nullptr);
}

TEST_F(KeptOutputFields, SecondFieldOfANameCanStillFail) {
    ExpectFault("<ResultField name='r' feature='warning'/><ResultField name='r' feature='x'/>",
                {INVALID_ATTRIBUTE_VALUE_IN, "x", "feature", "ResultField"});
}

} // namespace
