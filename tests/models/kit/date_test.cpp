#include "models/kit/scoring.h"

#include <MCVeltrane_900/ScoreDictVar.h>

#include <gtest/gtest.h>

using namespace veltrane::tests;

namespace {

const std::string kDates = R"(<PMML version='4.3'><DataDictionary>
<DataField name='due' optype='categorical' dataType='date'/>
<DataField name='from' optype='continuous' dataType='date'/>
</DataDictionary><RegressionModel functionName='classification' normalizationMethod='logit'>
<MiningSchema><MiningField name='due' usageType='target'/>
 <MiningField name='from' missingValueReplacement='1970-01-11'/></MiningSchema>
<Output><OutputField name='best'/><OutputField name='shown' feature='predictedDisplayValue'/></Output>
<RegressionTable targetCategory='2020-01-01' intercept='-10'><NumericPredictor name='from' coefficient='1'/></RegressionTable>
<RegressionTable targetCategory='2021-06-30' intercept='0'/>
</RegressionModel></PMML>)";

TEST(Dates, CanBePredictorsAndCategories) {
    Scored scored(kDates);
    ASSERT_TRUE(scored.Score({{"from", "1970-01-21"}}).IsOK());
    EXPECT_EQ(scored.Number(), 18262);
    EXPECT_EQ(scored.Number("best"), 18262);
    ASSERT_TRUE(scored.Score({{"from", "1970-01-02"}}).IsOK());
    EXPECT_EQ(scored.Number(), 18808);
    EXPECT_EQ(scored.Number("best"), 18808);
}

TEST(Dates, CanBeReplacements) {
    Scored scored(kDates);
    ASSERT_TRUE(scored.Score({}).IsOK());
    EXPECT_EQ(scored.Result().GetResultConfidence(), 0.5);
}

} // namespace
