// Every element and attribute that the plug-in of neighbours reads missing, empty, wrong or doubled.
#include "models/kit/scoring.h"
#include "models/neighbours/small_neighbours.h"
#include "support/faults/fault.h"

#include <gtest/gtest.h>

using namespace veltrane::tests;

namespace {

class NeighboursFault : public testing::TestWithParam<FaultyChange> {};

TEST_P(NeighboursFault, NamesElementAndAttribute) {
    ExpectRefused(kSmallNeighbours, GetParam());
}

constexpr const char* kModel = "NearestNeighborModel";

constexpr FaultyChange kModelFaults[] = {
    {"FunctionMissing", " functionName='mixed'", "", Failure(MISSING_ATTRIBUTE_OF, "functionName", kModel)},
    {"FunctionOfOthers", "'mixed'", "'timeSeries'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "timeSeries", "functionName", kModel)},
    {"ClusteringWithATarget", "'mixed'", "'clustering'",
     Failure(UNSUPPORTED_VALUE_IN, "clustering", "functionName", kModel, "classification, regression, mixed")},
    {"CountMissing", " numberOfNeighbors='2'", "", Failure(MISSING_ATTRIBUTE_OF, "numberOfNeighbors", kModel)},
    {"CountEmpty", "numberOfNeighbors='2'", "numberOfNeighbors=''",
     Failure(NULL_ATTRIBUTE, "numberOfNeighbors", kModel)},
    {"CountNone", "numberOfNeighbors='2'", "numberOfNeighbors='0'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "0", "numberOfNeighbors", kModel)},
    {"CountBroken", "numberOfNeighbors='2'", "numberOfNeighbors='1.5'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "1.5", "numberOfNeighbors", kModel)},
    {"ContinuousMethodWrong", "'average'", "'mode'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "mode", "continuousScoringMethod", kModel)},
    {"CategoricalMethodWrong", "'majorityVote'", "'vote'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "vote", "categoricalScoringMethod", kModel)},
    {"ThresholdWrong", "threshold='0.5'", "threshold='low'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "low", "threshold", kModel)},
    {"ThresholdBelowZero", "threshold='0.5'", "threshold='-0.5'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "-0.5", "threshold", kModel)},
    {"NotScorable", "isScorable='true'", "isScorable='false'",
     Failure(UNSUPPORTED_VALUE_IN, "false", "isScorable", kModel, "true")},
    {"IdsOfNoField", "instanceIdVariable='id'", "instanceIdVariable='name'",
     Failure(MISSING_ELEMENT_WITH_VALUE, "name", "field", "InstanceFields")},
    {"IdsEmpty", "instanceIdVariable='id'", "instanceIdVariable=''",
     Failure(NULL_ATTRIBUTE, "instanceIdVariable", kModel)},
    {"OutputOfNobody", "value='four'", "value='five'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "five", "value", "OutputField")},
    {"RankNone", "rank='2'", "rank='0'", Failure(INVALID_ATTRIBUTE_VALUE_IN, "0", "rank", "OutputField")},
    {"ChildWrong", "</NearestNeighborModel>", "<Cluster/></NearestNeighborModel>",
     Failure(INVALID_NODE, "Cluster", kModel)},
};

constexpr FaultyChange kInstanceFaults[] = {
    {"IsTransformedWrong", "isTransformed='true'", "isTransformed='yes'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "yes", "isTransformed", "TrainingInstances")},
    {"RowsOfOtherNumber", "recordCount='4'", "recordCount='5'",
     Failure(ELEMENT_NUMBER_MISMATCH, "5", "recordCount", "4", "row", "TrainingInstances")},
    {"FieldsOfOtherNumber", "fieldCount='5'", "fieldCount='4'",
     Failure(ELEMENT_NUMBER_MISMATCH, "4", "fieldCount", "5", "InstanceField", "TrainingInstances")},
    {"RowCountBroken", "recordCount='4'", "recordCount='4.5'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "4.5", "recordCount", "TrainingInstances")},
    {"TableElsewhere", "<InlineTable>", "<TableLocator/><InlineTable>",
     Failure(UNSUPPORTED_ELEMENT, "TableLocator", kModel)},
    {"FieldWithoutName", "<InstanceField field='k' column='c5'/>", "<InstanceField column='c5'/>",
     Failure(MISSING_ATTRIBUTE_OF, "field", "InstanceField")},
    {"FieldTwice", "<InstanceField field='k' column='c5'/>", "<InstanceField field='x' column='c5'/>",
     Failure(DUPLICATE_DEFINITION, "InstanceField", "x", "InstanceFields")},
    {"ColumnTwice", "column='c5'", "column='c4'",
     Failure(DUPLICATE_DEFINITION, "InstanceField", "k", "InstanceFields")},
    {"ColumnEmpty", "column='c5'", "column=''", Failure(NULL_ATTRIBUTE, "column", "InstanceField")},
    {"ColumnOfNoRow", "column='c5'", "column='c6'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "c6", "column", "InstanceField")},
    {"FieldsWithOthers", "</InstanceFields>", "<FieldRef/></InstanceFields>",
     Failure(INVALID_NODE, "FieldRef", "InstanceFields")},
    {"TargetOfNoField", "<InstanceField field='y' column='c3'/>", "<InstanceField field='z' column='c3'/>",
     Failure(MISSING_ELEMENT_WITH_VALUE, "y", "field", "InstanceFields")},
    {"InputOfNoField", "<InstanceField field='x' column='c4'/>", "<InstanceField field='z' column='c4'/>",
     Failure(MISSING_ELEMENT_WITH_VALUE, "x", "field", "InstanceFields")},
    {"CellTwice", "<c3>8</c3>", "<c3>8</c3><c3>9</c3>", Failure(DUPLICATE_DEFINITION, "c3", "9", "row")},
    {"CategoryUnknown", "<c2>b</c2><c3>2</c3>", "<c2>c</c2><c3>2</c3>", Failure(INVALID_CONTENT, "c", "c2")},
    {"TargetWrong", "<c3>8</c3>", "<c3>eight</c3>", Failure(INVALID_CONTENT, "eight", "c3")},
    {"TargetInfinite", "<c3>8</c3>", "<c3>1e999</c3>", Failure(INVALID_CONTENT, "1e999", "c3")},
    {"InputWrong", "<c4>8</c4>", "<c4>eight</c4>", Failure(INVALID_CONTENT, "eight", "c4")},
    {"InputInfinite", "<c4>8</c4>", "<c4>-1e999</c4>", Failure(INVALID_CONTENT, "-1e999", "c4")},
    {"IdMissing", "<c1>four</c1>", "", Failure(MISSING_NODE_IN, "id", "row")},
    {"IdEmpty", "<c1>four</c1>", "<c1/>", Failure(MISSING_NODE_IN, "id", "row")},
    {"IdTwice", "<c1>four</c1>", "<c1>two</c1>", Failure(DUPLICATE_DEFINITION, "id", "two", "InlineTable")},
};

constexpr FaultyChange kComparisonFaults[] = {
    {"MeasureMissing", "<minkowski p-parameter='1'/>", "", Failure(MISSING_NODE_IN, "measure", "ComparisonMeasure")},
    {"MeasureTwice", "<minkowski p-parameter='1'/>", "<minkowski p-parameter='1'/><euclidean/>",
     Failure(MORE_THAN_ONE, "measure", "ComparisonMeasure")},
    {"MeasureWrong", "<minkowski p-parameter='1'/>", "<hamming/>",
     Failure(INVALID_NODE, "hamming", "ComparisonMeasure")},
    {"KindMissing", " kind='distance'", "", Failure(MISSING_ATTRIBUTE_OF, "kind", "ComparisonMeasure")},
    {"KindWrong", "kind='distance'", "kind='near'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "near", "kind", "ComparisonMeasure")},
    {"PowerMissing", "p-parameter='1'", "", Failure(MISSING_ATTRIBUTE_OF, "p-parameter", "minkowski")},
    {"PowerZero", "p-parameter='1'", "p-parameter='0'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "0", "p-parameter", "minkowski")},
    {"FunctionWrong", "fieldWeight='1' compareFunction='absDiff'", "fieldWeight='1' compareFunction='diff'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "diff", "compareFunction", "KNNInput")},
    {"InputWithoutField", "<KNNInput field='x'", "<KNNInput", Failure(MISSING_ATTRIBUTE_OF, "field", "KNNInput")},
    {"InputTwice", "<KNNInput field='k' fieldWeight='0.25'", "<KNNInput field='x' fieldWeight='0.25'",
     Failure(DUPLICATE_DEFINITION, "KNNInput", "x", "KNNInputs")},
    {"InputUnknown", "<KNNInput field='x'", "<KNNInput field='w'",
     Failure(MISSING_VARIABLE_IN_BOTH, "w", "DataDictionary", "TransformationDictionary")},
    {"InputOfTheTarget", "<KNNInput field='x'", "<KNNInput field='y'", Failure(NO_PREDICTOR, "y")},
    {"InputOfTexts", "fieldWeight='0.25' compareFunction='table'", "fieldWeight='0.25'",
     Failure(REQUIRES_NUMERIC, "k")},
    {"WeightWrong", "fieldWeight='1'", "fieldWeight='one'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "one", "fieldWeight", "KNNInput")},
    {"WeightBelowZero", "fieldWeight='1'", "fieldWeight='-1'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "-1", "fieldWeight", "KNNInput")},
    {"InputsWithOthers", "</KNNInputs>", "<FieldRef/></KNNInputs>", Failure(INVALID_NODE, "FieldRef", "KNNInputs")},
    {"MatrixOfOtherSize", "<Matrix nbRows='2' nbCols='2'>", "<Matrix nbRows='3' nbCols='2'>",
     Failure(NUMBERS_MISMATCH, "2", "Array", "Matrix", "3", "nbRows", "Matrix")},
};

INSTANTIATE_TEST_SUITE_P(Models, NeighboursFault, testing::ValuesIn(kModelFaults), NameOfRow{});
INSTANTIATE_TEST_SUITE_P(Instances, NeighboursFault, testing::ValuesIn(kInstanceFaults), NameOfRow{});
INSTANTIATE_TEST_SUITE_P(Comparisons, NeighboursFault, testing::ValuesIn(kComparisonFaults), NameOfRow{});

/// An element of the model taken out whole, or doubled.
std::string ElementOf(const std::string& tag) {
    const std::string end = "</" + tag + ">";
    const std::size_t first = kSmallNeighbours.find("<" + tag);
    return kSmallNeighbours.substr(first, kSmallNeighbours.find(end) + end.size() - first);
}

TEST(NeighboursFaults, NeedTheirElements) {
    for (const auto& [tag, parent] : Case{{"TrainingInstances", kModel},
                                          {"ComparisonMeasure", kModel},
                                          {"KNNInputs", kModel},
                                          {"InstanceFields", "TrainingInstances"},
                                          {"InlineTable", "TrainingInstances"},
                                          {"Matrix", "Comparisons"},
                                          {"Comparisons", "KNNInput"}}) {
        const std::string element = ElementOf(tag);
        ExpectFailure([&] { ReadModel(Replaced(kSmallNeighbours, element, "")); },
                      {MISSING_NODE_IN, tag.c_str(), parent.c_str()});
    }
    ExpectFailure([] { ReadModel(Replaced(kSmallNeighbours, ElementOf("InlineTable"), "<InlineTable/>")); },
                  {MISSING_NODE_IN, "row", "InlineTable"});
    ExpectFailure([] { ReadModel(Replaced(kSmallNeighbours, ElementOf("KNNInputs"), "<KNNInputs/>")); },
                  {MISSING_NODE_IN, "KNNInput", "KNNInputs"});
}

} // namespace
