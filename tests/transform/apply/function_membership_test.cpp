#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/StringValue.h>
#include <MCVeltrane_900/TransformationDictionary.h>
#include <MCVeltrane_900/ValueLbl.h>

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

using namespace MCVeltrane_900;
using Functions = TransformationDictionary;

namespace {

using Values = std::vector<ScoreValue*>;

/// Counts how often one of its kind is destroyed.
class CountedValue : public NumericValue {
public:
    CountedValue(double number, int& count) : NumericValue(number), fCount(count) {}
    ~CountedValue() override { ++fCount; }

private:
    int& fCount;
};

TEST(Equal, TwoEqualNumbers) {
    Values values{new NumericValue(1.0), new NumericValue(1.0 + 1e-15)};
    EXPECT_EQ(Functions::equal(values), 1.0);
    EXPECT_TRUE(values.empty());
}

TEST(Equal, TextsWithTrailingBlanks) {
    Values values{new StringValue("a"), new StringValue("a  ")};
    EXPECT_EQ(Functions::equal(values), 1.0);
}

TEST(Equal, DeletesTheEntries) {
    int destroyed = 0;
    Values values{new CountedValue(1.0, destroyed), new CountedValue(2.0, destroyed)};
    EXPECT_EQ(Functions::equal(values), 0.0);
    EXPECT_EQ(destroyed, 2);
    EXPECT_TRUE(values.empty());
}

TEST(KeptEqual, TextAndNumberAreUnequalAndStayWithTheCaller) {
    const std::unique_ptr<ScoreValue> text(new StringValue("1"));
    int destroyed = 0;
    auto* number = new CountedValue(1.0, destroyed);
    Values values{text.get(), number};
    EXPECT_EQ(Functions::equal(values), 0.0);
    EXPECT_EQ(destroyed, 0);
    EXPECT_EQ(Functions::notEqual(values), 1.0);
    EXPECT_EQ(destroyed, 0);
    delete number;
}

TEST(Equal, WrongCount) {
    Values one{new NumericValue(1.0)};
    EXPECT_EQ(Functions::equal(one), 0.0);
    Values three{new NumericValue(1.0), new NumericValue(1.0), new NumericValue(1.0)};
    EXPECT_EQ(Functions::notEqual(three), 1.0);
    EXPECT_TRUE(three.empty());
}

TEST(NotEqual, IsTheReverse) {
    Values same{new NumericValue(1.0), new NumericValue(1.0)};
    EXPECT_EQ(Functions::notEqual(same), 0.0);
    Values different{new NumericValue(1.0), new NumericValue(2.0)};
    EXPECT_EQ(Functions::notEqual(different), 1.0);
}

TEST(IsIn, FindsAnyEntry) {
    int destroyed = 0;
    Values values{new CountedValue(1.0, destroyed), new CountedValue(2.0, destroyed)};
    EXPECT_EQ(Functions::isIn(values, new CountedValue(2.0, destroyed)), 1.0);
    EXPECT_EQ(destroyed, 3);
    EXPECT_TRUE(values.empty());
}

TEST(IsIn, NullTestIsInNothing) {
    Values values{new NumericValue(1.0)};
    EXPECT_EQ(Functions::isIn(values, nullptr), 0.0);
    Values others{new NumericValue(1.0)};
    EXPECT_EQ(Functions::isNotIn(others, nullptr), 1.0);
}

TEST(IsNotIn, IsTheReverse) {
    Values with{new StringValue("b"), new StringValue("a ")};
    EXPECT_EQ(Functions::isNotIn(with, new StringValue("a")), 0.0);
    Values without{new StringValue("b")};
    EXPECT_EQ(Functions::isNotIn(without, new StringValue("a")), 1.0);
}

class Imputation : public testing::Test {
protected:
    void SetUp() override {
        for (const char* text : {"low", "high"}) {
            owned.push_back(std::make_unique<ValueLbl>());
            owned.back()->SetValueLabel(new StringValue(text), text);
            labels.push_back(owned.back().get());
        }
    }

    std::string Nearest(double target, const std::vector<double>& means, const std::vector<double>& variances) {
        return Functions::ImputeCatFieldMissingAgainstConTargetHandle(target, labels, means, variances)->GetString();
    }

    std::vector<std::unique_ptr<ValueLbl>> owned;
    std::vector<ScoreValueLabel*> labels;
};

TEST_F(Imputation, TakesTheNearestInStandardDeviations) {
    EXPECT_EQ(Nearest(6.0, {0.0, 10.0}, {1.0, 1.0}), "high");
    EXPECT_EQ(Nearest(6.0, {0.0, 10.0}, {100.0, 1.0}), "low");
}

TEST_F(Imputation, TakesTheFirstOnATie) {
    EXPECT_EQ(Nearest(5.0, {0.0, 10.0}, {1.0, 1.0}), "low");
}
TEST_F(Imputation, TakesTheFirstWithoutMeans) {
    EXPECT_EQ(Nearest(5.0, {}, {}), "low");
}

TEST_F(Imputation, FewerLabelsThanMeansIsOutOfRange) {
    try {
        Nearest(100.0, {0.0, 1.0, 100.0}, {1.0, 1.0, 1.0});
        FAIL() << "nothing was thrown";
    } catch (const std::out_of_range& failure) {
        EXPECT_STREQ(failure.what(), "invalid vector<T> subscript");
    }
}

} // namespace
