#include "fields.h"
#include "support/numbers.h"

#include <cmath>
#include <utility>
#include <vector>

using namespace veltrane::tests;

namespace {

using Points = std::vector<std::pair<double, double>>;

/// A normalisation over points, with the segments that a document would give it.
class Norm : public TransformVar {
public:
    explicit Norm(const Points& points, const char* outliers = "") : TransformVar("n", kNumeric) {
        AddFieldNameAndTransExpression("x", TD::TE_NORM_CONTINUOUS);
        for (const auto& [orig, norm] : points) {
            AddLinearNorm(orig, norm);
        }
        for (std::size_t i = 0; i + 1 < points.size(); ++i) {
            const auto [a, fa] = points[i];
            const auto [b, fb] = points[i + 1];
            AddNormInfo(a == b ? 1.0 : (fb - fa) / (b - a), a == b ? 0.0 : (b * fa - a * fb) / (b - a));
        }
        SetOutlierTreatMent(outliers);
    }
};

/// (0, 0), (10, 100), (20, 120): slopes 10 and 2.
const Points kTwoSegments{{0, 0}, {10, 100}, {20, 120}};

/// Segments that give their own number, so that the one taken shows: slope 0, intercept the number.
class Numbered : public TransformVar {
public:
    Numbered(const std::vector<double>& points, int segments) : TransformVar("n", kNumeric) {
        for (const double point : points) {
            AddLinearNorm(point, -point);
        }
        for (int i = 0; i < segments; ++i) {
            AddNormInfo(0.0, i);
        }
    }
};

} // namespace

TEST(NormContinuous, InterpolatesBySegments) {
    Norm field(kTwoSegments);
    EXPECT_EQ(field.GetNormValue(5), 50);
    EXPECT_EQ(field.GetNormValue(15), 110);
}

TEST(NormContinuous, TheEndsAreInRange) {
    for (const char* outliers : {"asIs", "asMissingValues", "asExtremeValues"}) {
        Numbered field({1, 2, 3}, 2);
        field.SetOutlierTreatMent(outliers);
        EXPECT_EQ(field.GetNormValue(1), 0) << outliers;
        EXPECT_EQ(field.GetNormValue(3), 1) << outliers;
    }
}

TEST(NormContinuous, AnInnerPointBelongsToTheLowerSegment) {
    Numbered field({1, 2, 3, 4}, 3);
    EXPECT_EQ(field.GetNormValue(2), 0);
    EXPECT_EQ(field.GetNormValue(3), 1);
    EXPECT_EQ(field.GetNormValue(std::nextafter(2.0, 3.0)), 1);
}

TEST(NormContinuous, OutliersAsIsAreExtrapolated) {
    Norm field(kTwoSegments, "asIs");
    EXPECT_EQ(field.GetNormValue(-1), -10);
    EXPECT_EQ(field.GetNormValue(30), 140);
}

TEST(KeptNormContinuous, OutliersAsMissingValuesAreExtrapolatedToo) {
    Norm field(kTwoSegments, "asMissingValues");
    EXPECT_EQ(field.GetNormValue(30), 140);
    field.SetRecodeMissValueTo(Num(-9));
    EXPECT_EQ(field.GetNormValue(30), 140);
    EXPECT_EQ(field.GetNormValue(-1), -10);
}

TEST(NormContinuous, OutliersAsExtremeValuesTakeTheEndsOfTheList) {
    Norm field(kTwoSegments, "asExtremeValues");
    EXPECT_EQ(field.GetNormValue(-1), 0);
    EXPECT_EQ(field.GetNormValue(30), 120);
}

TEST(KeptNormContinuous, ExtremeValuesGoByPlaceInTheList) {
    Norm field({{20, 120}, {10, 100}, {0, 0}}, "asExtremeValues");
    EXPECT_EQ(field.GetNormValue(30), 0);
    EXPECT_EQ(field.GetNormValue(-1), 120);
}

TEST(NormContinuous, PointsThatDescendHaveNoSegments) {
    Numbered field({3, 2, 1}, 2);
    EXPECT_EQ(field.GetNormValue(1.5), 1.5);
    EXPECT_EQ(field.GetNormValue(2), 2);
}

TEST(NormContinuous, PointsOutOfOrderAreWalkedFromTheFirst) {
    Numbered field({5, 1, 3, 2, 4}, 4);
    EXPECT_EQ(field.GetNormValue(2.5), 1);
    EXPECT_EQ(field.GetNormValue(3.5), 3);
    EXPECT_EQ(field.GetNormValue(4.5), 4.5);
    EXPECT_EQ(field.GetNormValue(6), 3);
    EXPECT_EQ(field.GetNormValue(0), 0);
}

TEST(NormContinuous, ARangeOfZeroWidthTakesTheFirstSegmentAndTarget) {
    Numbered field({5, 5, 5}, 2);
    EXPECT_EQ(field.GetNormValue(5), 0);
    EXPECT_EQ(field.GetNormValue(9), 0);
    EXPECT_EQ(field.GetNormValue(1), 0);
    Norm extreme({{5, 1}, {5, 2}}, "asExtremeValues");
    EXPECT_EQ(extreme.GetNormValue(9), 1);
    EXPECT_EQ(extreme.GetNormValue(1), 1);
}

TEST(NormContinuous, ATieOfTheDistancesStaysAtTheFirst) {
    const double farAway = 1e300; // so far that both distances are the same number
    Numbered field({1, 2, 3}, 2);
    EXPECT_EQ(field.GetNormValue(farAway), 0);
    Norm extreme({{1, 7}, {3, 8}}, "asExtremeValues");
    EXPECT_EQ(extreme.GetNormValue(farAway), 7);
    EXPECT_EQ(extreme.GetNormValue(NumericValue::GetInfinity()), 7);
}

TEST(NormContinuous, OnePointAndOneSegmentTakesEveryNumber) {
    TransformVar field("n", kNumeric);
    field.AddLinearNorm(5, 1);
    field.AddNormInfo(3, 2);
    field.SetOutlierTreatMent("asExtremeValues");
    EXPECT_EQ(field.GetNormValue(5), 17);
    EXPECT_EQ(field.GetNormValue(-100), -298);
    EXPECT_EQ(field.GetNormValue(100), 302);
}

TEST(NormContinuous, WithoutPointsOrSegmentsANumberStays) {
    TransformVar none("n", kNumeric);
    EXPECT_EQ(none.GetNormValue(4), 4);
    TransformVar noPoints("n", kNumeric);
    noPoints.AddNormInfo(2, 1);
    EXPECT_EQ(noPoints.GetNormValue(4), 4);
    Numbered noSegments({1, 2}, 0);
    EXPECT_EQ(noSegments.GetNormValue(1.5), 1.5);
    EXPECT_EQ(noSegments.GetNormValue(9), 9);
}

TEST(NormContinuous, TwoPointsAndOneSegmentTakeTheSegmentInAndOutOfRange) {
    Norm field({{0, 1}, {10, 21}});
    EXPECT_EQ(field.GetNormValue(0), 1);
    EXPECT_EQ(field.GetNormValue(4), 9);
    EXPECT_EQ(field.GetNormValue(-1), -1);
    EXPECT_EQ(field.GetNormValue(20), 41);
}

TEST(NormContinuous, MoreSegmentsThanPointsUseTheLastForOutliers) {
    Numbered field({1, 2}, 3);
    EXPECT_EQ(field.GetNormValue(1.5), 0);
    EXPECT_EQ(field.GetNormValue(5), 2);
}

TEST(NormContinuous, FewerSegmentsThanGapsLeaveTheOthersAsTheyAre) {
    Numbered field({1, 2, 3, 4}, 2);
    EXPECT_EQ(field.GetNormValue(2.5), 1);
    EXPECT_EQ(field.GetNormValue(3.5), 3.5);
}

TEST(NormContinuous, NaNIsInRangeAndStays) {
    Norm field(kTwoSegments, "asExtremeValues");
    EXPECT_TRUE(std::isnan(field.GetNormValue(std::nan(""))));
}

TEST(NormContinuous, OutlierTreatmentTexts) {
    const struct {
        const char* text;
        double at30; ///< 120 for the last target, 140 for the extrapolation
    } rows[] = {{"asExtremeValues", 120}, {"", 120}, {"ASIS", 120}, {"asIs", 140}, {"nonsense", 140},
                {"asMissingValues", 140}};
    Norm field(kTwoSegments);
    EXPECT_EQ(field.GetNormValue(30), 140);
    for (const auto& row : rows) {
        field.SetOutlierTreatMent(row.text);
        EXPECT_EQ(field.GetNormValue(30), row.at30) << row.text;
    }
}

TEST(NormContinuous, ManyPointsFindTheSegmentThatAWalkFinds) {
    std::vector<double> points;
    for (int i = 0; i < 200; ++i) {
        points.push_back(i / 2); // every point twice
    }
    Numbered field(points, 199);
    for (int i = 0; i <= 396; ++i) {
        const double x = i / 4.0;
        std::size_t walked = 0;
        while (!(points[walked] <= x && x <= points[walked + 1])) {
            ++walked;
        }
        EXPECT_EQ(field.GetNormValue(x), static_cast<double>(walked)) << x;
    }
}

namespace {
using NormContinuousField = DerivedFields;
}

TEST_F(NormContinuousField, NormalisesTheSource) {
    Input("x", 5.0);
    Norm field(kTwoSegments);
    EXPECT_EQ(Result(field), "number 50");
    record.SetValue("x", 20.0);
    EXPECT_EQ(Result(field), "number 120");
}

TEST_F(NormContinuousField, AMissingSourceGivesTheReplacementOrSysmis) {
    MakeMissing(Input("x", 5.0), 5.0);
    Norm field(kTwoSegments);
    EXPECT_EQ(Result(field), "number SYSMIS");
    field.SetRecodeMissValueTo(Num(0.25));
    EXPECT_EQ(Result(field), "number 0.25");
    record.SetValue("x", kMissing);
    EXPECT_EQ(Result(field), "number 0.25");
    record.Remove("x");
    EXPECT_EQ(Result(field), "number 0.25");
}

TEST_F(NormContinuousField, NeedsASourceVariable) {
    record.Add("x", Num(5));
    Norm field(kTwoSegments);
    field.SetRecodeMissValueTo(Num(0.25));
    EXPECT_EQ(Result(field), "number SYSMIS");
}

TEST_F(NormContinuousField, OnlyANumericFieldHasOne) {
    Input("x", 5.0);
    Norm field(kTwoSegments);
    field.SetVarType(kText);
    EXPECT_EQ(Result(field), "text ''");
    Norm date(kTwoSegments);
    date.SetVarType(kDateTime);
    EXPECT_EQ(Result(date), "kind 2 Undefined");
}

TEST_F(NormContinuousField, ATextSourceIsReadAsANumber) {
    Input("x", "5");
    Norm field(kTwoSegments);
    EXPECT_EQ(Result(field), "number 50");
}
