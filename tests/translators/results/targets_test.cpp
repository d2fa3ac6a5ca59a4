#include "support/dom.h"
#include "support/faults/fault.h"
#include "support/rows.h"
#include "translators/dictionary/dictionary_reading.h"

#include <MCVeltrane_900/DictVar.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/ScoreEncoder.h>
#include <MCVeltrane_900/ScoreValueLabel.h>
#include <MCVeltrane_900/ScoreValueLabelSet.h>
#include <MCVeltrane_900/ScoreValueProbability.h>
#include <MCVeltrane_900/ScoreValueProbabilitySet.h>
#include <MCVeltrane_900/StringValue.h>

#include <gtest/gtest.h>
#include <xercesc/util/XMLString.hpp>

#include <charconv>
#include <memory>
#include <string>
#include <vector>

// What a Targets element does to the variables of a dictionary. The dictionary of every test:
//
//     x, y   continuous, double
//     n      categorical, double, without values
//     o      ordinal, integer, values 1 and 2
//     s      categorical, string, values a and b; "?" is declared missing
//     t      categorical, string, without values
//     f      categorical, string, a flag, without values
//     d      continuous, dateDaysSince[1970]
//     e      ordinal, dateDaysSince[1970], without values

namespace veltrane::tests {
namespace {

using Texts = std::vector<std::string>;

constexpr const char* kFields = R"(
  <DataField name="x" optype="continuous" dataType="double"/>
  <DataField name="y" optype="continuous" dataType="double"/>
  <DataField name="n" optype="categorical" dataType="double"/>
  <DataField name="o" optype="ordinal" dataType="integer"><Value value="1" displayValue="one"/><Value value="2"/></DataField>
  <DataField name="s" optype="categorical" dataType="string"><Value value="a"/><Value value="b"/><Value value="?" property="missing"/></DataField>
  <DataField name="t" optype="categorical" dataType="string"/>
  <DataField name="f" optype="categorical" dataType="string"><Extension name="x-measure" value="flag"/></DataField>
  <DataField name="d" optype="continuous" dataType="dateDaysSince[1970]"/>
  <DataField name="e" optype="ordinal" dataType="dateDaysSince[1970]"/>)";

/// One Target element.
std::string Target(const std::string& field, const std::string& optype, const std::string& children) {
    return "<Target field='" + field + "' optype='" + optype + "'>" + children + "</Target>";
}

/// TargetValue elements with these values.
std::string Values(const Texts& values) {
    std::string elements;
    for (const std::string& value : values) {
        elements += "<TargetValue value='" + value + "'/>";
    }
    return elements;
}

class Targets : public DictionaryReading {
protected:
    void SetUp() override { dictionary = Read(kFields); }

    bool Handle(const std::string& children) {
        const ParsedXml xml = ParseXml("<Targets>" + children + "</Targets>");
        return translator.HandleTargets(xml.Root(), dictionary.get());
    }

    void ExpectTargetFault(const std::string& children, const Failure& failure) {
        ExpectFailure([&] { Handle(children); }, failure);
    }

    ScoreDictVar* Var(const std::string& name) { return dictionary->GetVar(name); }

    /// The default value, "none" without one.
    std::string Default(const std::string& name) {
        const ScoreValue* value = Var(name)->GetDefValue();
        return value ? Number(value->GetDouble()) : "none";
    }

    /// The prior probabilities as "value=probability".
    Texts Priors(const std::string& name) {
        Texts priors;
        if (const ScoreValueProbabilitySet* set = Var(name)->GetValueProbabilities()) {
            for (const ScoreValueProbability* prior : set->GetAllValueProbabilities()) {
                priors.push_back(prior->GetValue()->GetString() + "=" + Number(prior->GetProbability()));
            }
        }
        return priors;
    }

    Texts LabelsOf(const std::string& name) { return Labels(Var(name)); }

    static std::string Number(double number) {
        char buffer[32];
        return std::string(buffer, std::to_chars(buffer, buffer + sizeof buffer, number).ptr);
    }

    Dictionary dictionary;
};

TEST_F(Targets, NoElementDoesNothing) {
    EXPECT_TRUE(translator.HandleTargets(nullptr, dictionary.get()));
}

TEST_F(Targets, OtherChildrenAreSkipped) {
    EXPECT_TRUE(Handle("<Extension/><Goal field='q'/><targets><Target/></targets>"));
}

TEST_F(Targets, DefaultValueOfAContinuousField) {
    EXPECT_TRUE(Handle(Target("x", "continuous", "<TargetValue defaultValue='2.5'/>")));
    EXPECT_EQ(Default("x"), "2.5");
    EXPECT_EQ(Var("x")->GetDefValue()->GetType(), ScoreValue::NUMERIC_VALUE);
    EXPECT_EQ(Var("x")->GetValueLabels(), nullptr);
    EXPECT_EQ(Var("x")->GetValueProbabilities(), nullptr);
}

TEST_F(Targets, OnlyTheFirstTargetValueOfAContinuousFieldCounts) {
    Handle(Target("x", "continuous", "<TargetValue defaultValue='1'/><TargetValue defaultValue='2'/>") +
           Target("y", "continuous", "<TargetValue/><TargetValue defaultValue='2'/>"));
    EXPECT_EQ(Default("x"), "1");
    EXPECT_EQ(Default("y"), "none");
}

TEST_F(Targets, FirstTargetValueStandsBehindOtherChildren) {
    Handle(Target("x", "continuous",
                  "<Extension defaultValue='7'/><x><TargetValue defaultValue='8'/></x>"
                  "<TargetValue defaultValue='1'/>"));
    EXPECT_EQ(Default("x"), "1");
}

TEST_F(Targets, ContinuousFieldWithoutDefaultValueStaysAsItIs) {
    Handle(Target("x", "continuous", "") + Target("y", "continuous", "<TargetValue defaultValue=''/>"));
    EXPECT_EQ(Default("x"), "none");
    EXPECT_EQ(Default("y"), "none");
}

TEST_F(Targets, RestOfAContinuousTargetIsNotRead) {
    Handle(Target("x", "continuous", "<TargetValue defaultValue='1' value='v' priorProbability='p'/>"));
    EXPECT_EQ(Default("x"), "1");
}

TEST_F(Targets, EmptyOptypeTakesTheFieldsLevel) {
    Handle(Target("x", "", "<TargetValue defaultValue='1'/>") + Target("n", "", Values({"5"})) +
           Target("o", "", Values({"3"})));
    EXPECT_EQ(Default("x"), "1");
    EXPECT_EQ(LabelsOf("n"), Texts({"5=5"}));
    EXPECT_EQ(LabelsOf("o"), Texts({"1=one", "2=2", "3=3"}));
}

TEST_F(Targets, SecondTargetOfAContinuousFieldReplacesTheDefault) {
    Handle(Target("x", "continuous", "<TargetValue defaultValue='1'/>") +
           Target("x", "continuous", "<TargetValue defaultValue='2'/>"));
    EXPECT_EQ(Default("x"), "2");
}

TEST_F(Targets, CategoriesOfANumericField) {
    Handle(Target("n", "categorical", "<TargetValue value='2.5' displayValue='two'/><TargetValue value='1'/>"));
    EXPECT_EQ(LabelsOf("n"), Texts({"2.5=two", "1=1"}));
    EXPECT_EQ(Var("n")->GetNumberOfCats(), 2);
    EXPECT_EQ(Var("n")->GetValueProbabilities(), nullptr);
    EXPECT_EQ(Default("n"), "none");
}

TEST_F(Targets, CategoriesOfATextField) {
    Handle(Target("t", "categorical",
                  "<TargetValue value='p' displayValue='P'/><x value='z'/>"
                  "<TargetValue value='q' displayValue=''/>"));
    EXPECT_EQ(LabelsOf("t"), Texts({"'p'=P", "'q'=q"}));
}

TEST_F(Targets, CategoriesOfADateField) {
    Handle(Target("e", "ordinal", Values({"10", "20"})));
    const auto& labels = Var("e")->GetValueLabels()->GetAllValueLabels();
    ASSERT_EQ(labels.size(), 2u);
    EXPECT_EQ(labels[0]->GetValue()->GetType(), ScoreValue::DATETIME_VALUE);
    EXPECT_EQ(labels[0]->GetLabel(), "10");
}

TEST_F(Targets, CategoriesJoinTheLabelsThatAreThere) {
    Handle(Target("o", "ordinal", "<TargetValue value='2' displayValue='two'/><TargetValue value='3'/>"));
    EXPECT_EQ(LabelsOf("o"), Texts({"1=one", "2=2", "3=3"}));
}

TEST_F(Targets, PriorProbabilities) {
    Handle(Target("t", "categorical",
                  "<TargetValue value='p' priorProbability='0.25'/><TargetValue value='q'/>"
                  "<TargetValue value='r' priorProbability='0.5'/>"));
    EXPECT_EQ(LabelsOf("t"), Texts({"'p'=p", "'q'=q", "'r'=r"}));
    EXPECT_EQ(Priors("t"), Texts({"p=0.25", "r=0.5"}));
}

TEST_F(Targets, PriorProbabilityOfAValueThatHasALabel) {
    Handle(Target("s", "categorical", "<TargetValue value='b' priorProbability='0.75'/>"));
    EXPECT_EQ(LabelsOf("s"), Texts({"'a'=a", "'b'=b"}));
    EXPECT_EQ(Priors("s"), Texts({"b=0.75"}));
}

TEST_F(Targets, ProbabilitiesHoldValuesOfTheirOwn) {
    Handle(Target("t", "categorical", "<TargetValue value='p' priorProbability='1'/>"));
    const ScoreValueProbability* prior = Var("t")->GetValueProbabilities()->GetAllValueProbabilities().at(0);
    EXPECT_NE(prior->GetValue(), Var("t")->GetValueLabels()->GetAllValueLabels().at(0)->GetValue());
}

TEST_F(Targets, SecondTargetReplacesTheProbabilities) {
    Handle(Target("t", "categorical", "<TargetValue value='p' priorProbability='0.25'/>") +
           Target("t", "categorical", "<TargetValue value='q' priorProbability='0.5'/>") +
           Target("t", "categorical", Values({"r"})));
    EXPECT_EQ(LabelsOf("t"), Texts({"'p'=p", "'q'=q", "'r'=r"}));
    EXPECT_EQ(Priors("t"), Texts({"q=0.5"}));
}

TEST_F(Targets, WithoutTargetValueTheLabelsAreLeftAlone) {
    const ScoreValueLabelSet* before = Var("s")->GetValueLabels();
    Handle(Target("s", "categorical", "<x/>") + Target("t", "categorical", ""));
    EXPECT_EQ(Var("s")->GetValueLabels(), before);
    EXPECT_EQ(LabelsOf("s"), Texts({"'a'=a", "'b'=b"}));
    EXPECT_EQ(Var("t")->GetValueLabels(), nullptr);
    EXPECT_EQ(Var("t")->GetNumberOfCats(), 0);
    EXPECT_TRUE(Var("t")->IsEmptyCateValues());
}

TEST_F(Targets, EmptyTextIsACategoryWhereTheFieldAllowsIt) {
    ASSERT_TRUE(Var("t")->GetEmptyStringOK());
    Handle(Target("t", "categorical", Values({""})));
    EXPECT_EQ(LabelsOf("t"), Texts({"''="}));
}

TEST_F(Targets, FlagFieldMayHaveTwo) {
    Handle(Target("f", "categorical", Values({"p", "q"})));
    EXPECT_EQ(Var("f")->GetNumberOfCats(), 2);
}

TEST_F(Targets, ListedNumberIsNotMissingEvenInAMissingRange) {
    dictionary = Read("<DataField name='n' optype='categorical' dataType='double'>"
                      "<Extension name='invalidRangeLower' value='5'/></DataField>");
    const NumericValue seven(7.0);
    ASSERT_TRUE(Var("n")->IsMissingValue(&seven));
    Handle(Target("n", "categorical", Values({"7"})));
    EXPECT_FALSE(Var("n")->IsMissingValue(&seven));
}

TEST_F(Targets, TextsAreInTheTranslatorsEncoding) {
    translator.CreateTranscoder("CP1252");
    Handle(Target("t", "categorical", "<TargetValue value='\xC3\xA4' displayValue='\xE2\x82\xAC'/>"));
    EXPECT_EQ(LabelsOf("t"), Texts({"'\xE4'=\x80"}));
}

// Emptiness is the attribute's, not that of its text in an encoding that lacks the characters.

class LackingTarget : public Targets {
protected:
    void SetUp() override {
        Targets::SetUp();
        translator.CreateTranscoder("CP1252");
    }

    /// Expects the message for a number, which shows the document's text in the process's code page.
    void ExpectNoNumber(const std::string& children, const XMLCh* text) {
        const std::unique_ptr<char, void (*)(char*)> local(xercesc::XMLString::transcode(text),
                                                           [](char* bytes) { xercesc::XMLString::release(&bytes); });
        ExpectTargetFault(children, {INVALID_VALUE_OF_TYPE, local.get(), "double"});
    }
};

TEST_F(LackingTarget, FieldIsNotInTheDictionary) {
    ExpectTargetFault("<Target field='\xD0\x96' optype=''/>", {MISSING_VARIABLE, "", "DataDictionary"});
}

TEST_F(LackingTarget, PriorProbabilityIsNoNumber) {
    ExpectNoNumber(Target("t", "categorical", "<TargetValue value='a' priorProbability='\xD0\x96'/>"), u"\u0416");
}

TEST_F(LackingTarget, ValueOfANumericFieldIsNoNumber) {
    ExpectNoNumber(Target("n", "categorical", Values({"\xD0\x96"})), u"\u0416");
}

TEST_F(LackingTarget, ValueAndDisplayValueOfATextFieldAreReadWithoutTheCharacters) {
    Var("t")->SetEmptyStringOK(false);
    Handle(Target("t", "categorical", "<TargetValue value='\xD0\x96'/>"));
    EXPECT_EQ(LabelsOf("t"), Texts({"''="}));
    Handle(Target("s", "categorical", "<TargetValue value='c' displayValue='\xD0\x96'/>"));
    EXPECT_EQ(LabelsOf("s"), Texts({"'a'=a", "'b'=b", "'c'="}));
}

// Faults of one Target, in the order in which they are looked for.

class RefusedTarget : public Targets, public testing::WithParamInterface<Fault> {};

TEST_P(RefusedTarget, EndsInItsMessage) {
    ExpectTargetFault(GetParam().document, GetParam().failure);
}

const Fault kFaults[] = {
    {"NoField", "<Target/>", Failure(MISSING_ATTRIBUTE_OF, "field", "Target")},
    {"EmptyField", "<Target field=''/>", Failure(NULL_ATTRIBUTE, "field", "Target")},
    {"UnknownField", "<Target field='q'/>", Failure(MISSING_VARIABLE, "q", "DataDictionary")},
    {"NoOptype", "<Target field='x'/>", Failure(MISSING_ATTRIBUTE_OF, "optype", "Target")},
    {"UnknownOptype", Target("x", "nominal", ""), Failure(INVALID_ATTRIBUTE_VALUE, "nominal", "optype")},
    {"BadDefault", Target("x", "continuous", "<TargetValue defaultValue='abc'/>"),
     Failure(INVALID_VALUE_OF_TYPE, "abc", "double")},
    {"NoValue", Target("n", "categorical", "<TargetValue priorProbability='p'/>"),
     Failure(MISSING_ATTRIBUTE_OF, "value", "TargetValue")},
    {"BadNumber", Target("n", "categorical", "<TargetValue value='abc' priorProbability='p'/>"),
     Failure(INVALID_VALUE_OF_TYPE, "abc", "double")},
    {"BadNumberAmongLabels", Target("o", "ordinal", Values({"abc"})), Failure(INVALID_VALUE_OF_TYPE, "abc", "double")},
    {"BadDate", Target("e", "ordinal", Values({"abc"})), Failure(INVALID_VALUE_OF_TYPE, "abc", "double")},
    {"EmptyDate", Target("e", "ordinal", Values({""})), Failure(INVALID_VALUE_OF_TYPE, "", "double")},
    {"BadProbability", Target("n", "categorical", "<TargetValue value='1' priorProbability='p'/>"),
     Failure(INVALID_VALUE_OF_TYPE, "p", "double")},
    {"ThirdCategoryOfAFlag", Target("f", "categorical", Values({"p", "q", "r"})),
     Failure(MORE_THAN_TWO, "categorical", "flag")},
    {"FlagBeforeDuplicates", Target("f", "categorical", Values({"p", "p", "p"})),
     Failure(MORE_THAN_TWO, "categorical", "flag")},
    {"MissingText", Target("s", "categorical", Values({"?"})), Failure(VALUE_MISSING_OR_VALID_AND_INVALID, "?", "s")},
    {"DuplicateText", Target("t", "categorical", Values({"p", "q", "p"})),
     Failure(DUPLICATE_DEFINITION, "value", "p", "DataDictionary")},
    {"TrailingBlanksAreNoDifference", Target("t", "categorical", Values({"p", "p  "})),
     Failure(DUPLICATE_DEFINITION, "value", "p", "DataDictionary")},
    {"DuplicateNumber", Target("n", "categorical", Values({"2", "2.0"})),
     Failure(DUPLICATE_DEFINITION, "value", "2", "DataDictionary")},
};

INSTANTIATE_TEST_SUITE_P(Rows, RefusedTarget, testing::ValuesIn(kFaults), NameOfRow());

TEST_F(Targets, FlagFieldWithLabelsOfBothKinds) {
    dictionary = Read("<DataField name='f' optype='categorical' dataType='string'>"
                      "<Extension name='x-measure' value='flag'/><Value value='p'/><Value value='q'/></DataField>");
    Handle(Target("f", "categorical", Values({"q", "p"})));
    ExpectTargetFault(Target("f", "categorical", Values({"r"})), {MORE_THAN_TWO, "categorical", "flag"});
}

TEST_F(Targets, UntrimmedTextsDifferInTheirBlanks) {
    dictionary = Read("<DataField name='t' optype='categorical' dataType='string'>"
                      "<Extension name='noSpaceTrim' value='true'/></DataField>");
    Handle(Target("t", "categorical", Values({"p", "p "})));
    EXPECT_EQ(LabelsOf("t"), Texts({"'p'=p", "'p '=p "}));
}

TEST_F(Targets, RepeatedValueIsNoDuplicateAmongLabelsThatWereThere) {
    Handle(Target("s", "categorical", Values({"c", "c"})));
    EXPECT_EQ(LabelsOf("s"), Texts({"'a'=a", "'b'=b", "'c'=c"}));
}

TEST_F(Targets, NoRollback) {
    ExpectTargetFault(Target("x", "continuous", "<TargetValue defaultValue='1'/>") +
                          Target("t", "categorical", "<TargetValue value='p' priorProbability='1'/>") +
                          Target("q", "continuous", "") + Target("y", "continuous", "<TargetValue defaultValue='2'/>"),
                      {MISSING_VARIABLE, "q", "DataDictionary"});
    EXPECT_EQ(Default("x"), "1");
    EXPECT_EQ(Priors("t"), Texts({"p=1"}));
    EXPECT_EQ(Default("y"), "none");
}

TEST_F(Targets, FaultInNewCategoriesLeavesTheFieldWithoutLabels) {
    ExpectTargetFault(Target("n", "categorical", Values({"1", "abc"})), {INVALID_VALUE_OF_TYPE, "abc", "double"});
    EXPECT_EQ(Var("n")->GetValueLabels(), nullptr);
    EXPECT_EQ(Var("n")->GetValueProbabilities(), nullptr);
}

class KeptTargets : public Targets {};

TEST_F(KeptTargets, ClashOfLevelsNamesTheTwoPlacesSwapped) {
    ExpectTargetFault(Target("n", "continuous", ""), {CONFLICTING_VALUES_IN, "continuous", "optype", "DataDictionary",
                                                      "categorical", "optype", "Target"});
    ExpectTargetFault(Target("x", "ordinal", ""),
                      {CONFLICTING_VALUES_IN, "ordinal", "optype", "DataDictionary", "continuous", "optype", "Target"});
    ExpectTargetFault(Target("o", "categorical", ""), {CONFLICTING_VALUES_IN, "categorical", "optype", "DataDictionary",
                                                       "ordinal", "optype", "Target"});
}

TEST_F(KeptTargets, MessageOfAnEmptyValueSpeaksOfAValue) {
    ExpectTargetFault(Target("n", "categorical", Values({""})), {NULL_ATTRIBUTE, "value", "Value"});
    Var("t")->SetEmptyStringOK(false);
    ExpectTargetFault(Target("t", "categorical", Values({""})), {NULL_ATTRIBUTE, "value", "Value"});
}

TEST_F(KeptTargets, ProbabilitiesAreNotHeldToTheirRange) {
    Handle(Target("t", "categorical",
                  "<TargetValue value='p' priorProbability='1.5'/>"
                  "<TargetValue value='q' priorProbability='-1'/>"));
    EXPECT_EQ(Priors("t"), Texts({"p=1.5", "q=-1"}));
}

TEST_F(KeptTargets, RepeatedValueHasTwoProbabilities) {
    Handle(Target("s", "categorical",
                  "<TargetValue value='a' priorProbability='0.25'/>"
                  "<TargetValue value='a' priorProbability='0.5'/>"));
    EXPECT_EQ(Priors("s"), Texts({"a=0.25", "a=0.5"}));
}

TEST_F(KeptTargets, DefaultValueOfADateIsAPlainNumber) {
    Handle(Target("d", "continuous", "<TargetValue defaultValue='5'/>"));
    EXPECT_EQ(Default("d"), "5");
    EXPECT_EQ(Var("d")->GetDefValue()->GetType(), ScoreValue::NUMERIC_VALUE);
}

// Labels of the dictionary are held against the missing values only when a Target comes: the dictionary's own reader
// looks before the field has its missing values.
TEST_F(KeptTargets, LabelThatIsMissingIsFoundLate) {
    const std::string field = "<DataField name='s' optype='categorical' dataType='string'><Value value='a'/>"
                              "<Value value='a ' property='missing'/></DataField>";
    dictionary = Read(field);
    EXPECT_TRUE(Handle(Target("s", "categorical", "")));
    ExpectTargetFault(Target("s", "categorical", Values({"b"})), {VALUE_MISSING_OR_VALID_AND_INVALID, "a", "s"});
}

TEST_F(KeptTargets, LabelsThatJoinedBeforeAFaultStay) {
    ExpectTargetFault(Target("o", "ordinal", "<TargetValue value='3' priorProbability='1'/><TargetValue value='abc'/>"),
                      {INVALID_VALUE_OF_TYPE, "abc", "double"});
    EXPECT_EQ(LabelsOf("o"), Texts({"1=one", "2=2", "3=3"}));
    EXPECT_EQ(Priors("o"), Texts());
}

TEST_F(KeptTargets, DuplicateLabelsStayWithTheFieldAfterTheirFault) {
    ExpectTargetFault(Target("t", "categorical", Values({"p", "p"})),
                      {DUPLICATE_DEFINITION, "value", "p", "DataDictionary"});
    EXPECT_EQ(LabelsOf("t"), Texts({"'p'=p", "'p'=p"}));
}

// The mark of a field without categories and the codes of its encoder are those of the data dictionary.
TEST_F(KeptTargets, NewCategoriesDoNotReachTheEncoder) {
    dictionary = Read("<DataField name='t' optype='categorical' dataType='string'/>", true);
    ASSERT_NE(Var("t")->GetEncoder(), nullptr);
    Handle(Target("t", "categorical", Values({"p"})));
    EXPECT_EQ(Var("t")->GetEncoder()->GetNumberOfCategories(), 0);
    EXPECT_TRUE(Var("t")->IsEmptyCateValues());
}

TEST_F(KeptTargets, NumberThatIsNoLevelIsReportedWithAnEmptyText) {
    Var("n")->SetMLevel(static_cast<ScoreDictVar::MeasureLevel>(3));
    ExpectTargetFault(Target("n", "", ""), {INVALID_ATTRIBUTE_VALUE, "", "optype"});
    ExpectTargetFault(Target("n", "ordinal", ""),
                      {CONFLICTING_VALUES_IN, "ordinal", "optype", "DataDictionary", "", "optype", "Target"});
}

// A variable of a type that no document gives cannot hold a value.
TEST_F(KeptTargets, CategoriesOfAnUnknownTypeAreMissing) {
    Var("n")->SetVarType(static_cast<ScoreDictVar::VariableType>(2));
    ExpectTargetFault(Target("n", "categorical", Values({"1"})), {VALUE_MISSING_OR_VALID_AND_INVALID, "", "n"});
}

} // namespace
} // namespace veltrane::tests
