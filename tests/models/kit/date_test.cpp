#include "models/columns/column_document.h"
#include "models/kit/scoring.h"

#include <MCVeltrane_900/CaseRecord.h>
#include <MCVeltrane_900/NumericValue.h>
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

std::string TimesOf(const std::string& type) {
    return "<PMML version='4.4'><DataDictionary><DataField name='e' optype='continuous' dataType='" + type +
           "'/></DataDictionary><TransformationDictionary><DerivedField name='time' optype='ordinal' dataType='time'>"
           "<FieldRef field='e'/></DerivedField><DerivedField name='passed' optype='continuous' dataType='integer'>"
           "<Apply function='dateSecondsSinceMidnight'><FieldRef field='e'/></Apply></DerivedField>"
           "<DerivedField name='shown' optype='categorical' dataType='string'><Apply function='concat'>"
           "<FieldRef field='time'/><Constant dataType='string'>!</Constant></Apply></DerivedField>"
           "</TransformationDictionary>";
}

std::string ModelOfTimes(const std::string& type) {
    return TimesOf(type) +
           "<RegressionModel functionName='regression'><MiningSchema><MiningField name='e'/></MiningSchema><Output>"
           "<OutputField name='text' feature='transformedValue' dataType='string'><FieldRef field='shown'/>"
           "</OutputField><OutputField name='seconds' feature='transformedValue' dataType='integer'>"
           "<FieldRef field='passed'/></OutputField></Output><RegressionTable intercept='1'/></RegressionModel></PMML>";
}

struct Seconds {
    const char* name;
    double count;
    const char* text; ///< empty for no time of a day
    double passed;
};

class SecondsAsTime : public testing::TestWithParam<Seconds> {};

TEST_P(SecondsAsTime, AreLessThanADay) {
    const auto& [name, count, text, passed] = GetParam();
    for (const char* type : {"timeSeconds", "time"}) {
        Scored scored(ModelOfTimes(type));
        MCVeltrane_900::CaseRecord record;
        record.Add("e", new MCVeltrane_900::NumericValue(count));
        const bool isRefused = std::string(type) == "time" && *text == '\0';
        ASSERT_EQ(scored.Model().Score(&record, &scored.Result()).IsOK(), !isRefused) << type;
        EXPECT_EQ(scored.Text("text"), text) << type;
        EXPECT_EQ(scored.Number("seconds"), passed) << type;
    }
}

constexpr Seconds kSeconds[] = {
    {"Midnight", 0.0, "00:00:00!", 0.0},
    {"LastOfADay", 86399.0, "23:59:59!", 86399.0},
    {"Fraction", 86399.75, "23:59:59.75!", 86399.0},
    {"NextMidnight", 86400.0, "", kMissing},
    {"BelowZero", -1.0, "", kMissing},
    {"FarBeyond", 1e300, "", kMissing},
};
INSTANTIATE_TEST_SUITE_P(Dates, SecondsAsTime, testing::ValuesIn(kSeconds), NameOfRow());

TEST(SecondsAsTimes, AreTheSameInColumns) {
    Random random(20282);
    for (const char* type : {"timeSeconds", "time"}) {
        ColumnDocument document(TimesOf(type) + "</PMML>");
        document.Fill(random, 60);
        document.Check(7, 3, false);
    }
}

TEST(Dates, CanBeReplacements) {
    Scored scored(kDates);
    ASSERT_TRUE(scored.Score({}).IsOK());
    EXPECT_EQ(scored.Result().GetResultConfidence(), 0.5);
}

} // namespace
