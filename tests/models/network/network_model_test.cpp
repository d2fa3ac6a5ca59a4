// What networks predict where the standard leaves it open, and what they can't predict.
#include "models/columns/model_rows.h"
#include "models/kit/answers.h"
#include "models/kit/scoring.h"
#include "models/network/small_network.h"
#include "support/faults/failure.h"
#include "support/folders.h"
#include "support/rows.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <random>
#include <sstream>

using namespace veltrane::tests;

namespace {

TEST(NeuralNetwork, TellsTheNumbersOfItsNeuronsAsProbabilities) {
    Scored scored(kSmallNetwork);
    ASSERT_TRUE(scored.Score({{"x", "0.5"}}).IsOK());
    EXPECT_EQ(scored.Text(), "maybe");
    EXPECT_EQ(scored.Probability("no"), 0.5);
    EXPECT_EQ(scored.Probability("maybe"), 1.0);
    EXPECT_EQ(scored.Probability("yes"), -0.5);
    EXPECT_EQ(scored.Text("neuron"), "2");
    ASSERT_TRUE(scored.Score({{"x", "0"}}).IsOK());
    EXPECT_EQ(scored.Text(), "no") << "the first of equal ones";
}

TEST(NeuralNetwork, ASumAtTheThresholdIsNotAboveIt) {
    Scored scored(Replaced(kSmallNumberNetwork, "activationFunction='identity'",
                           "activationFunction='threshold' threshold='1.5'"));
    for (const auto& [x, expected] : std::map<std::string, double>{{"0.5", 0.0}, {"0.50001", 100.0}, {"0.4", 0.0}}) {
        ASSERT_TRUE(scored.Score({{"x", x}}).IsOK()) << x;
        EXPECT_EQ(scored.Number(), expected) << x;
    }
}

/// What the document states for all neurons holds where a layer and a neuron say nothing else.
TEST(NeuralNetwork, ANeuronGoesBeforeItsLayerAndThatBeforeTheNetwork) {
    const std::string radial = Replaced(kSmallNumberNetwork, "activationFunction='identity'",
                                        "activationFunction='radialBasis' width='2' altitude='3'");
    const auto numberOf = [&](const std::string& layer, const std::string& neuron) {
        Scored scored(Replaced(radial, "<NeuralLayer><Neuron id='1'>",
                               "<NeuralLayer" + layer + "><Neuron id='1' bias='9'" + neuron + ">"));
        EXPECT_TRUE(scored.Score({{"x", "1"}}).IsOK());
        return scored.Number() / 100; // the weight is 3, so that the square of the distance is 4
    };
    EXPECT_NEAR(numberOf("", ""), 3 * std::exp(-0.5), 1e-14);
    EXPECT_NEAR(numberOf(" width='1'", ""), 3 * std::exp(-2.0), 1e-14);
    EXPECT_NEAR(numberOf(" width='1' altitude='5'", " width='4'"), 5 * std::exp(-0.125), 1e-14);
    EXPECT_NEAR(numberOf(" altitude='5'", " altitude='0.5'"), 0.5 * std::exp(-0.5), 1e-14);
    EXPECT_EQ(numberOf(" activationFunction='identity'", ""), 12.0);
}

TEST(NeuralNetwork, HasNoPredictionWithoutAnInput) {
    Scored scored(kSmallNetwork);
    EXPECT_EQ(scored.Score({}).GetErrorCode(), kNoPrediction);
    EXPECT_EQ(scored.Text(), "");
    EXPECT_EQ(scored.Text("neuron"), "");
}

TEST(NeuralNetwork, ACategoryWithoutANeuronIsNeverPredicted) {
    Scored scored(Replaced(
        Replaced(kSmallNetwork, "<NeuralOutputs numberOfOutputs='3'>", "<NeuralOutputs>"),
        "<NeuralOutput outputNeuron='1'><DerivedField optype='continuous' dataType='double'><NormDiscrete field='t' "
        "value='no'/></DerivedField></NeuralOutput>\n",
        ""));
    ASSERT_TRUE(scored.Score({{"x", "-0.25"}}).IsOK());
    EXPECT_EQ(scored.Text(), "yes");
    EXPECT_EQ(scored.Probability("no"), kMissing);
}

TEST(NeuralNetwork, OfTwoCategoriesOneMayHaveTheRest) {
    std::string document = Replaced(kSmallNetwork, "<Value value='no'/>", "");
    document = Replaced(document, "<NeuralOutputs numberOfOutputs='3'>", "<NeuralOutputs>");
    document.erase(document.find("<NeuralOutput outputNeuron='1'>"),
                   document.find("<NeuralOutput outputNeuron='3'>") - document.find("<NeuralOutput outputNeuron='1'>"));
    Scored scored(document);
    ASSERT_TRUE(scored.Score({{"x", "-0.75"}}).IsOK());
    EXPECT_EQ(scored.Text(), "yes");
    EXPECT_EQ(scored.Text("neuron"), "3");
    EXPECT_EQ(scored.Probability("maybe"), 0.25);
    ASSERT_TRUE(scored.Score({{"x", "-0.25"}}).IsOK());
    EXPECT_EQ(scored.Text(), "maybe");
    EXPECT_EQ(scored.Text("neuron"), "");
}

TEST(NeuralNetwork, InvertsTheNormalisationOfItsTarget) {
    Scored scored(kSmallNumberNetwork);
    ASSERT_TRUE(scored.Score({{"x", "0.125"}}).IsOK());
    EXPECT_EQ(scored.Number(), 37.5);
    ASSERT_TRUE(scored.Score({{"x", "-2"}}).IsOK());
    EXPECT_EQ(scored.Number(), -600.0);
}

/// An expression of an input, and what it makes of x = 2.5 and w = "a b a" behind a case with x = 1.
struct DerivedInput {
    const char* name;
    const char* expression;
    double expected;
};

class DerivedInputs : public testing::TestWithParam<DerivedInput> {};

TEST_P(DerivedInputs, AreWhatTheirExpressionsGive) {
    std::string document = Replaced(kSmallNumberNetwork, "<DataField name='z' optype='continuous' dataType='double'/>",
                                    "<DataField name='w' optype='categorical' dataType='string'/>");
    document = Replaced(document, "<MiningField name='x'/>", "<MiningField name='x'/><MiningField name='w'/>");
    document = Replaced(document,
                        "<NeuralInput id='0'><DerivedField optype='continuous' dataType='double'><FieldRef "
                        "field='x'/>",
                        std::string("<NeuralInput id='0'><DerivedField optype='continuous' dataType='double'>") +
                            GetParam().expression);
    Scored scored(document);
    scored.Score({{"x", "1"}, {"w", "b"}});
    ASSERT_TRUE(scored.Score({{"x", "2.5"}, {"w", "a b a"}}).IsOK());
    EXPECT_EQ(scored.Number(), 300 * GetParam().expected);
}

constexpr DerivedInput kDerivedInputs[] = {
    {"Constant", "<Constant>3</Constant>", 3.0},
    {"FieldRef", "<FieldRef field='x'/>", 2.5},
    {"NormContinuous",
     "<NormContinuous field='x'><LinearNorm orig='2' norm='0'/><LinearNorm orig='4' norm='1'/></NormContinuous>", 0.25},
    {"NormDiscrete", "<NormDiscrete field='w' value='a b a'/>", 1.0},
    {"Discretize",
     "<Discretize field='x'><DiscretizeBin binValue='5'><Interval closure='openOpen' leftMargin='2'/></DiscretizeBin>"
     "</Discretize>",
     5.0},
    {"MapValues",
     "<MapValues outputColumn='o'><FieldColumnPair field='w' column='i'/><InlineTable><row><i>a b a</i><o>4</o></row>"
     "</InlineTable></MapValues>",
     4.0},
    {"TextIndex", "<TextIndex textField='w' localTermWeights='termFrequency'><Constant>a</Constant></TextIndex>", 2.0},
    {"Apply", "<Apply function='*'><FieldRef field='twice'/><Constant>2</Constant></Apply>", 10.0},
    {"Aggregate", "<Aggregate field='x' function='sum'/>", 2.5},
    {"Lag", "<Lag field='x' n='1'/>", 1.0},
};

INSTANTIATE_TEST_SUITE_P(Expressions, DerivedInputs, testing::ValuesIn(kDerivedInputs), NameOfRow());

TEST(NeuralNetwork, ATargetOfItsOwnIsTheFieldOfItsOutput) {
    Scored scored(Replaced(kSmallNumberNetwork, "<MiningField name='y' usageType='target'/>", ""));
    ASSERT_TRUE(scored.Score({{"x", "1"}}).IsOK());
    EXPECT_EQ(scored.Number(), 300.0);
}

/// 3x for y, behind the inversion 300x, and x for z.
std::string OfTwoNumbers() {
    const std::string other = "<NeuralOutputs><NeuralOutput outputNeuron='0'><DerivedField optype='continuous' "
                              "dataType='double'><FieldRef field='z'/></DerivedField></NeuralOutput>";
    const std::string outputs = "<Output><OutputField name='ofY' targetField='y' feature='predictedValue'/>"
                                "<OutputField name='ofZ' targetField='z' feature='predictedValue'/></Output>";
    return Replaced(Replaced(kSmallNumberNetwork, "<NeuralOutputs>", other), "<MiningField name='x'/></MiningSchema>",
                    "<MiningField name='x'/><MiningField name='z' usageType='target'/></MiningSchema>" + outputs);
}

/// The first target is the model's own, or the one that it names.
TEST(NeuralNetwork, PredictsEachOfItsTargets) {
    Scored first(OfTwoNumbers());
    ASSERT_TRUE(first.Score({{"x", "1"}}).IsOK());
    EXPECT_EQ(first.Number(), 300.0);
    EXPECT_EQ(first.Number("ofY"), 300.0);
    EXPECT_EQ(first.Number("ofZ"), 1.0);
    Scored named(
        Replaced(OfTwoNumbers(), "<NeuralNetwork functionName", "<NeuralNetwork targetFieldName='z' functionName"));
    ASSERT_TRUE(named.Score({{"x", "1"}}).IsOK());
    EXPECT_EQ(named.Number(), 1.0);
    EXPECT_EQ(named.Number("ofY"), 300.0);
    EXPECT_EQ(named.Number("ofZ"), 1.0);
}

TEST(NeuralNetwork, AdjustsEachTargetByItsOwn) {
    Scored scored(Replaced(OfTwoNumbers(), "</Output>",
                           "</Output><Targets><Target field='z' rescaleFactor='10' castInteger='floor'/></Targets>"));
    ASSERT_TRUE(scored.Score({{"x", "0.25"}}).IsOK());
    EXPECT_EQ(scored.Number("ofY"), 75.0);
    EXPECT_EQ(scored.Number("ofZ"), 2.0);
}

/// What overflows for a further target alone is its own loss; without the first one nothing is predicted.
TEST(NeuralNetwork, AFurtherTargetMayGoWithoutANumber) {
    const std::string targets = "</Output><Targets><Target field='#' rescaleFactor='1e300'/></Targets>";
    Scored further(Replaced(OfTwoNumbers(), "</Output>", Replaced(targets, "#", "z")));
    ASSERT_TRUE(further.Score({{"x", "1e10"}}).IsOK());
    EXPECT_EQ(further.Number("ofY"), 3e12);
    EXPECT_EQ(further.Number("ofZ"), kMissing);
    Scored own(Replaced(OfTwoNumbers(), "</Output>", Replaced(targets, "#", "y")));
    EXPECT_EQ(own.Score({{"x", "1e10"}}).GetErrorCode(), kNoPrediction);
    EXPECT_EQ(own.Number("ofY"), kMissing);
    EXPECT_EQ(own.Number("ofZ"), kMissing);
}

/// A default is nothing that its Target adjusts.
TEST(NeuralNetwork, EachTargetHasItsOwnDefault) {
    const std::string targets =
        "</Output><Targets><Target field='y' rescaleFactor='1e290'><TargetValue defaultValue='7'/></Target>"
        "<Target field='z' rescaleFactor='1e300'><TargetValue defaultValue='8'/></Target></Targets>";
    Scored scored(Replaced(OfTwoNumbers(), "</Output>", targets));
    const auto expect = [&scored](const char* x, double y, double z) {
        SCOPED_TRACE(x);
        EXPECT_EQ(scored.Score({{"x", x}}).IsOK(), y != kMissing);
        EXPECT_DOUBLE_EQ(scored.Number(), y);
        EXPECT_DOUBLE_EQ(scored.Number("ofY"), y);
        EXPECT_DOUBLE_EQ(scored.Number("ofZ"), z);
    };
    ASSERT_TRUE(scored.Model().SetOption("missingValuePolicy", "defaultPrediction"));
    expect("0", 0, 0);
    expect("", 7, 8);
    expect("1e9", 3e301, 8); // the number of z is beyond all doubles
    expect("1e7", 3e299, 1e307);
    expect("1e307", 7, 8);
    ASSERT_TRUE(scored.Model().SetOption("missingValuePolicy", "noPrediction"));
    expect("", kMissing, kMissing);
    expect("1e9", 3e301, kMissing);
}

/// What is predicted of a further target stands where the first one has to have its default.
TEST(NeuralNetwork, AFurtherTargetKeepsItsPredictionBesideADefault) {
    const std::string targets = "</Output><Targets><Target field='y' rescaleFactor='1e300'><TargetValue defaultValue="
                                "'7'/></Target><Target field='z' max='5'/></Targets>";
    Scored scored(Replaced(OfTwoNumbers(), "</Output>", targets));
    ASSERT_TRUE(scored.Score({{"x", "1e10"}}).IsOK());
    EXPECT_EQ(scored.Number(), 7);
    EXPECT_EQ(scored.Number("ofZ"), 5);
    ASSERT_TRUE(scored.Score({}).IsOK());
    EXPECT_EQ(scored.Number(), 7);
    EXPECT_EQ(scored.Number("ofZ"), kMissing);
}

TEST(NeuralNetwork, EachTargetHasItsOwnResidual) {
    const std::string residuals = "<OutputField name='r' feature='residual'/><OutputField name='rZ' "
                                  "feature='residual' targetField='z'/></Output>";
    Scored scored(Replaced(OfTwoNumbers(), "</Output>", residuals));
    ASSERT_TRUE(scored.Score({{"x", "0.25"}, {"y", "80"}, {"z", "1"}}).IsOK());
    EXPECT_EQ(scored.Number("r"), 5);
    EXPECT_EQ(scored.Number("rZ"), 0.75);
    ASSERT_TRUE(scored.Score({{"x", "0.25"}, {"z", "-1"}}).IsOK());
    EXPECT_EQ(scored.Number("r"), kMissing);
    EXPECT_EQ(scored.Number("rZ"), -1.25);
    ASSERT_TRUE(scored.Score({{"x", "0.25"}, {"y", "80"}}).IsOK());
    EXPECT_EQ(scored.Number("rZ"), kMissing);
}

/// Hosts find the prediction of a further target by the target's name, though no list of outputs has it.
TEST(NeuralNetwork, TellsAFurtherTargetByItsName) {
    std::string document = OfTwoNumbers();
    document.erase(document.find("<Output>"), document.find("</Output>") + 9 - document.find("<Output>"));
    Scored silent(document);
    EXPECT_EQ(silent.Model().GetResultDictionary(), nullptr);
    ASSERT_TRUE(silent.Score({{"x", "1"}}).IsOK());
    EXPECT_EQ(silent.Number("z"), 1);
    Scored named(Replaced(OfTwoNumbers(), "name='ofY'", "name='z'"));
    ASSERT_TRUE(named.Score({{"x", "1"}}).IsOK());
    EXPECT_EQ(named.Number("z"), 300) << "an output field of this name goes before it";
}

TEST(NeuralNetwork, MixedFunctionsGoByTheLevelOfTheFirstTarget) {
    const std::string mixed = Replaced(kSmallNetwork, "functionName='classification'", "functionName='mixed'");
    Scored categories(mixed);
    ASSERT_TRUE(categories.Score({{"x", "0.5"}}).IsOK());
    EXPECT_EQ(categories.Text(), "maybe");
    Scored numbers(Replaced(kSmallNumberNetwork, "functionName='regression'", "functionName='mixed'"));
    ASSERT_TRUE(numbers.Score({{"x", "1"}}).IsOK());
    EXPECT_EQ(numbers.Number(), 300.0);
}

TEST(NeuralNetwork, EachTargetNeedsAnOutput) {
    const std::string document = Replaced(kSmallNumberNetwork, "<MiningField name='x'/>",
                                          "<MiningField name='x'/><MiningField name='z' usageType='target'/>");
    ExpectFailure([&] { ReadModel(document); }, {MISSING_ELEMENT_WITH_VALUE, "z", "field", "NeuralOutputs"});
    ExpectFailure(
        [&] {
            ReadModel(
                Replaced(document, "<NeuralNetwork functionName", "<NeuralNetwork targetFieldName='z' functionName"));
        },
        {MISSING_ELEMENT_WITH_VALUE, "z", "field", "NeuralOutputs"});
    std::string silent = document;
    const std::size_t first = silent.find("<NeuralOutputs");
    silent.erase(first, silent.find("</NeuralOutputs>") + 16 - first);
    ExpectFailure([&] { ReadModel(silent); }, {MISSING_NODE_IN, "NeuralOutputs", "NeuralNetwork"});
}

/// A number that grows beyond all doubles, in a neuron that nothing depends on too.
TEST(NeuralNetwork, HasNoPredictionWhereANumberOverflows) {
    const std::string idle = "<Neuron id='idle'><Con from='0' weight='1e300'/></Neuron>";
    for (const char* activation : {"identity", "square", "exponential", "reciprocal"}) {
        const std::string grown = Replaced(kSmallNumberNetwork, "<NeuralLayer><Neuron id='1'>",
                                           std::string("<NeuralLayer activationFunction='") + activation + "'>" + idle +
                                               "</NeuralLayer><NeuralLayer><Neuron id='1'>");
        Scored scored(grown);
        const char* x = std::string(activation) == "reciprocal" ? "0" : "1e200";
        EXPECT_EQ(scored.Score({{"x", x}}).GetErrorCode(), kNoPrediction) << activation;
        EXPECT_EQ(scored.Number(), kMissing) << activation;
        EXPECT_TRUE(scored.Score({{"x", "1e-300"}}).IsOK()) << activation;
    }
}

TEST(NeuralNetwork, HasNoPredictionWhereSharesHaveNoSum) {
    Scored scored(Replaced(kSmallNetwork, "activationFunction='identity' normalizationMethod='none' threshold='1'",
                           "activationFunction='identity' normalizationMethod='simplemax' threshold='1'"));
    EXPECT_EQ(scored.Score({{"x", "0"}}).GetErrorCode(), kNoPrediction);
    ASSERT_TRUE(scored.Score({{"x", "2"}}).IsOK());
    EXPECT_EQ(scored.Probability("maybe"), 1.0);
    EXPECT_EQ(scored.Probability("yes"), -0.5);
    Scored soft(Replaced(kSmallNetwork, "normalizationMethod='none' threshold='1'",
                         "normalizationMethod='softmax' threshold='1'"));
    ASSERT_TRUE(soft.Score({{"x", "5000"}}).IsOK()) << "exponentials of differences don't overflow";
    EXPECT_EQ(soft.Probability("maybe"), 1.0);
    EXPECT_EQ(soft.Probability("yes"), 0.0);
}

TEST(NeuralNetwork, ShowsItsLayers) {
    std::ostringstream out;
    ReadModel(kSmallNetwork)->Display(out);
    EXPECT_NE(out.str().find("inputs: 1\nlayer of 1 neurons\nlayer of 3 neurons\nconnections: 5\n"), std::string::npos)
        << out.str();
}

/// Every variant of the samples, and the small documents with numbers that overflow.
TEST(NetworkColumns, HoldTheBitsOfCases) {
    std::vector<std::string> documents{kSmallNetwork, kSmallNumberNetwork};
    for (const SampleVariant& variant : ReadVariants(TestsFolder() + "/models/network/variants.tsv")) {
        documents.push_back(DocumentOf(variant));
    }
    std::mt19937_64 random(7);
    for (const std::string& document : documents) {
        ModelRows rows(document);
        rows.Fill(random, 300);
        const auto state = rows.Scorer().NewState();
        EXPECT_EQ(rows.InBlocks(*state, 256, 0, false), rows.CaseByCase()) << document;
        EXPECT_EQ(rows.InBlocks(*state, 19, 5, true), rows.CaseByCase()) << document;
    }
}

std::string Repeated(int count, const std::string& before, const std::string& behind) {
    std::string text;
    for (int i = 0; i < count; ++i) {
        text += before;
        text += std::to_string(i);
        text += behind;
    }
    return text;
}

TEST(HostileNetwork, HasManyNeuronsConnectionsAndLayers) {
    constexpr int kMany = 20000;
    const std::string neurons = Repeated(kMany, "<Neuron id='n", "'><Con from='0' weight='1'/></Neuron>");
    const std::string sum = "<NeuralLayer><Neuron id='sum'>" + Repeated(kMany, "<Con from='n", "' weight='1'/>") +
                            "</Neuron></NeuralLayer>";
    const std::string changed =
        Replaced(kSmallNumberNetwork, "<NeuralLayer><Neuron id='1'><Con from='0' weight='3'/></Neuron></NeuralLayer>",
                 "<NeuralLayer>" + neurons + "</NeuralLayer>" + sum +
                     "<NeuralLayer><Neuron id='1'><Con from='sum' "
                     "weight='0.01'/></Neuron></NeuralLayer>");
    Scored wide(changed);
    ASSERT_TRUE(wide.Score({{"x", "1"}}).IsOK());
    EXPECT_EQ(wide.Number(), kMany);
    std::string chain = "<NeuralLayer><Neuron id='n0'><Con from='0' weight='1'/></Neuron></NeuralLayer>";
    for (int i = 1; i < kMany; ++i) {
        chain += "<NeuralLayer><Neuron id='n" + std::to_string(i) + "'><Con from='n" + std::to_string(i - 1) +
                 "' weight='1'/></Neuron></NeuralLayer>";
    }
    Scored deep(Replaced(kSmallNumberNetwork,
                         "<NeuralLayer><Neuron id='1'><Con from='0' weight='3'/></Neuron></NeuralLayer>",
                         chain + "<NeuralLayer><Neuron id='1'><Con from='n" + std::to_string(kMany - 1) +
                             "' weight='1'/></Neuron></NeuralLayer>"));
    ASSERT_TRUE(deep.Score({{"x", "1"}}).IsOK());
    EXPECT_EQ(deep.Number(), 100.0);
}

TEST(HostileNetwork, HasManyInputsAndOutputs) {
    constexpr int kMany = 20000;
    const std::string input =
        "<DerivedField optype='continuous' dataType='double'><FieldRef field='x'/></DerivedField>";
    const std::string inputs = Repeated(kMany, "<NeuralInput id='i", "'>" + input + "</NeuralInput>");
    const std::string sum = Repeated(kMany, "<Con from='i", "' weight='1'/>");
    Scored many(Replaced(Replaced(kSmallNumberNetwork, "<Con from='0' weight='3'/>", sum), "<NeuralInputs>",
                         "<NeuralInputs>" + inputs));
    ASSERT_TRUE(many.Score({{"x", "0.5"}}).IsOK());
    EXPECT_EQ(many.Number(), kMany * 0.5 * 100);
    std::string outputs;
    for (int i = 0; i < kMany; ++i) {
        outputs += "<NeuralOutput outputNeuron='2'><DerivedField optype='continuous' dataType='double'><NormDiscrete "
                   "field='t' value='v" +
                   std::to_string(i) + "'/></DerivedField></NeuralOutput>";
    }
    const std::string open =
        Replaced(kSmallNetwork, "<Value value='no'/><Value value='maybe'/><Value value='yes'/>", "");
    Scored categories(Replaced(Replaced(open, "<NeuralOutputs numberOfOutputs='3'>", "<NeuralOutputs>"),
                               "</NeuralOutputs>", outputs + "</NeuralOutputs>"));
    ASSERT_TRUE(categories.Score({{"x", "1"}}).IsOK());
    EXPECT_EQ(categories.Text(), "maybe");
    EXPECT_EQ(categories.Probability("v19999"), 2.0);
}

} // namespace
