// Which fields the models within a model see, and what the whole tells of them.
#include "models/columns/model_rows.h"
#include "models/mining/small_ensemble.h"

#include <MCVeltrane_900/ScoreResultField.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <thread>
#include <vector>

using namespace veltrane::tests;

namespace {

std::string DerivedField(const std::string& name, const std::string& expression, const std::string& type = "double") {
    const std::string level = type == "string" ? "categorical" : "continuous";
    return "<DerivedField name='" + name + "' optype='" + level + "' dataType='" + type + "'>" + expression +
           "</DerivedField>";
}

std::string Call(const std::string& function, const std::string& field, double number) {
    return "<Apply function='" + function + "'><FieldRef field='" + field + "'/><Constant>" + std::to_string(number) +
           "</Constant></Apply>";
}

std::string OutputOf(const std::string& fields) {
    return "<Output>" + fields + "</Output>";
}

/// Scores a case of a document and tells the number.
double NumberOf(const std::string& document, const Case& row) {
    Scored scored(document);
    return scored.Score(row).IsOK() ? scored.Number() : kMissing;
}

TEST(MiningScope, DerivedFieldsOfTheDocumentAndOfTheOuterModelAreFieldsOfASegment) {
    const std::string document = EnsembleDocument(
        "<TransformationDictionary><DefineFunction name='half' dataType='double' optype='continuous'>"
        "<ParameterField name='p'/><Apply function='/'><FieldRef field='p'/><Constant>2</Constant></Apply>"
        "</DefineFunction>" +
        DerivedField("twice", Call("*", "x", 2.0)) + "</TransformationDictionary>" +
        Mining("sum",
               SegmentOf(Line("twice", 1.0, 1.0)) + SegmentOf(Line("local", 0.0, 100.0)) +
                   SegmentOf(Line("x", 0.0, 0.0,
                                  "<LocalTransformations>" +
                                      DerivedField("own", "<Apply function='half'><FieldRef field='local'"
                                                          "/></Apply>") +
                                      "</LocalTransformations>")) +
                   SegmentOf("<RegressionModel functionName='regression'>" + Schema("y", Fields("x")) +
                             "<LocalTransformations>" +
                             DerivedField("own", "<Apply function='half'><FieldRef field='local'/></Apply>") +
                             "</LocalTransformations><RegressionTable intercept='0'><NumericPredictor name='own' "
                             "coefficient='10000'/></RegressionTable></RegressionModel>"),
               "<LocalTransformations>" + DerivedField("local", Call("+", "twice", 1.0)) + "</LocalTransformations>"));
    // x = 3: twice = 6, local = 7, own = 3.5.
    EXPECT_EQ(NumberOf(document, {{"x", "3"}}), 7.0 + 700.0 + 35000.0);
}

TEST(MiningScope, TheSchemaOfASegmentTreatsWhatTheOuterOneLeaves) {
    const std::string inner = "<RegressionModel functionName='regression'>" +
                              Schema("y", "<MiningField name='x' missingValueReplacement='50'/>") +
                              "<RegressionTable intercept='0'><NumericPredictor name='x' coefficient='1'/>"
                              "</RegressionTable></RegressionModel>";
    const std::string document = EnsembleDocument(Mining("sum", SegmentOf(inner) + SegmentOf(Line("z", 0.0, 1.0))));
    EXPECT_EQ(NumberOf(document, {{"x", "3"}, {"z", "1"}}), 4.0);
    EXPECT_EQ(NumberOf(document, {{"x", ""}, {"z", "1"}}), 51.0);
    // What the outer schema replaces isn't missing for the segment any more.
    const std::string replaced =
        Replaced(document, "<MiningField name='x'/>", "<MiningField name='x' missingValueReplacement='7'/>");
    EXPECT_EQ(NumberOf(replaced, {{"x", ""}, {"z", "1"}}), 8.0);
}

TEST(MiningScope, ASegmentTakesInvalidValuesThatTheOuterSchemaLetsPassUnlessItSaysOtherwise) {
    const auto document = [](const std::string& treatment) {
        return EnsembleDocument(
            "<MiningModel functionName='regression'>" +
            Schema("y", "<MiningField name='c' invalidValueTreatment='asIs'/>") +
            "<Segmentation multipleModelMethod='sum'>" +
            SegmentOf("<TreeModel functionName='regression'>" +
                      Schema("y", "<MiningField name='c' " + treatment + "/>") +
                      "<Node><True/><Node score='1'><SimplePredicate field='c' operator='equal' value='a'/></Node>"
                      "<Node score='2'><SimplePredicate field='c' operator='isMissing'/></Node>"
                      "<Node score='3'><True/></Node></Node></TreeModel>") +
            "</Segmentation></MiningModel>");
    };
    EXPECT_EQ(NumberOf(document(""), {{"c", "other"}}), 3.0);
    EXPECT_EQ(NumberOf(document("invalidValueTreatment='asIs'"), {{"c", "other"}}), 3.0);
    EXPECT_EQ(NumberOf(document("invalidValueTreatment='asMissing'"), {{"c", "other"}}), 2.0);
    EXPECT_EQ(NumberOf(document("invalidValueTreatment='returnInvalid'"), {{"c", "other"}}), kMissing);
    EXPECT_EQ(NumberOf(document("invalidValueTreatment='asValue' invalidValueReplacement='a'"), {{"c", "other"}}), 1.0);
    EXPECT_EQ(NumberOf(document("invalidValueTreatment='returnInvalid'"), {{"c", "a"}}), 1.0);
}

TEST(MiningScope, TheOutputsOfASegmentAreFieldsOfThoseBehindIt) {
    const std::string first = Line("x", 1.0, 2.0,
                                   OutputOf("<OutputField name='raw' feature='predictedValue'/>"
                                            "<OutputField name='capped' feature='transformedValue' "
                                            "dataType='double'><Apply function='min'><FieldRef "
                                            "field='raw'/><Constant>10</Constant></Apply></OutputField>"));
    const std::string second = Line("capped", 0.0, 3.0);
    const std::string document = EnsembleDocument(Mining(
        "modelChain",
        SegmentOf(first) + SegmentOf(second, "id='last'",
                                     "<SimplePredicate field='raw' "
                                     "operator='greaterThan' value='4'/>"),
        OutputOf("<OutputField name='segment' feature='entityId'/><OutputField name='seen' feature='transformedValue' "
                 "dataType='double'><Apply function='+'><FieldRef field='raw'/><Constant>0.5</Constant></Apply>"
                 "</OutputField>")));
    Scored scored(document);
    ASSERT_TRUE(scored.Score({{"x", "2"}}).IsOK());
    EXPECT_EQ(scored.Number(), 15.0);
    EXPECT_EQ(scored.Text("segment"), "last");
    EXPECT_EQ(scored.Number("seen"), 5.5);
    ASSERT_TRUE(scored.Score({{"x", "20"}}).IsOK());
    EXPECT_EQ(scored.Number(), 30.0);
    ASSERT_TRUE(scored.Score({{"x", "1"}}).IsOK());
    EXPECT_EQ(scored.Number(), 3.0) << "the second segment isn't for this case";
    EXPECT_EQ(scored.Text("segment"), "1");
    EXPECT_FALSE(scored.Score({{"x", ""}}).IsOK());
    EXPECT_EQ(scored.Number("seen"), kMissing) << "nothing stays of the case before";
}

/// A chain whose segments tell numbers and texts, asked by name and by segment.
const std::string kTellingChain = EnsembleDocument(
    "<MiningModel functionName='regression'>" +
    Schema("y", Fields("xz") + "<MiningField name='c' invalidValueTreatment='asIs'/>") +
    OutputOf("<OutputField name='a' feature='predictedValue' segmentId='first'/><OutputField name='n' "
             "feature='entityId' segmentId='tree'/><OutputField name='v' feature='predictedValue' segmentId='tree'/>"
             "<OutputField name='p' feature='probability' value='yes' segmentId='tree'/><OutputField name='e' "
             "feature='entityId'/>") +
    "<Targets><Target field='y'><TargetValue defaultValue='5'/></Target></Targets>"
    "<Segmentation multipleModelMethod='modelChain' missingPredictionTreatment='continue'>" +
    SegmentOf(Line("x", 1.0, 2.0, "<Output><OutputField name='raw' feature='predictedValue'/></Output>"),
              "id='first'") +
    SegmentOf("<TreeModel functionName='classification'>" +
                  Schema("t", "<MiningField name='raw' missingValueReplacement='3'/><MiningField name='c' "
                              "invalidValueTreatment='asMissing'/>") +
                  "<Output><OutputField name='word' feature='predictedValue'/></Output><Node id='top'><True/>"
                  "<Node id='low'><SimplePredicate field='raw' operator='lessThan' value='9'/><ScoreDistribution "
                  "value='no' recordCount='3'/><ScoreDistribution value='yes' recordCount='1'/></Node>"
                  "<Node id='high' score='yes'><SimplePredicate field='c' operator='isNotMissing'/></Node></Node>"
                  "</TreeModel>",
              "id='tree'", "<SimplePredicate field='z' operator='lessThan' value='6'/>") +
    SegmentOf(
        "<RegressionModel functionName='regression'>" +
            Schema("y", "<MiningField name='raw'/><MiningField name='word'/>") +
            "<RegressionTable intercept='0.5'><NumericPredictor name='raw' coefficient='1'/><CategoricalPredictor "
            "name='word' value='yes' coefficient='10'/></RegressionTable></RegressionModel>",
        "id='last'", "<SimplePredicate field='z' operator='notEqual' value='3'/>") +
    "</Segmentation></MiningModel>");

TEST(MiningScope, WhatSegmentsTellIsTheSameInColumns) {
    const std::string byRows =
        Replaced(kTellingChain, "<OutputField name='e' feature='entityId'/>",
                 "<OutputField name='s' feature='transformedValue' dataType='double'><Apply "
                 "function='+'><FieldRef field='a'/><FieldRef field='raw'/></Apply></OutputField>");
    for (const std::string& document : {kTellingChain, byRows}) {
        ModelRows rows(document);
        std::mt19937_64 random(3);
        rows.Fill(random, 900);
        const auto state = rows.Scorer().NewState();
        const ModelAnswers expected = rows.CaseByCase();
        EXPECT_EQ(rows.InBlocks(*state, 1024, 0, false), expected);
        EXPECT_EQ(rows.InBlocks(*state, 100, 17, true), expected);
        EXPECT_TRUE(std::any_of(expected.begin(), expected.end(),
                                [](const std::string& answer) { return answer.find("high") != std::string::npos; }));
    }
}

TEST(MiningScopeThreads, ShareAModelWithAStateForEach) {
    ModelRows rows(kTellingChain);
    std::mt19937_64 random(4);
    rows.Fill(random, 600);
    const ModelAnswers expected = rows.CaseByCase();
    std::vector<ModelAnswers> answers(4);
    std::vector<std::thread> threads;
    for (ModelAnswers& own : answers) {
        threads.emplace_back([&rows, &own] {
            const auto state = rows.Scorer().NewState();
            own = rows.InBlocks(*state, 64, 5, false);
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    for (const ModelAnswers& own : answers) {
        EXPECT_EQ(own, expected);
    }
}

TEST(MiningScope, ABoostedClassificationIsAChainOfASumAndALink) {
    const std::string sum = "<MiningModel functionName='regression'>" + Schema("", Fields("x")) +
                            OutputOf("<OutputField name='margin' feature='predictedValue' isFinalResult='false'/>") +
                            "<Targets><Target rescaleFactor='0.5' rescaleConstant='1'/></Targets>"
                            "<Segmentation multipleModelMethod='sum'>" +
                            SegmentOf(Line("x", 0.0, 1.0, "", "")) + SegmentOf(Line("x", 2.0, 1.0, "", "")) +
                            "</Segmentation></MiningModel>";
    const std::string link = "<RegressionModel functionName='classification' normalizationMethod='logit'>" +
                             Schema("t", "<MiningField name='margin'/>") +
                             "<RegressionTable targetCategory='yes' intercept='0'><NumericPredictor name='margin' "
                             "coefficient='1'/></RegressionTable><RegressionTable targetCategory='no' intercept='0'/>"
                             "</RegressionModel>";
    const std::string document =
        EnsembleDocument("<MiningModel functionName='classification'>" + Schema("t", Fields("x")) +
                         OutputOf("<OutputField name='p' feature='probability' value='yes'/><OutputField name='second' "
                                  "feature='predictedValue' rank='2'/>") +
                         "<Segmentation multipleModelMethod='modelChain'>" + SegmentOf(sum) + SegmentOf(link) +
                         "</Segmentation></MiningModel>");
    Scored scored(document);
    ASSERT_TRUE(scored.Score({{"x", "-2"}}).IsOK());
    EXPECT_EQ(scored.Text(), "no") << "the margin is (-2 + 0) / 2 + 1 = 0, and 'no' comes first among equals";
    EXPECT_EQ(scored.Number("p"), 0.5);
    ASSERT_TRUE(scored.Score({{"x", "1"}}).IsOK());
    EXPECT_EQ(scored.Text(), "yes");
    EXPECT_NEAR(scored.Number("p"), 1.0 / (1.0 + std::exp(-3.0)), 1e-15);
    EXPECT_EQ(scored.Text("second"), "no");
}

TEST(MiningScope, AnOutputFieldThatNamesASegmentTellsWhatThatPredicts) {
    const std::string tree =
        "<TreeModel functionName='classification'>" + Schema("t", Fields("x")) +
        OutputOf("<OutputField name='shout' feature='transformedValue' dataType='string' optype='categorical'>"
                 "<Apply function='uppercase'><FieldRef field='c'/></Apply></OutputField>") +
        "<Node id='top'><True/><Node id='low'><SimplePredicate field='x' operator='lessThan' value='5'/>"
        "<ScoreDistribution value='no' recordCount='3'/><ScoreDistribution value='yes' recordCount='1'/></Node>"
        "<Node id='high' score='yes'><True/></Node></Node></TreeModel>";
    const std::string withField = Replaced(tree, "<MiningField name='x'/>", Fields("xc"));
    const std::string document = EnsembleDocument(
        "<MiningModel functionName='classification'>" + Schema("t", Fields("xzc")) +
        OutputOf("<OutputField name='node' feature='entityId' segmentId='second'/>"
                 "<OutputField name='p' feature='probability' value='no' segmentId='second'/>"
                 "<OutputField name='next' feature='predictedValue' rank='2' segmentId='second'/>"
                 "<OutputField name='loud' feature='transformedValue' value='shout' segmentId='second'/>"
                 "<OutputField name='number' feature='transformedValue' dataType='double' optype='continuous' "
                 "isFinalResult='false' segmentId='1'><FieldRef field='x'/></OutputField>"
                 "<OutputField name='more' feature='transformedValue' dataType='double'><Apply function='+'><FieldRef "
                 "field='number'/><Constant>1</Constant></Apply></OutputField>") +
        "<Segmentation multipleModelMethod='majorityVote'>" +
        SegmentOf(withField, "", "<SimplePredicate field='z' operator='greaterThan' value='0'/>") +
        SegmentOf(withField, "id='second'", "<SimplePredicate field='c' operator='equal' value='b'/>") +
        "</Segmentation></MiningModel>");
    Scored scored(document);
    ASSERT_TRUE(scored.Score({{"x", "2"}, {"z", "1"}, {"c", "b"}}).IsOK());
    EXPECT_EQ(scored.Text("node"), "low");
    EXPECT_EQ(scored.Number("p"), 0.75);
    EXPECT_EQ(scored.Text("next"), "yes");
    EXPECT_EQ(scored.Text("loud"), "B");
    EXPECT_EQ(scored.Number("more"), 3.0);
    EXPECT_EQ(scored.Result().GetResultFields()->GetMapResultValue().count("number"), 0U) << "not a final result";
    ASSERT_TRUE(scored.Score({{"x", "2"}, {"z", "1"}, {"c", "a"}}).IsOK());
    EXPECT_EQ(scored.Text("node"), "") << "the second segment isn't for this case";
    EXPECT_EQ(scored.Number("p"), kMissing);
    EXPECT_FALSE(scored.Score({{"x", "2"}, {"z", "1"}, {"c", "other"}}).IsOK());
    EXPECT_EQ(scored.Text("loud"), "");
    EXPECT_EQ(scored.Number("more"), kMissing) << "a refused case leaves no segment anything to tell";
}

TEST(MiningScope, AllAreSelectedForTheOutputFieldsThatNameThem) {
    const std::string document = EnsembleDocument(Mining(
        "selectAll",
        SegmentOf(Line("x", 0.0, 1.0), "id='one'", "<SimplePredicate field='x' operator='greaterThan' value='0'/>") +
            SegmentOf(Line("x", 0.0, 10.0), "id='two'") + SegmentOf(Line("z", 0.0, 100.0), "id='three'"),
        OutputOf("<OutputField name='a' feature='predictedValue' segmentId='one'/><OutputField name='b' "
                 "feature='predictedValue' segmentId='two'/><OutputField name='d' feature='predictedValue' "
                 "segmentId='three'/><OutputField name='first' feature='entityId'/>")));
    Scored scored(document);
    ASSERT_TRUE(scored.Score({{"x", "2"}, {"z", "3"}}).IsOK());
    EXPECT_EQ(scored.Number(), 2.0);
    EXPECT_EQ(scored.Number("a"), 2.0);
    EXPECT_EQ(scored.Number("b"), 20.0);
    EXPECT_EQ(scored.Number("d"), 300.0);
    EXPECT_EQ(scored.Text("first"), "one");
    ASSERT_TRUE(scored.Score({{"x", "-2"}, {"z", ""}}).IsOK());
    EXPECT_EQ(scored.Number(), -20.0);
    EXPECT_EQ(scored.Number("a"), kMissing);
    EXPECT_EQ(scored.Number("d"), kMissing);
    EXPECT_EQ(scored.Text("first"), "two");
}

TEST(MiningScope, TargetsOfEachLevelAdjustAndStandInForWhatIsMissing) {
    const std::string first = Line("x", 0.0, 1.0,
                                   "<Targets><Target field='y' rescaleFactor='2' max='10'><TargetValue "
                                   "defaultValue='40'/></Target></Targets>");
    const std::string document =
        EnsembleDocument(Mining("sum", SegmentOf(first) + SegmentOf(Line("z", 0.0, 1.0)),
                                "<Targets><Target field='y' rescaleConstant='0.5' castInteger='floor'/></Targets>"));
    EXPECT_EQ(NumberOf(document, {{"x", "3.25"}, {"z", "1"}}), 8.0) << "floor(3.25 * 2 + 1 + 0.5)";
    EXPECT_EQ(NumberOf(document, {{"x", "30"}, {"z", "1"}}), 21.0);
    EXPECT_EQ(NumberOf(document, {{"x", ""}, {"z", "1"}}), 41.0);
}

TEST(MiningScope, ACaseTellsWhichFieldItLacks) {
    const std::string inner = "<RegressionModel functionName='regression'>" +
                              Schema("y", "<MiningField name='x' missingValueTreatment='returnInvalid'/>") +
                              "<LocalTransformations>" + DerivedField("d", Call("*", "z", 2.0)) +
                              "</LocalTransformations><RegressionTable intercept='0'><NumericPredictor name='d' "
                              "coefficient='1'/></RegressionTable></RegressionModel>";
    const std::string withZ = Replaced(inner, "</MiningSchema>", "<MiningField name='z'/></MiningSchema>");
    Scored scored(EnsembleDocument(Mining("average", SegmentOf(withZ))));
    // The places of the fields in the dictionary.
    const auto lackOf = [&](const Case& row) { return scored.Score(row).GetDiscreteDatum(1); };
    EXPECT_EQ(lackOf({{"x", ""}, {"z", "1"}}), 1);
    EXPECT_EQ(lackOf({{"x", "1"}, {"z", ""}}), 2);
    EXPECT_TRUE(scored.Score({{"x", "1"}, {"z", "1"}}).IsOK());
}

TEST(MiningScope, ASegmentThatLooksBackSeesTheCasesOfOthersToo) {
    const std::string lag = "<RegressionModel functionName='regression'>" + Schema("y", Fields("x")) +
                            "<LocalTransformations>" + DerivedField("before", "<Lag field='x'/>") +
                            "</LocalTransformations><RegressionTable intercept='0'><NumericPredictor name='before' "
                            "coefficient='1'/></RegressionTable></RegressionModel>";
    Scored scored(EnsembleDocument(Mining(
        "selectFirst",
        SegmentOf(Line("z", 0.0, 1.0), "", "<SimplePredicate field='z' operator='isNotMissing'/>") + SegmentOf(lag))));
    ASSERT_TRUE(scored.Score({{"x", "5"}, {"z", "1"}}).IsOK());
    EXPECT_EQ(scored.Number(), 1.0);
    ASSERT_TRUE(scored.Score({{"x", "6"}, {"z", ""}}).IsOK());
    EXPECT_EQ(scored.Number(), 5.0);
}

} // namespace
