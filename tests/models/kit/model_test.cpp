// What hosts and models do with each other: names, roles, options, results.
#include "kit/inputs/unscored_reason.h"
#include "models/kit/scoring.h"
#include "models/kit/small_documents.h"
#include "support/allocations.h"

#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/ResultField.h>
#include <MCVeltrane_900/ResultVar.h>
#include <MCVeltrane_900/ScoreClsResult.h>
#include <MCVeltrane_900/ScoreDictVar.h>
#include <MCVeltrane_900/ScoreDictionary.h>
#include <MCVeltrane_900/ScoreRegResult.h>
#include <MCVeltrane_900/ScoreVersionInfo.h>
#include <MCVeltrane_900/StringValue.h>

#include <gtest/gtest.h>

#include <cmath>
#include <sstream>
#include <thread>

using namespace veltrane::tests;

namespace {

/// The status of a case of the small regression without its first number.
MCScore::MCStatus LacksX() {
    MCScore::MCStatus status(kNoPrediction, false);
    veltrane_kit::UnscoredReason{veltrane_kit::UnscoredReason::MISSING, 1}.WriteTo(status);
    return status;
}

const Case kComplete = {{"x", "2"}, {"z", "3"}, {"c", "a"}};
constexpr double kCompleteAnswer = 1 + 3 * 4 + 4 + 5 * 6;

TEST(Model, NamesItsInputsInTheOrderOfTheSchema) {
    EXPECT_EQ(Scored(kSmallRegression).Model().GetInputNames(), (std::vector<std::string>{"x", "z", "c"}));
}

TEST(Model, KnowsRolesTargetAndVersion) {
    Scored scored(kSmallRegression);
    EXPECT_EQ(scored.Model().GetVarRole("x"), ScoreModel::ROLE_INPUT);
    EXPECT_EQ(scored.Model().GetVarRole("y"), ScoreModel::ROLE_TARGET);
    ASSERT_NE(scored.Model().GetTargetVar(), nullptr);
    EXPECT_EQ(scored.Model().GetTargetVar()->GetName(), "y");
    EXPECT_EQ(scored.Model().GetVersionInfo()->GetVersionInfo(), "4.3");
}

TEST(Model, EveryUsageTypeIsARole) {
    const std::pair<const char*, int> kRoles[] = {
        {"supplementary", ScoreModel::ROLE_SUPPLEMENTARY},
        {"group", ScoreModel::ROLE_GROUP},
        {"order", ScoreModel::ROLE_ORDER},
        {"frequencyWeight", ScoreModel::ROLE_FREQUENCY_WEIGHT},
        {"analysisWeight", ScoreModel::ROLE_ANALYSIS_WEIGHT},
    };
    for (const auto& [usage, role] : kRoles) {
        std::string document = Replaced(kSmallRegression, "<Header/>\n<DataDictionary numberOfFields='4'>",
                                        "<DataDictionary><DataField name='w' optype='continuous' dataType='double'/>");
        document = Replaced(document, "<MiningField name='z'/>",
                            "<MiningField name='z'/><MiningField name='w' usageType='" + std::string(usage) + "'/>");
        Scored scored(document);
        EXPECT_EQ(scored.Model().GetVarRole("w"), role) << usage;
        EXPECT_EQ(scored.Model().GetInputNames(), (std::vector<std::string>{"x", "z", "c"})) << usage;
    }
}

TEST(Model, BothWordsForATargetMakeOne) {
    for (const char* usage : {"predicted", "target"}) {
        Scored scored(Replaced(kSmallRegression, "usageType='target'", "usageType='" + std::string(usage) + "'"));
        EXPECT_EQ(scored.Model().GetTargetVar()->GetName(), "y") << usage;
    }
}

TEST(Model, TheTargetFieldNameDecidesBetweenTargets) {
    for (const char* order : {"<MiningField name='w' usageType='target'/><MiningField name='y' usageType='target'/>",
                              "<MiningField name='y' usageType='target'/><MiningField name='w' usageType='target'/>"}) {
        std::string document = Replaced(kSmallRegression, "<Header/>\n<DataDictionary numberOfFields='4'>",
                                        "<DataDictionary><DataField name='w' optype='continuous' dataType='double'/>");
        document = Replaced(document, "<MiningField name='y' usageType='target'/>", order);
        Scored scored(document);
        EXPECT_EQ(scored.Model().GetTargetVar()->GetName(), "y") << order;
    }
}

TEST(Model, WithoutATargetThereIsAPredictionButNoDefault) {
    std::string document = Replaced(kSmallRegression, "<MiningField name='y' usageType='target'/>", "");
    document = Replaced(document, " targetFieldName='y'", "");
    Scored scored(document);
    EXPECT_EQ(scored.Model().GetTargetVar(), nullptr);
    EXPECT_TRUE(scored.Score(kComplete).IsOK());
    EXPECT_EQ(scored.Number(), kCompleteAnswer);
    EXPECT_EQ(scored.Score({}), LacksX());
    EXPECT_EQ(scored.Number(), kMissing);
}

TEST(Model, ThePolicyIsAnOption) {
    Scored scored(kSmallRegression);
    EXPECT_TRUE(scored.Model().SetOption("missingValuePolicy", "noPrediction"));
    EXPECT_EQ(scored.Score({}), LacksX());
    EXPECT_EQ(scored.Number(), kMissing);
    EXPECT_EQ(scored.Number("p"), kMissing);
    EXPECT_TRUE(scored.Model().SetOption("missingValuePolicy", "defaultPrediction"));
    EXPECT_TRUE(scored.Score({}).IsOK());
    EXPECT_EQ(scored.Number(), -7);
    EXPECT_EQ(scored.Number("p"), -7);
}

TEST(Model, UnknownOptionsAndWordsAreRefused) {
    Scored scored(kSmallRegression);
    EXPECT_FALSE(scored.Model().SetOption("missingValuePolicy", "none"));
    EXPECT_FALSE(scored.Model().SetOption("other", "noPrediction"));
}

TEST(Model, DisplaysItself) {
    std::ostringstream out;
    Scored(kSmallRegression).Model().Display(out);
    EXPECT_EQ(out.str(), "RegressionModel \"small\"\nfunction: regression\nalgorithm: any\ntarget: y\ninputs: x z c\n"
                         "normalization: none\ntable\n"
                         "  intercept 1, numeric predictors 1, categorical fields 1, terms 1\n");
    std::ostringstream classification;
    Scored(kSmallClassification).Model().Display(classification);
    EXPECT_NE(classification.str().find("function: classification\ntarget: t\ninputs: x\nnormalization: logit\n"
                                        "table of yes\n"),
              std::string::npos)
        << classification.str();
}

TEST(Model, HasADictionaryOfItsOutputs) {
    Scored scored(kSmallRegression);
    const ScoreDictionary* outputs = scored.Model().GetResultDictionary();
    ASSERT_NE(outputs, nullptr);
    EXPECT_EQ(outputs->GetVarNames(), std::vector<std::string>{"p"});
    const auto& var = dynamic_cast<const ResultVar&>(*outputs->GetVar("p"));
    EXPECT_EQ(var.GetLabel(), "prediction");
    EXPECT_EQ(var.GetFeature(), ScoreResultField::RF_PREDICTED_VALUE);
    EXPECT_EQ(Scored(Replaced(kSmallRegression, "<Output>\n", "<Extension/><Output>\n"))
                  .Model()
                  .GetResultDictionary()
                  ->Size(),
              1);
}

TEST(Model, WithoutOutputFieldsHasNoDictionaryOfThem) {
    const std::string output = "<Output><OutputField name='P' feature='probability' value='yes'/></Output>";
    Scored scored(Replaced(kSmallClassification, output, ""));
    EXPECT_EQ(scored.Model().GetResultDictionary(), nullptr);
    ASSERT_TRUE(scored.Score({{"x", "1"}}).IsOK());
    EXPECT_EQ(scored.Result().GetResultFields()->GetResultSize(), 0);
}

TEST(Model, LearnsTheCategoriesThatNoDictionaryLists) {
    const std::string document = Replaced(kSmallClassification, "<Value value='no'/><Value value='yes'/>", "");
    Scored scored(document);
    ASSERT_TRUE(scored.Score({{"x", "1"}}).IsOK());
    EXPECT_EQ(scored.Text(), "yes");
    const auto categories = dynamic_cast<ScoreClsResult&>(scored.Result()).GetCategories();
    ASSERT_EQ(categories.size(), 2U);
    EXPECT_EQ(categories[0]->GetString(), "yes");
    Scored other(Replaced(Replaced(document, "<MiningField name='t' usageType='target'/>", ""),
                          "value='yes'/></Output>", "value='no'/></Output>"));
    ASSERT_TRUE(other.Score({{"x", "1"}}).IsOK());
    EXPECT_EQ(other.Text(), "yes");
    EXPECT_DOUBLE_EQ(other.Number("P"), 1 - 1 / (1 + std::exp(-1.0)));
}

TEST(Model, ReadsTheFieldOfAPredictorByItsNewerName) {
    Scored scored(Replaced(Replaced(kSmallRegression, "<NumericPredictor name=", "<NumericPredictor field="),
                           "<CategoricalPredictor name=", "<CategoricalPredictor field="));
    ASSERT_TRUE(scored.Score(kComplete).IsOK());
    EXPECT_EQ(scored.Number(), kCompleteAnswer);
}

TEST(Model, GivesTheOtherCategoryOfOneTableTheRest) {
    Scored scored(Replaced(kSmallClassification, "<RegressionTable targetCategory='no' intercept='0'/>", ""));
    ASSERT_TRUE(scored.Score({{"x", "1"}}).IsOK());
    EXPECT_DOUBLE_EQ(scored.Probability("yes"), 1 / (1 + std::exp(-1.0)));
    EXPECT_DOUBLE_EQ(scored.Probability("no"), 1 - 1 / (1 + std::exp(-1.0)));
}

TEST(Model, OneTableOfAnOrdinalTargetCountsForEitherCategory) {
    const std::string document =
        Replaced(Replaced(kSmallClassification, "<RegressionTable targetCategory='no' intercept='0'/>", ""),
                 "categorical", "ordinal");
    const double logistic = 1 / (1 + std::exp(-1.0));
    Scored last(document);
    ASSERT_TRUE(last.Score({{"x", "1"}}).IsOK());
    EXPECT_EQ(last.Text(), "yes");
    EXPECT_DOUBLE_EQ(last.Probability("yes"), logistic);
    EXPECT_DOUBLE_EQ(last.Probability("no"), 1 - logistic);
    Scored first(Replaced(document, "targetCategory='yes'", "targetCategory='no'"));
    ASSERT_TRUE(first.Score({{"x", "1"}}).IsOK());
    EXPECT_DOUBLE_EQ(first.Probability("no"), logistic);
}

TEST(Result, IsOfTheModelsKind) {
    EXPECT_EQ(Scored(kSmallRegression).Result().GetResultKind(), 1);
    EXPECT_EQ(Scored(kSmallClassification).Result().GetResultKind(), 0);
}

TEST(Result, OfAClassificationHoldsAllProbabilities) {
    Scored scored(kSmallClassification);
    ASSERT_TRUE(scored.Score({{"x", "0.5"}}).IsOK());
    EXPECT_EQ(scored.Text(), "yes");
    const double yes = 1 / (1 + std::exp(-0.5));
    EXPECT_DOUBLE_EQ(scored.Probability("yes"), yes);
    EXPECT_DOUBLE_EQ(scored.Probability("no"), 1 - yes);
    EXPECT_EQ(scored.Probability("perhaps"), kMissing);
    EXPECT_DOUBLE_EQ(scored.Result().GetResultConfidence(), yes);
    EXPECT_DOUBLE_EQ(scored.Number("P"), yes);
    const auto categories = dynamic_cast<ScoreClsResult&>(scored.Result()).GetCategories();
    ASSERT_EQ(categories.size(), 2U);
    EXPECT_EQ(categories[0]->GetString(), "no");
    EXPECT_EQ(categories[1]->GetString(), "yes");
}

TEST(Result, AmongEqualCategoriesTheFirstIsPredicted) {
    Scored scored(kSmallClassification);
    ASSERT_TRUE(scored.Score({{"x", "0"}}).IsOK());
    EXPECT_EQ(scored.Text(), "no");
}

TEST(Result, HoldsNothingOfTheCaseBefore) {
    Scored scored(kSmallClassification);
    ASSERT_TRUE(scored.Score({{"x", "2"}}).IsOK());
    EXPECT_FALSE(scored.Score({}).IsOK());
    EXPECT_EQ(scored.Text(), "");
    EXPECT_EQ(scored.Probability("yes"), kMissing);
    EXPECT_EQ(scored.Number("P"), kMissing);
    EXPECT_EQ(scored.Result().GetResultConfidence(), kMissing);
    EXPECT_TRUE(dynamic_cast<ScoreClsResult&>(scored.Result()).GetCategories().empty());
}

TEST(Result, OutlivesItsModel) {
    std::unique_ptr<ScoreResult> result;
    {
        const std::unique_ptr<ScoreModel> model = ReadModel(kSmallClassification);
        result.reset(model->CreateResult());
        model->Score(MakeRecord(*model, {{"x", "2"}}).get(), result.get());
    }
    EXPECT_EQ(result->GetResultValue()->GetString(), "yes");
    EXPECT_GT(result->GetResultFields()->GetResultValue("P")->GetDouble(), 0.5);
}

TEST(Result, KeepsOtherCategoriesThatAHostSets) {
    Scored scored(kSmallClassification);
    auto& result = dynamic_cast<ScoreClsResult&>(scored.Result());
    StringValue other("other");
    result.SetCategoryProbability(&other, 0.25);
    result.SetCategoryProbability(nullptr, 0.5);
    EXPECT_EQ(result.GetCategoryProbability(&other), 0.25);
    EXPECT_EQ(result.GetCategories().size(), 1U);
}

TEST(Result, WhoseFieldsAHostReplacedIsFilledByName) {
    Scored scored(kSmallRegression);
    ScoreResultField& fields = *scored.Result().GetResultFields();
    const std::map<std::string, ScoreValue*> before = fields.GetMapResultValue();
    fields.SetMapResultValue({{"p", new NumericValue(0)}});
    for (const auto& [name, value] : before) {
        delete value;
    }
    ASSERT_TRUE(scored.Score(kComplete).IsOK());
    EXPECT_EQ(scored.Number("p"), kCompleteAnswer);
}

/// A result that is a host's own.
template <typename Base>
class OwnResult : public Base {
public:
    void SetResultValue(ScoreValue* value) override { fValue.reset(value == nullptr ? nullptr : value->Clone()); }
    const ScoreValue* GetResultValue() const override { return fValue.get(); }
    ScoreResultField* GetResultFields() override { return &fFields; }
    void SetResultConfidence(double confidence) override { fConfidence = confidence; }
    double GetResultConfidence() const override { return fConfidence; }

private:
    std::unique_ptr<ScoreValue> fValue;
    ResultField fFields;
    double fConfidence = 0;
};

class OwnRegression : public OwnResult<ScoreRegResult> {
public:
    int GetResultKind() override { return 1; }
    void SetStandardError(double) override {}
    double GetStandardError() const override { return 0; }
};

class OwnClassification : public OwnResult<ScoreClsResult> {
public:
    int GetResultKind() override { return 0; }
    void SetCategoryProbability(ScoreValue* category, double probability) override {
        fProbabilities[category->GetString()] = probability;
    }
    double GetCategoryProbability(const ScoreValue* category) const override {
        const auto found = fProbabilities.find(category->GetString());
        return found == fProbabilities.end() ? kMissing : found->second;
    }
    std::vector<const ScoreValue*> GetCategories() const override { return {}; }
    std::map<std::string, double> fProbabilities;
};

TEST(HostsResult, OfARegressionIsFilled) {
    Scored scored(kSmallRegression);
    OwnRegression result;
    ASSERT_TRUE(scored.Model().Score(MakeRecord(scored.Model(), kComplete).get(), &result).IsOK());
    EXPECT_EQ(result.GetResultValue()->GetDouble(), kCompleteAnswer);
    EXPECT_EQ(result.GetResultFields()->GetResultValue("p")->GetDouble(), kCompleteAnswer);
    ASSERT_TRUE(scored.Model().Score(MakeRecord(scored.Model(), {}).get(), &result).IsOK());
    EXPECT_EQ(result.GetResultValue()->GetDouble(), -7);
    EXPECT_EQ(result.GetResultFields()->GetResultValue("p")->GetDouble(), -7);
}

TEST(HostsResult, OfAClassificationIsFilled) {
    Scored scored(kSmallClassification);
    OwnClassification result;
    ASSERT_TRUE(scored.Model().Score(MakeRecord(scored.Model(), {{"x", "1"}}).get(), &result).IsOK());
    EXPECT_EQ(result.GetResultValue()->GetString(), "yes");
    EXPECT_DOUBLE_EQ(result.fProbabilities["yes"], 1 / (1 + std::exp(-1.0)));
    EXPECT_DOUBLE_EQ(result.GetResultFields()->GetResultValue("P")->GetDouble(), result.fProbabilities["yes"]);
    EXPECT_FALSE(scored.Model().Score(MakeRecord(scored.Model(), {}).get(), &result).IsOK());
    EXPECT_EQ(result.GetResultValue(), nullptr);
}

TEST(HostsResult, OfAnotherModelIsFilledToo) {
    Scored scored(kSmallClassification);
    Scored other(kSmallClassification);
    ASSERT_TRUE(scored.Model().Score(MakeRecord(scored.Model(), {{"x", "1"}}).get(), &other.Result()).IsOK());
    EXPECT_EQ(other.Text(), "yes");
    EXPECT_DOUBLE_EQ(other.Probability("yes"), 1 / (1 + std::exp(-1.0)));
    EXPECT_DOUBLE_EQ(other.Number("P"), 1 / (1 + std::exp(-1.0)));
}

TEST(Default, OfAClassificationIsTheMostProbableCategory) {
    Scored scored(Replaced(kSmallClassification, "<Output>",
                           "<Targets><Target><TargetValue value='no' priorProbability='0.25'/>"
                           "<TargetValue value='yes' priorProbability='0.75'/></Target></Targets><Output>"));
    ASSERT_TRUE(scored.Score({}).IsOK());
    EXPECT_EQ(scored.Text(), "yes");
    EXPECT_EQ(scored.Probability("no"), 0.25);
    EXPECT_EQ(scored.Probability("yes"), 0.75);
    EXPECT_EQ(scored.Result().GetResultConfidence(), 0.75);
    EXPECT_EQ(scored.Number("P"), 0.75);
}

TEST(Path, TakesNoMemoryAfterTheFirstCase) {
    for (const std::string& document : {kSmallRegression, kSmallClassification}) {
        Scored scored(document);
        const auto record = MakeRecord(scored.Model(), kComplete);
        const auto missing = MakeRecord(scored.Model(), {});
        for (const auto* row : {record.get(), missing.get()}) {
            scored.Model().Score(row, &scored.Result());
        }
        EXPECT_EQ(AllocationsOf([&] {
                      for (int i = 0; i < 10; ++i) {
                          scored.Model().Score(record.get(), &scored.Result());
                          scored.Model().Score(missing.get(), &scored.Result());
                      }
                  }),
                  0U);
    }
}

TEST(ModelThreads, EachWithAModelOfItsOwn) {
    constexpr int kThreads = 8;
    std::vector<int> rights(kThreads, 0);
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t) {
        threads.emplace_back([t, &rights] {
            Scored regression(kSmallRegression);
            Scored classification(kSmallClassification);
            for (int i = 0; i < 200; ++i) {
                regression.Score({{"x", std::to_string(i % 50)}, {"z", "1"}, {"c", "b"}});
                classification.Score({{"x", std::to_string(i - 100)}});
                const double x = i % 50;
                const bool isRight =
                    regression.Number() == 1 + 3 * x * x + 5 * x && classification.Text() == (i > 100 ? "yes" : "no");
                rights[static_cast<std::size_t>(t)] += isRight ? 1 : 0;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    for (const int right : rights) {
        EXPECT_EQ(right, 200);
    }
}

} // namespace
