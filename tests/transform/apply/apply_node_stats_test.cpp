#include <MCVeltrane_900/ApplyNodeStats.h>
#include <MCVeltrane_900/DictVar.h>
#include <MCVeltrane_900/NumericValue.h>

#include <gtest/gtest.h>

#include <type_traits>

using namespace MCVeltrane_900;

static_assert(!std::is_polymorphic_v<ApplyNodeStats>);

namespace {

class NodeStats : public ::testing::Test {
protected:
    /// Stats with every field set.
    ApplyNodeStats Filled() {
        ApplyNodeStats stats;
        stats.SetNodeID("17");
        stats.SetValue(&value);
        stats.SetTransformFunction(TransformationDictionary::TF_SUM);
        stats.SetParameterName("age");
        stats.SetVariable(&variable);
        stats.SetVarIndex(4);
        stats.SetConstNode(true);
        stats.AddArray({1.0, 2.0});
        stats.SetRecodeMissValueTo(&missing);
        stats.SetDefaultValue(&defaultValue);
        stats.SetInvalidValueTreatmentMethod(ApplyNodeStats::IV_AS_MISSING);
        stats.SetFieldrefRecodeMissValueTo(&fieldMissing);
        return stats;
    }

    void ExpectFilled(const ApplyNodeStats& stats) {
        EXPECT_EQ(stats.GetNodeID(), "17");
        EXPECT_EQ(stats.GetValue(), &value);
        EXPECT_EQ(stats.GetTransformFunction(), TransformationDictionary::TF_SUM);
        EXPECT_EQ(stats.GetParameterName(), "age");
        EXPECT_EQ(stats.GetVariable(), &variable);
        EXPECT_EQ(stats.GetVarIndex(), 4);
        EXPECT_TRUE(stats.IsConstNode());
        ASSERT_EQ(stats.GetNumberOfArray(), 1);
        EXPECT_EQ(stats.GetArray(0), (std::vector<double>{1.0, 2.0}));
        EXPECT_EQ(stats.GetRecodeMissValueRep(), &missing);
        EXPECT_EQ(stats.GetDefaultValue(), &defaultValue);
        EXPECT_EQ(stats.GetInvalidValueTreatmentMethod(), 2);
        EXPECT_EQ(stats.GetFieldrefRecodeMissValueRep(), &fieldMissing);
    }

    NumericValue value{1.0}, missing{2.0}, defaultValue{3.0}, fieldMissing{4.0};
    DictVar variable{"age", ScoreDictVar::kNUMERIC_VAR};
};

} // namespace

TEST_F(NodeStats, Defaults) {
    const ApplyNodeStats stats;
    EXPECT_EQ(stats.GetNodeID(), "");
    EXPECT_EQ(stats.GetValue(), nullptr);
    EXPECT_EQ(stats.GetTransformFunction(), 79);
    EXPECT_EQ(stats.GetParameterName(), "");
    EXPECT_EQ(stats.GetVariable(), nullptr);
    EXPECT_EQ(stats.GetVarIndex(), -1);
    EXPECT_FALSE(stats.IsConstNode());
    EXPECT_EQ(stats.GetNumberOfArray(), 0);
    EXPECT_EQ(stats.GetRecodeMissValueRep(), nullptr);
    EXPECT_EQ(stats.GetDefaultValue(), nullptr);
    EXPECT_EQ(stats.GetInvalidValueTreatmentMethod(), 3);
    EXPECT_EQ(stats.GetFieldrefRecodeMissValueRep(), nullptr);
}

TEST_F(NodeStats, TreatmentMethodNumbers) {
    EXPECT_EQ(ApplyNodeStats::IV_RETURN_INVALID, 0);
    EXPECT_EQ(ApplyNodeStats::IV_AS_IS, 1);
    EXPECT_EQ(ApplyNodeStats::IV_AS_MISSING, 2);
    EXPECT_EQ(ApplyNodeStats::IV_NOT_STATED, 3);
}

TEST_F(NodeStats, AccessorsReadBackWhatWasSet) {
    ExpectFilled(Filled());
}

TEST_F(NodeStats, ACopySharesThePointersAndOwnsTheArrays) {
    ApplyNodeStats original = Filled();
    const ApplyNodeStats copy(original);
    original.ClearArray();
    ExpectFilled(copy);
    EXPECT_EQ(original.GetNumberOfArray(), 0);
}

TEST_F(NodeStats, AssignmentCopiesEveryField) {
    ApplyNodeStats target;
    target.AddArray({9.0});
    target.AddArray({8.0});
    target = Filled();
    ExpectFilled(target);
}

TEST_F(NodeStats, AssignmentToItselfChangesNothing) {
    ApplyNodeStats stats = Filled();
    const ApplyNodeStats& same = stats;
    stats = same;
    ExpectFilled(stats);
}

TEST_F(NodeStats, ArraysAreAppendedAndCleared) {
    ApplyNodeStats stats;
    std::vector<double> array{1.0};
    stats.AddArray(array);
    array[0] = 5.0;
    stats.AddArray(array);
    ASSERT_EQ(stats.GetNumberOfArray(), 2);
    EXPECT_EQ(stats.GetArray(0)[0], 1.0);
    EXPECT_EQ(stats.GetArray(1)[0], 5.0);
    stats.ClearArray();
    EXPECT_EQ(stats.GetNumberOfArray(), 0);
}
