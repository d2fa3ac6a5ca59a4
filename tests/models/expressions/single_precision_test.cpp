// What becomes of a number that a derived field of the type float is made of.
#include "models/columns/model_rows.h"
#include "models/kit/scoring.h"

#include <gtest/gtest.h>

#include <random>

using namespace veltrane::tests;

namespace {

std::string DocumentOf(const std::string& expression, const std::string& type) {
    return "<PMML version='4.4'><DataDictionary><DataField name='y' optype='continuous' dataType='double'/>"
           "<DataField name='x' optype='continuous' dataType='double'/><DataField name='f' optype='continuous' "
           "dataType='float'/></DataDictionary><TransformationDictionary><DerivedField name='d' optype='continuous' "
           "dataType='" +
           type + "'>" + expression +
           "</DerivedField></TransformationDictionary><RegressionModel functionName='regression'><MiningSchema>"
           "<MiningField name='y' usageType='target'/><MiningField name='x'/><MiningField name='f'/></MiningSchema>"
           "<RegressionTable intercept='0'><NumericPredictor name='d' coefficient='1'/></RegressionTable>"
           "</RegressionModel></PMML>";
}

double ValueOf(const std::string& expression, const std::string& type, const std::string& x) {
    Scored scored(DocumentOf(expression, type));
    return scored.Score({{"x", x}, {"f", x}}).IsOK() ? scored.Number() : kMissing;
}

TEST(SinglePrecision, IsThatOfADerivedFieldOfTheTypeFloat) {
    const std::string x = "<FieldRef field='x'/>";
    EXPECT_EQ(ValueOf(x, "float", "0.1"), static_cast<double>(0.1F));
    EXPECT_EQ(ValueOf(x, "double", "0.1"), 0.1);
    EXPECT_EQ(ValueOf(x, "float", "16777217"), 16777216.0);
    EXPECT_EQ(ValueOf("<Apply function='+'>" + x + "<Constant>1</Constant></Apply>", "float", "0.1"),
              static_cast<double>(1.1F));
    EXPECT_EQ(ValueOf("<Constant dataType='double'>0.1</Constant>", "float", "0"), static_cast<double>(0.1F));
    EXPECT_EQ(ValueOf(x, "float", "1e300"), kMissing) << "infinite, which is no prediction";
    EXPECT_EQ(ValueOf(x, "float", ""), kMissing);
}

TEST(SinglePrecision, LeavesFloatsAsTheyAre) {
    EXPECT_EQ(ValueOf("<FieldRef field='f'/>", "float", "0.1"), 0.1);
    EXPECT_EQ(ValueOf("<Constant>0.1</Constant>", "float", "0"), 0.1);
}

TEST(SinglePrecision, IsTheSameInColumns) {
    for (const char* expression : {"<FieldRef field='x'/>", "<Apply function='exp'><FieldRef field='x'/></Apply>"}) {
        ModelRows rows(DocumentOf(expression, "float"));
        std::mt19937_64 random(1);
        rows.Fill(random, 500);
        const auto state = rows.Scorer().NewState();
        EXPECT_EQ(rows.InBlocks(*state, 128, 3, false), rows.CaseByCase());
    }
}

} // namespace
