// Cases with missing, invalid and outlying values in every field, and what is made of them.
#include "models/kit/scoring.h"
#include "models/kit/small_documents.h"

#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/ScoreDictVar.h>
#include <MCVeltrane_900/StringValue.h>

#include <gtest/gtest.h>

#include <cmath>

using namespace veltrane::tests;

namespace {

const Case kComplete = {{"x", "2"}, {"z", "3"}, {"c", "a"}};
constexpr double kCompleteAnswer = 1 + 3 * 4 + 4 + 5 * 6;

double AnswerOf(const std::string& document, const std::string& field, const std::string& text) {
    Scored scored(document);
    Case row = kComplete;
    row[field] = text;
    scored.Score(row);
    return scored.Number();
}

double Expected(double x) {
    return std::round(1 + 3 * x * x + 4 + 5 * x * 3);
}

TEST(Cases, ACompleteOneIsScored) {
    EXPECT_EQ(AnswerOf(kSmallRegression, "x", "2"), kCompleteAnswer);
}

TEST(Cases, AMissingNumberGivesTheDefault) {
    EXPECT_EQ(AnswerOf(kSmallRegression, "x", ""), -7);
    EXPECT_EQ(AnswerOf(kSmallRegression, "z", ""), -7);
}

TEST(Cases, AMissingCategoryAddsNothing) {
    EXPECT_EQ(AnswerOf(kSmallRegression, "c", ""), kCompleteAnswer - 4);
}

TEST(Cases, BlanksMakeAnotherCategory) {
    EXPECT_EQ(AnswerOf(kSmallRegression, "c", "   "), -7);
    EXPECT_EQ(AnswerOf(kSmallRegression, "c", "a  "), -7);
    EXPECT_EQ(AnswerOf(kSmallRegression, "c", " a"), -7);
}

TEST(Cases, AnInvalidValueIsRefusedAtFirst) {
    EXPECT_EQ(AnswerOf(kSmallRegression, "x", "100"), -7);
    EXPECT_EQ(AnswerOf(kSmallRegression, "x", "-0.5"), -7);
    EXPECT_EQ(AnswerOf(kSmallRegression, "c", "moon"), -7);
    EXPECT_EQ(AnswerOf(kSmallRegression, "x", "0"), Expected(0));
}

TEST(Cases, AnInvalidValueAsIsCounts) {
    EXPECT_EQ(AnswerOf(WithTreatment("invalidValueTreatment='asIs'"), "x", "100"), Expected(100));
}

TEST(Cases, AnInvalidValueAsMissingIsReplacedLikeAMissingOne) {
    const std::string document = WithTreatment("invalidValueTreatment='asMissing' missingValueReplacement='5'");
    EXPECT_EQ(AnswerOf(document, "x", "100"), Expected(5));
    EXPECT_EQ(AnswerOf(WithTreatment("invalidValueTreatment='asMissing'"), "x", "100"), -7);
}

TEST(Cases, AnInvalidValueCanHaveAReplacementOfItsOwn) {
    const std::string document =
        WithTreatment("invalidValueTreatment='asValue' invalidValueReplacement='6' missingValueReplacement='5'");
    EXPECT_EQ(AnswerOf(document, "x", "100"), Expected(6));
    EXPECT_EQ(AnswerOf(document, "x", ""), Expected(5));
}

TEST(Cases, AMissingValueCanBeRefused) {
    Scored scored(Replaced(kSmallRegression, "<MiningField name='c'/>",
                           "<MiningField name='c' missingValueTreatment='returnInvalid'/>"));
    scored.Score({{"x", "2"}, {"z", "3"}});
    EXPECT_EQ(scored.Number(), -7);
}

TEST(Cases, AMissingCategoryCanBeReplaced) {
    const std::string document =
        Replaced(kSmallRegression, "<MiningField name='c'/>", "<MiningField name='c' missingValueReplacement='a'/>");
    EXPECT_EQ(AnswerOf(document, "c", ""), kCompleteAnswer);
}

TEST(Cases, OutliersStayAsTheyAre) {
    EXPECT_EQ(AnswerOf(kSmallRegression, "x", "0.5"), Expected(0.5));
    EXPECT_EQ(AnswerOf(kSmallRegression, "x", "99"), Expected(99));
}

TEST(Cases, OutliersBecomeMissing) {
    const std::string document = WithTreatment("outliers='asMissingValues' lowValue='1' highValue='50'");
    EXPECT_EQ(AnswerOf(document, "x", "0.5"), -7);
    EXPECT_EQ(AnswerOf(document, "x", "51"), -7);
    EXPECT_EQ(AnswerOf(document, "x", "1"), Expected(1));
    EXPECT_EQ(AnswerOf(document, "x", "50"), Expected(50));
}

TEST(Cases, OutliersBecomeTheBounds) {
    const std::string document = WithTreatment("outliers='asExtremeValues' lowValue='1' highValue='50'");
    EXPECT_EQ(AnswerOf(document, "x", "0.5"), Expected(1));
    EXPECT_EQ(AnswerOf(document, "x", "51"), Expected(50));
}

TEST(Cases, ABoundOnOneSideIsEnough) {
    const std::string document = WithTreatment("outliers='asExtremeValues' highValue='50'");
    EXPECT_EQ(AnswerOf(document, "x", "0.5"), Expected(0.5));
    EXPECT_EQ(AnswerOf(document, "x", "51"), Expected(50));
}

TEST(Cases, AnInvalidValueAsIsIsStillAnOutlier) {
    const std::string document =
        WithTreatment("outliers='asExtremeValues' highValue='50' invalidValueTreatment='asIs'");
    EXPECT_EQ(AnswerOf(document, "x", "100"), Expected(50));
}

class OddValue : public testing::Test {
protected:
    /// Scores a case with an odd value for x.
    double Score(ScoreValue* x) {
        CaseRecord record;
        record.Add("x", x);
        record.Add("z", new NumericValue(3));
        record.Add("c", new StringValue("a"));
        fScored.Model().Score(&record, &fScored.Result());
        return fScored.Number();
    }
    Scored fScored{kSmallRegression};
};

TEST_F(OddValue, NoNumberIsMissing) {
    EXPECT_EQ(Score(new NumericValue(kNaN)), -7);
}

TEST_F(OddValue, TheMissingNumberIsMissing) {
    EXPECT_EQ(Score(new NumericValue()), -7);
}

TEST_F(OddValue, InfinityIsOutsideOfTheInterval) {
    EXPECT_EQ(Score(new NumericValue(kInfinity)), -7);
}

TEST_F(OddValue, ATextInPlaceOfANumberIsReadAsOne) {
    EXPECT_EQ(Score(new StringValue("2")), kCompleteAnswer);
    EXPECT_EQ(Score(new StringValue("two")), -7);
}

TEST(OddValueOfText, ANumberInPlaceOfATextIsInvalid) {
    Scored scored(kSmallRegression);
    CaseRecord record;
    record.Add("x", new NumericValue(2));
    record.Add("z", new NumericValue(3));
    record.Add("c", new NumericValue(1));
    scored.Model().Score(&record, &scored.Result());
    EXPECT_EQ(scored.Number(), -7);
}

TEST(OddValueOfText, AValueOfAnotherKindCanBeMissing) {
    Scored scored(Replaced(kSmallRegression, "<MiningField name='c'/>",
                           "<MiningField name='c' invalidValueTreatment='asMissing'/>"));
    CaseRecord record;
    record.Add("x", new NumericValue(2));
    record.Add("z", new NumericValue(3));
    record.Add("c", new NumericValue(1));
    scored.Model().Score(&record, &scored.Result());
    EXPECT_EQ(scored.Number(), kCompleteAnswer - 4);
}

TEST(OddRecord, WithoutAnyFieldIsACaseWithMissingValues) {
    Scored scored(kSmallRegression);
    const CaseRecord record;
    EXPECT_TRUE(scored.Model().Score(&record, &scored.Result()).IsOK());
    EXPECT_EQ(scored.Number(), -7);
}

TEST(OddRecord, NullIsNoCase) {
    Scored scored(kSmallRegression);
    EXPECT_EQ(scored.Model().Score(nullptr, &scored.Result()), MCScore::MCStatus(kNoPrediction, false));
    const CaseRecord record;
    EXPECT_EQ(scored.Model().Score(&record, nullptr), MCScore::MCStatus(kNoPrediction, false));
}

TEST(Record, ANewSizeMayHaveANewLayout) {
    Scored scored(kSmallRegression);
    ASSERT_TRUE(scored.Score(kComplete).IsOK());
    CaseRecord record;
    record.Add("c", new StringValue("a"));
    record.Add("z", new NumericValue(3));
    record.Add("x", new NumericValue(2));
    scored.Model().Score(&record, &scored.Result());
    EXPECT_EQ(scored.Number(), kCompleteAnswer);
}

TEST(Record, AFieldThatIsAddedLaterIsFound) {
    Scored scored(kSmallRegression);
    CaseRecord record;
    record.Add("x", new NumericValue(2));
    record.Add("c", new StringValue("a"));
    scored.Model().Score(&record, &scored.Result());
    EXPECT_EQ(scored.Number(), -7);
    record.Add("z", new NumericValue(3));
    scored.Model().Score(&record, &scored.Result());
    EXPECT_EQ(scored.Number(), kCompleteAnswer);
}

TEST(ListedValues, AContinuousFieldCanListThemBesideItsInterval) {
    const std::string document = Replaced(kSmallRegression, "rightMargin='100'/>",
                                          "rightMargin='100'/><Value value='200'/><Value value='7' "
                                          "property='invalid'/><Value value='8' property='missing'/>");
    EXPECT_EQ(AnswerOf(document, "x", "200"), 100000); // the bound of the target
    EXPECT_EQ(AnswerOf(document, "x", "201"), -7);
    EXPECT_EQ(AnswerOf(document, "x", "7"), -7);
    EXPECT_EQ(AnswerOf(document, "x", "8"), -7);
    EXPECT_EQ(AnswerOf(document, "x", "9"), Expected(9));
}

TEST(ListedValues, SeveralIntervalsAddUp) {
    const std::string document =
        Replaced(kSmallRegression, "rightMargin='100'/>",
                 "rightMargin='100'/><Interval closure='openClosed' leftMargin='200' rightMargin='300'/>");
    EXPECT_EQ(AnswerOf(document, "x", "200"), -7);
    EXPECT_EQ(AnswerOf(document, "x", "300"), 100000); // the target's bound
    EXPECT_EQ(AnswerOf(document, "x", "50"), Expected(50));
}

TEST(ListedValues, ATextCanBeInvalidWithoutAListOfValidOnes) {
    const std::string document =
        Replaced(kSmallRegression, "<Value value='a'/><Value value='b'/>", "<Value value='a' property='invalid'/>");
    EXPECT_EQ(AnswerOf(document, "c", "a"), -7);
    EXPECT_EQ(AnswerOf(document, "c", "moon"), kCompleteAnswer - 4);
}

TEST(ListedValues, ATextCanBeMissing) {
    const std::string document =
        Replaced(kSmallRegression, "<Value value='b'/>", "<Value value='b'/><Value value='none' property='missing'/>");
    EXPECT_EQ(AnswerOf(document, "c", "none"), kCompleteAnswer - 4);
}

TEST(ListedValues, TheEmptyTextCanBeListed) {
    const std::string document = Replaced(Replaced(kSmallRegression, "<Value value='a'/>", "<Value value=''/>"),
                                          "value='a' coefficient", "value='' coefficient");
    Scored scored(document);
    CaseRecord record;
    record.Add("x", new NumericValue(2));
    record.Add("z", new NumericValue(3));
    record.Add("c", new StringValue(""));
    scored.Model().Score(&record, &scored.Result());
    EXPECT_EQ(scored.Number(), kCompleteAnswer);
}

/// Of a class that the library doesn't know, so that it is asked value by value.
struct HostRecord : MCVeltrane_900::CaseRecord {
    explicit HostRecord(const CaseRecord& other) : CaseRecord(other) {}
};

TEST(Cases, OfAHostsOwnRecordAreTheSame) {
    Scored scored(kSmallRegression);
    for (const char* const x : {"2", "", "100", "-0.5"}) {
        for (const char* const c : {"a", "b", "", "moon"}) {
            const std::unique_ptr<MCVeltrane_900::CaseRecord> record =
                MakeRecord(scored.Model(), {{"x", x}, {"z", "3"}, {"c", c}});
            const HostRecord host(*record);
            const MCScore::MCStatus status = scored.Model().Score(record.get(), &scored.Result());
            const double answer = scored.Number();
            EXPECT_EQ(scored.Model().Score(&host, &scored.Result()).GetErrorCode(), status.GetErrorCode());
            EXPECT_EQ(scored.Number(), answer) << x << ", " << c;
        }
    }
}

} // namespace
