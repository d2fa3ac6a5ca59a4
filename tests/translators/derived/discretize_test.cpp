#include "support/faults/failure.h"
#include "translators/derived/derived_fields.h"

#include <gtest/gtest.h>

namespace veltrane::tests {
namespace {

using Texts = std::vector<std::string>;

std::string Interval(const std::string& low, const std::string& high, const std::string& closure = "closedOpen") {
    return "<Interval closure='" + closure + "' leftMargin='" + low + "' rightMargin='" + high + "'/>";
}

std::string Bin(const std::string& value, const std::string& content) {
    return "<DiscretizeBin binValue='" + value + "'>" + content + "</DiscretizeBin>";
}

std::string Discretize(const std::string& content, const std::string& attributes = "field='x'") {
    return "<Discretize " + attributes + ">" + content + "</Discretize>";
}

TEST(DiscretizeReading, BinsOfANumericField) {
    DerivedFields fields(NumericField(Discretize(Bin("10", Interval("0", "1")) + Bin("20", Interval("1", "2")))));
    EXPECT_EQ(BinsOf(fields.Var("z")), (Texts{"[0,1) 10", "[1,2) 20"}));
    EXPECT_EQ(fields.Score("z", {{"x", "1"}}), "20");
    EXPECT_EQ(fields.Score("z", {{"x", "2"}}), "missing");
    EXPECT_EQ(fields.Var("z").GetOrigIntervalForBinningValue("10", true), "0<=x<1");
}

TEST(DiscretizeReading, BinsOfATextField) {
    DerivedFields fields(TextField(Discretize(Bin("low", "<Interval closure='openClosed' rightMargin='5'/>") +
                                                  Bin("high", "<Interval closure='openOpen' leftMargin='5'/>"),
                                              "field='x' defaultValue='other' mapMissingTo='none'")));
    EXPECT_EQ(BinsOf(fields.Var("z")), (Texts{"(-inf,5] low", "(5,inf) high"}));
    EXPECT_EQ(fields.Score("z", {{"x", "5"}}), "'low'");
    EXPECT_EQ(fields.Score("z", {{"x", "5.5"}}), "'high'");
    EXPECT_EQ(fields.Score("z", {{"x", ""}}), "'none'");
}

TEST(DiscretizeReading, ABinOfADateFieldIsAText) {
    const DerivedFields fields(DerivedField("z", "optype='ordinal' dataType='date'",
                                            "<Value value='7'/>" + Discretize(Bin("seven", Interval("0", "1")))));
    EXPECT_EQ(BinsOf(fields.Var("z")), Texts{"[0,1) seven"});
}

TEST(DiscretizeReading, TheFieldMustBeNamedAndKnown) {
    ExpectReadFailure(NumericField(Discretize("", "defaultValue='a'")), {MISSING_ATTRIBUTE_OF, "field", "Discretize"});
    ExpectReadFailure(NumericField(Discretize("", "field='w' defaultValue='a'")),
                      {MISSING_VARIABLE_IN_BOTH, "w", "DataDictionary", "TransformationDictionary"});
}

TEST(DiscretizeReading, NoBinIsRefused) {
    ExpectReadFailure(NumericField(Discretize("<Foo/>")), {MISSING_NODE_IN, "DiscretizeBin", "DerivedField"});
}

TEST(DiscretizeReading, ADefaultValueIsReadBeforeTheBinsAreCounted) {
    ExpectReadFailure(NumericField(Discretize("", "field='x' defaultValue='a'")),
                      {INVALID_VALUE_OF_TYPE, "a", "double"});
}

TEST(DiscretizeReading, AnotherChildIsRefused) {
    ExpectReadFailure(NumericField(Discretize(Bin("1", Interval("0", "1")) + "<Foo/>")),
                      {UNEXPECTED_NODE_IN, "Foo", "Extension, DiscretizeBin", "DiscretizeBin"});
}

TEST(KeptDiscretize, BinsAreCountedAtAnyDepth) {
    ExpectReadFailure(NumericField(Discretize("<Foo>" + Bin("1", Interval("0", "1")) + "</Foo>")),
                      {UNEXPECTED_NODE_IN, "Foo", "Extension, DiscretizeBin", "DiscretizeBin"});
    const DerivedFields fields(
        NumericField(Discretize("<Extension name='recodeElseCopy'>" + Bin("1", Interval("0", "1")) + "</Extension>")));
    EXPECT_TRUE(BinsOf(fields.Var("z")).empty());
    EXPECT_TRUE(fields.Var("z").IsRecodeElseCopy());
}

TEST(DiscretizeReading, ExtensionsBesideTheBinsAreBins) {
    DerivedFields fields(NumericField(Discretize(
        "<Extension name='recodeTargetSysmis'>" + Interval("0", "1") + "</Extension>" + Bin("7", Interval("1", "2")) +
        "<Extension name='recodeIntervalCopy'>" + Interval("2", "3") + "</Extension>")));
    EXPECT_EQ(BinsOf(fields.Var("z")), (Texts{"[0,1) Undefined", "[1,2) 7", "[2,3) copy"}));
    EXPECT_EQ(fields.Score("z", {{"x", "0.5"}}), "missing");
    EXPECT_EQ(fields.Score("z", {{"x", "1.5"}}), "7");
    EXPECT_EQ(fields.Score("z", {{"x", "2.5"}}), "2.5");
}

TEST(DiscretizeReading, TheIntervalOfAnExtensionMayHaveAnyTag) {
    const DerivedFields fields(NumericField(
        Discretize("<Extension name='recodeIntervalCopy'><Foo closure='openOpen' leftMargin='4'/><Foo/></Extension>" +
                   Bin("7", Interval("1", "2")))));
    EXPECT_EQ(BinsOf(fields.Var("z")), (Texts{"(4,inf) copy", "[1,2) 7"}));
}

TEST(DiscretizeReading, AnExtensionWithoutAnIntervalIsRefused) {
    for (const char* name : {"recodeTargetSysmis", "recodeIntervalCopy"}) {
        ExpectReadFailure(NumericField(Discretize(std::string("<Extension name='") + name + "'>text</Extension>" +
                                                  Bin("7", Interval("1", "2")))),
                          {MISSING_NODE_IN, "Interval", "DiscretizeBin"});
    }
}

TEST(DiscretizeReading, AnExtensionCountsAsABinForUnboundedIntervals) {
    const std::string open = "<Interval closure='openOpen'/>";
    const std::string extension = "<Extension name='recodeIntervalCopy'>";
    ExpectReadFailure(NumericField(Discretize(extension + Interval("0", "1") + "</Extension>" + extension +
                                              Interval("1", "2") + "</Extension>" + Bin("7", open))),
                      {REQUIRES_ONE_OF, "rightMargin", "leftMargin"});
}

TEST(DiscretizeReading, FromTheThirdBinAnIntervalNeedsAMargin) {
    const std::string open = "<Interval closure='openOpen'/>";
    EXPECT_EQ(BinsOf(DerivedFields(NumericField(Discretize(Bin("1", open)))).Var("z")), Texts{"(-inf,inf) 1"});
    // The second one passes here and is then found to be the first one again.
    ExpectReadFailure(NumericField(Discretize(Bin("1", open) + Bin("2", open))), {VALUE_RANGE_INTERSECTS, "x"});
    ExpectReadFailure(NumericField(Discretize(Bin("1", open) + Bin("2", open) + Bin("3", open))),
                      {REQUIRES_ONE_OF, "rightMargin", "leftMargin"});
}

TEST(DiscretizeReading, WithoutValuesEachBinValueBecomesALabel) {
    const DerivedFields fields(TextField(Discretize(Bin("b", Interval("0", "1")) + Bin("a", Interval("1", "2")) +
                                                    Bin("b", Interval("2", "3")) + Bin("", Interval("3", "4")))));
    EXPECT_EQ(LabelsOf(fields.Var("z")), (Texts{"b=b", "a=a"}));
    EXPECT_EQ(BinsOf(fields.Var("z")), (Texts{"[0,1) b", "[1,2) a", "[2,3) b", "[3,4) "}));
}

TEST(DiscretizeReading, LabelsKeepTheTextOfANumber) {
    const DerivedFields fields(
        NumericField(Discretize(Bin("1.50", Interval("0", "1")) + Bin("1.5", Interval("1", "2")))));
    EXPECT_EQ(LabelsOf(fields.Var("z")), Texts{"1.5=1.50"});
}

TEST(DiscretizeReading, WithValuesAheadBinsAddNoLabels) {
    const DerivedFields fields(TextField("<Value value='v'/>" + Discretize(Bin("b", Interval("0", "1")))));
    EXPECT_EQ(LabelsOf(fields.Var("z")), Texts{"v=v"});
}

TEST(DiscretizeReading, WithNothingToLabelThereIsNoLabelSet) {
    const DerivedFields fields(TextField(Discretize(Bin("", Interval("0", "1")))));
    EXPECT_EQ(fields.Var("z").GetValueLabels(), nullptr);
}

} // namespace
} // namespace veltrane::tests
