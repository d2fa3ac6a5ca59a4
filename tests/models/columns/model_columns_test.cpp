// Models in columns: the same as case by case, bit for bit, wherever blocks begin and end.
#include "kit/columns/buffers.h"
#include "models/columns/model_rows.h"
#include "models/kit/scoring.h"
#include "models/tree/small_tree.h"
#include "support/folders.h"

#include <MCVeltrane_900/VTException.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <thread>

using namespace veltrane::tests;

namespace {

constexpr std::size_t kMost = veltrane::ColumnScorer::kMostRows;

/// Each kind of output field that has columns, over all kinds of fields.
std::string Regression(const std::string& outputs) {
    return R"(<PMML version='4.4'><DataDictionary>
 <DataField name='y' optype='categorical' dataType='string'><Value value='no'/><Value value='yes'/></DataField>
 <DataField name='x' optype='continuous' dataType='double'><Interval closure='closedClosed' leftMargin='-20' rightMargin='100'/></DataField>
 <DataField name='c' optype='categorical' dataType='string'><Value value='u'/><Value value='v'/><Value value='?' property='missing'/></DataField>
 <DataField name='n' optype='continuous' dataType='integer'/>
 <DataField name='b' optype='categorical' dataType='boolean'/>
</DataDictionary>
<TransformationDictionary><DerivedField name='d' optype='categorical' dataType='string'><Discretize field='x' defaultValue='high'><DiscretizeBin binValue='low'><Interval closure='openOpen' rightMargin='5'/></DiscretizeBin></Discretize></DerivedField>
<DerivedField name='root' optype='continuous' dataType='double'><Apply function='sqrt'><FieldRef field='n'/></Apply></DerivedField></TransformationDictionary>
<RegressionModel functionName='classification' normalizationMethod='softmax'>
 <MiningSchema><MiningField name='y' usageType='target'/><MiningField name='x' invalidValueTreatment='asMissing' missingValueReplacement='3.5'/><MiningField name='c' invalidValueTreatment='asIs'/><MiningField name='n'/><MiningField name='b' invalidValueTreatment='asMissing'/></MiningSchema>
 <Output>)" +
           outputs + R"(</Output>
 <Targets><Target field='y'><TargetValue value='no' displayValue='nay' priorProbability='0.75'/><TargetValue value='yes' priorProbability='0.25'/></Target></Targets>
 <RegressionTable intercept='0.5' targetCategory='yes'><NumericPredictor name='x' exponent='2' coefficient='0.001'/><NumericPredictor name='root' coefficient='-0.1'/>
  <CategoricalPredictor name='c' value='u' coefficient='1'/><CategoricalPredictor name='d' value='low' coefficient='-2'/><CategoricalPredictor name='b' value='true' coefficient='0.5'/>
  <PredictorTerm coefficient='0.01'><FieldRef field='x'/><FieldRef field='n' mapMissingTo='2'/></PredictorTerm></RegressionTable>
 <RegressionTable intercept='0' targetCategory='no'/>
</RegressionModel></PMML>)";
}

const std::string kOutputs =
    "<OutputField name='v' feature='predictedValue'/><OutputField name='s' feature='predictedDisplayValue'/>"
    "<OutputField name='p' feature='probability' value='yes'/><OutputField name='q' feature='probability'/>"
    "<OutputField name='r' feature='residual'/><OutputField name='k' feature='confidence' value='no'/>"
    "<OutputField name='e' feature='entityId'/><OutputField name='w' feature='warning'/>";
const std::string kExpressions =
    "<OutputField name='t' feature='transformedValue' dataType='double'><Apply function='*'><FieldRef field='x'/>"
    "<Constant>2</Constant></Apply></OutputField><OutputField name='g' feature='transformedValue' dataType='boolean'>"
    "<Apply function='greaterThan'><FieldRef field='t'/><Constant>3</Constant></Apply></OutputField>"
    "<OutputField name='l' feature='transformedValue' dataType='string'><Apply function='uppercase'>"
    "<FieldRef field='d'/></Apply></OutputField>";
const std::string kByRows =
    kOutputs + "<OutputField name='i' feature='probability' dataType='integer'/><OutputField name='2' "
               "feature='predictedValue' rank='2'/><OutputField name='t' feature='transformedValue' dataType='double'>"
               "<Apply function='+'><FieldRef field='p'/><Constant>1</Constant></Apply></OutputField>";

/// Predicts a value of a type that hosts get as a moment.
std::string TreeOf(const std::string& type, const std::string& first, const std::string& second) {
    return "<PMML version='4.4'><DataDictionary><DataField name='y' optype='categorical' dataType='" + type +
           "'><Value value='" + first + "'/><Value value='" + second +
           "'/></DataField><DataField name='x' optype='continuous' dataType='double'/></DataDictionary>"
           "<TreeModel functionName='classification'><MiningSchema><MiningField name='y' usageType='target'/>"
           "<MiningField name='x'/></MiningSchema><Output><OutputField name='v' feature='predictedValue'/>"
           "<OutputField name='2' feature='predictedValue' rank='2'/></Output><Node><True/><Node score='" +
           first +
           "'><SimplePredicate field='x' operator='lessThan' value='5'/></Node>"
           "<Node><True/><ScoreDistribution value='" +
           first + "' recordCount='1'/><ScoreDistribution value='" + second +
           "' recordCount='2'/></Node></Node></TreeModel></PMML>";
}

/// Looks back on the rows before.
const std::string kLag = R"(<PMML version='4.4'><DataDictionary>
 <DataField name='y' optype='continuous' dataType='double'/><DataField name='x' optype='continuous' dataType='double'/>
</DataDictionary><RegressionModel functionName='regression'>
 <MiningSchema><MiningField name='y' usageType='target'/><MiningField name='x' missingValueReplacement='1'/></MiningSchema>
 <Output><OutputField name='p' feature='predictedValue'/></Output>
 <LocalTransformations><DerivedField name='past' optype='continuous' dataType='double'><Lag field='x' n='3' aggregate='sum'/></DerivedField></LocalTransformations>
 <RegressionTable intercept='1'><NumericPredictor name='x' coefficient='2'/><NumericPredictor name='past' coefficient='3'/></RegressionTable>
</RegressionModel></PMML>)";

void ExpectTheSame(const ModelRows& rows, const ModelAnswers& expected, std::size_t length, std::size_t offset,
                   bool hasDictionary) {
    const auto state = rows.Scorer().NewState();
    const ModelAnswers answers = rows.InBlocks(*state, length, offset, hasDictionary);
    ASSERT_EQ(answers.size(), expected.size());
    for (std::size_t row = 0; row < answers.size(); ++row) {
        ASSERT_EQ(answers[row], expected[row]) << "row " << row << " of blocks of " << length << " from " << offset;
    }
}

void ExpectTheSame(const std::string& document, std::size_t count) {
    std::optional<ModelRows> rows;
    try {
        rows.emplace(document);
    } catch (const MCVeltrane_900::VTException&) {
        return;
    }
    std::mt19937_64 random(count);
    rows->Fill(random, count);
    const ModelAnswers expected = rows->CaseByCase();
    ExpectTheSame(*rows, expected, kMost, 0, false);
    ExpectTheSame(*rows, expected, kMost, 3, true);
    ExpectTheSame(*rows, expected, 7, 2, false);
}

const std::vector<std::string>& Documents() {
    static const std::vector<std::string> documents{kSmallTree, Regression(kOutputs), Regression(kExpressions),
                                                    Regression(kByRows), kLag};
    return documents;
}

TEST(ModelColumns, AgreeWithCasesForEveryKindOfOutput) {
    for (const std::string& document : Documents()) {
        SCOPED_TRACE(document);
        ASSERT_NO_THROW(ModelRows{document});
        ExpectTheSame(document, 1500);
    }
}

TEST(ModelColumns, AgreeForTargetsThatAreMoments) {
    for (const std::string& document :
         {TreeOf("date", "2020-02-29", "1939-01-01"), TreeOf("time", "10:11:12", "23:59:59"),
          TreeOf("dateTime", "2020-02-29T10:11:12", "1939-01-01T00:00:00"), TreeOf("timeSeconds", "3600", "7"),
          TreeOf("dateDaysSince[1960]", "-7704", "6718"), TreeOf("dateTimeSecondsSince[1970]", "86400", "-1")}) {
        SCOPED_TRACE(document);
        ASSERT_NO_THROW(ModelRows{document});
        ExpectTheSame(document, 50);
    }
}

TEST(ModelColumns, AgreeForEveryLengthOfBlocks) {
    for (const std::string& document : {kSmallTree, Regression(kOutputs), kLag}) {
        ModelRows rows(document);
        std::mt19937_64 random(1);
        rows.Fill(random, kMost + 1);
        const ModelAnswers expected = rows.CaseByCase();
        for (std::size_t length = 1; length <= kMost; ++length) {
            ASSERT_NO_FATAL_FAILURE(ExpectTheSame(rows, expected, length, length % 5, length % 2 == 0));
        }
        // More than a host may hand over, in one: the scorers of the kit split blocks by themselves.
        ASSERT_NO_FATAL_FAILURE(ExpectTheSame(rows, expected, kMost + 1, 0, true));
    }
}

TEST(ModelColumns, AgreeForEveryOffset) {
    ModelRows rows(Regression(kOutputs));
    std::mt19937_64 random(2);
    rows.Fill(random, kMost + 1);
    const ModelAnswers expected = rows.CaseByCase();
    for (std::size_t offset = 0; offset <= kMost; ++offset) {
        ASSERT_NO_FATAL_FAILURE(ExpectTheSame(rows, expected, kMost, offset, offset % 2 == 0));
    }
}

TEST(ModelColumns, TakeABlockOfNoRows) {
    const ModelRows rows(kSmallTree);
    const auto state = rows.Scorer().NewState();
    const std::vector<veltrane::InputColumn> in(rows.Scorer().Inputs().size());
    const std::vector<veltrane::OutputColumn> out(rows.Scorer().Outputs().size());
    rows.Scorer().Score({0, in.data()}, *state, {out.data(), nullptr});
}

TEST(ModelColumns, KeepWhatThreadsWriteApart) {
    const ModelRows rows(kSmallTree);
    std::vector<std::unique_ptr<veltrane::ColumnScorer::State>> states;
    for (int i = 0; i < 16; ++i) {
        states.push_back(rows.Scorer().NewState());
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(states.back().get()) % veltrane_kit::kBytesApart, 0U);
    }
}

TEST(ModelColumns, AgreeForTheSeedsOfTheFuzzer) {
    std::size_t count = 0;
    for (const auto& file : std::filesystem::directory_iterator(TestsFolder() + "/../fuzz/seeds/model")) {
        SCOPED_TRACE(file.path().filename().string());
        ASSERT_NO_FATAL_FAILURE(ExpectTheSame(ReadFile(file.path().string()), 100));
        ++count;
    }
    EXPECT_GT(count, 100U);
}

TEST(ModelColumns, AgreeForTheSamplesAndRealDocuments) {
    for (const std::string& folder : {ModelSamplesFolder(), CasesFolder() + "/models"}) {
        if (!std::filesystem::exists(folder)) {
            continue; // a clone without the real documents
        }
        for (const auto& file : std::filesystem::directory_iterator(folder)) {
            if (file.path().extension() == ".pmml" && std::filesystem::file_size(file) < 2000000) {
                SCOPED_TRACE(file.path().filename().string());
                ASSERT_NO_FATAL_FAILURE(ExpectTheSame(ReadFile(file.path().string()), 1000));
            }
        }
    }
}

TEST(ModelColumns, NameThePredictedValueFirst) {
    const ModelRows tree(kSmallTree);
    ASSERT_EQ(tree.Scorer().Outputs().size(), 4U);
    EXPECT_EQ(tree.Scorer().Outputs().front().name, "t");
    EXPECT_EQ(tree.Scorer().Outputs().front().categories, (std::vector<std::string>{"a", "b"}));
    EXPECT_EQ(tree.Scorer().Outputs()[1].name, "p");
    EXPECT_FALSE(tree.Scorer().NeedsOrder());
    EXPECT_TRUE(ModelRows(kLag).Scorer().NeedsOrder());
}

TEST(ModelColumnsThreads, ShareOneScorer) {
    for (const std::string& document : Documents()) {
        ModelRows rows(document);
        std::mt19937_64 random(3);
        rows.Fill(random, 600);
        const ModelAnswers expected = rows.CaseByCase();
        std::vector<ModelAnswers> answers(8);
        std::vector<std::thread> threads;
        threads.reserve(answers.size());
        for (ModelAnswers& each : answers) {
            threads.emplace_back([&rows, &each] {
                const auto state = rows.Scorer().NewState();
                each = rows.InBlocks(*state, 100, 0, true);
            });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
        for (const ModelAnswers& each : answers) {
            EXPECT_EQ(each, expected);
        }
    }
}

} // namespace
