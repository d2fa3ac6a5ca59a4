// What scorecards make of cases where the standard leaves room, and what hosts get to know.
#include "models/kit/scoring.h"
#include "models/scorecard/small_card.h"

#include <MCVeltrane_900/ScoreModel.h>

#include <gtest/gtest.h>

#include <sstream>

using namespace veltrane::tests;

namespace {

TEST(Scorecard, AddsUpThePoints) {
    Scored scored(kSmallCard);
    EXPECT_TRUE(scored.Score({{"x", "1"}, {"c", "u"}}).IsOK());
    EXPECT_EQ(scored.Number(), 2 + 10 + 3);
    EXPECT_TRUE(scored.Score({{"x", "1.5"}}).IsOK());
    EXPECT_EQ(scored.Number(), 2 + 2.25 + 4);
}

TEST(Scorecard, StartsFromNothingByDefault) {
    Scored scored(Replaced(kSmallCard, " initialScore='2'", ""));
    scored.Score({{"x", "1"}, {"c", "u"}});
    EXPECT_EQ(scored.Number(), 13);
}

TEST(Scorecard, TakesTheExpressionBeforePointsBesideIt) {
    Scored scored(Replaced(kSmallCard, "<Attribute reasonCode='XX'>", "<Attribute reasonCode='XX' partialScore='70'>"));
    scored.Score({{"x", "2"}, {"c", "u"}});
    EXPECT_EQ(scored.Number(), 2 + 4 + 3);
}

TEST(Scorecard, RanksReasonsByWhatLacksToTheBaseline) {
    Scored scored(kSmallCard);
    scored.Score({{"x", "1"}, {"c", "u"}}); // 2 below, 2 below: in the order of the document
    EXPECT_EQ(scored.Text("first"), "X");
    EXPECT_EQ(scored.Text("second"), "C");
    EXPECT_EQ(scored.Text("third"), "");
    scored.Score({{"x", "3.3"}, {"c", "u"}}); // 1.11 below, 2 below
    EXPECT_EQ(scored.Text("first"), "C");
    EXPECT_EQ(scored.Text("second"), "XX");
}

TEST(Scorecard, FindsNoReasonInWhatIsOnTheOtherSideOfTheBaseline) {
    Scored scored(kSmallCard);
    scored.Score({{"x", "4"}, {"c", "u"}}); // 4 above, 2 below
    EXPECT_EQ(scored.Text("first"), "C");
    EXPECT_EQ(scored.Text("second"), "");
    Scored above(Replaced(kSmallCard, "pointsBelow", "pointsAbove"));
    above.Score({{"x", "4"}, {"c", "u"}});
    EXPECT_EQ(above.Text("first"), "XX");
    EXPECT_EQ(above.Text("second"), "");
}

TEST(Scorecard, FindsAReasonInWhatIsOnTheBaseline) {
    Scored scored(Replaced(kSmallCard, "baselineScore='12'", "baselineScore='10'"));
    scored.Score({{"x", "1"}, {"c", "u"}});
    EXPECT_EQ(scored.Text("first"), "C");
    EXPECT_EQ(scored.Text("second"), "X");
}

/// The score is a number, but what lacks to the baseline is none.
TEST(Scorecard, PredictsNothingWhereDifferencesAreBeyondAllDoubles) {
    Scored scored(Replaced(kSmallCard, "baselineScore='12'", "baselineScore='-1.5e308'"));
    EXPECT_TRUE(scored.Score({{"x", "1e153"}, {"c", "u"}}).IsOK());
    EXPECT_EQ(scored.Text("first"), "C");
    EXPECT_EQ(scored.Score({{"x", "1e154"}, {"c", "u"}}).GetErrorCode(), kNoPrediction);
    EXPECT_EQ(scored.Text("first"), "");
    EXPECT_EQ(scored.Score({{"x", "1e155"}, {"c", "u"}}).GetErrorCode(), kNoPrediction);
}

TEST(Scorecard, TellsAReasonOnceWithWhatAllLackThatHaveIt) {
    std::string document = Replaced(kSmallCard, "<Characteristic name='colour' reasonCode='C'>",
                                    "<Characteristic name='extra' reasonCode='E' baselineScore='3'>"
                                    "<Attribute partialScore='0'><True/></Attribute></Characteristic>"
                                    "<Characteristic name='colour' reasonCode='X'>");
    Scored scored(document);
    scored.Score({{"x", "1"}, {"c", "u"}}); // 2 and 2 below together, before the 3 of the one between them
    EXPECT_EQ(scored.Text("first"), "X");
    EXPECT_EQ(scored.Text("second"), "E");
    EXPECT_EQ(scored.Text("third"), "");
    scored.Score({{"x", "4"}, {"c", "u"}}); // another attribute, whose own code lies above
    EXPECT_EQ(scored.Text("first"), "E");
    EXPECT_EQ(scored.Text("second"), "X");
}

TEST(Scorecard, TellsNoReasonsUnlessItUsesThem) {
    std::string document = Replaced(kSmallCard, "useReasonCodes='true'", "useReasonCodes='false'");
    document = Replaced(Replaced(document, " baselineScore='5'", ""), " reasonCode='C'", "");
    Scored scored(document);
    EXPECT_TRUE(scored.Score({{"x", "1"}, {"c", "u"}}).IsOK());
    EXPECT_EQ(scored.Number(), 15);
    EXPECT_EQ(scored.Text("first"), "");
}

TEST(Scorecard, GivesNoScoreWhereNoAttributeHolds) {
    Scored scored(kSmallCard);
    const MCScore::MCStatus status = scored.Score({{"c", "u"}});
    EXPECT_EQ(status.GetErrorCode(), kNoPrediction);
    EXPECT_EQ(scored.Text("first"), "");
    Scored lacking(Replaced(kSmallCard, "operator='lessOrEqual' value='1'", "operator='lessThan' value='1'"));
    EXPECT_FALSE(lacking.Score({{"x", "1"}, {"c", "u"}}).IsOK());
}

TEST(Scorecard, GivesNoScoreWhereAnExpressionHasNoNumber) {
    Scored scored(Replaced(kSmallCard, "<Apply function='*'>", "<Apply function='/'>"));
    EXPECT_TRUE(scored.Score({{"x", "2"}, {"c", "u"}}).IsOK());
    EXPECT_EQ(scored.Number(), 2 + 1 + 3);
    Scored infinite(Replaced(kSmallCard, "<Apply function='*'>", "<Apply function='pow'>"));
    EXPECT_FALSE(infinite.Score({{"x", "1e9"}, {"c", "u"}}).IsOK());
    Scored missing(Replaced(kSmallCard, "<FieldRef field='x'/><FieldRef field='x'/>",
                            "<FieldRef field='x'/><NormDiscrete field='c' value='u'/>"));
    EXPECT_TRUE(missing.Score({{"x", "2"}, {"c", "u"}}).IsOK());
    EXPECT_FALSE(missing.Score({{"x", "2"}}).IsOK());
}

TEST(Scorecard, HoldsTheTargetsAdjustment) {
    Scored scored(Replaced(kSmallCard, " <Output>",
                           "<Targets><Target field='y' rescaleFactor='10' min='0' max='14'/></Targets><Output>"));
    scored.Score({{"x", "1"}, {"c", "u"}});
    EXPECT_EQ(scored.Number(), 140);
}

TEST(Scorecard, LooksBackInAnExpression) {
    Scored scored(Replaced(kSmallCard, "<Apply function='*'><FieldRef field='x'/><FieldRef field='x'/></Apply>",
                           "<Lag field='x'/>"));
    EXPECT_FALSE(scored.Score({{"x", "5"}, {"c", "u"}}).IsOK());
    EXPECT_TRUE(scored.Score({{"x", "6"}, {"c", "u"}}).IsOK());
    EXPECT_EQ(scored.Number(), 2 + 5 + 3);
}

TEST(Scorecard, ShowsItself) {
    const auto model = ReadModel(kSmallCard);
    std::ostringstream out;
    model->Display(out);
    EXPECT_EQ(out.str(), "Scorecard\nfunction: regression\ntarget: y\ninputs: x c\ninitial score: 2\n"
                         "characteristics: 2, attributes: 4\nreason codes: pointsBelow\n");
}

/// Expressions of attributes are computed by the card alone.
TEST(Scorecard, HasNoDerivedFieldsOfItsExpressions) {
    const auto model = ReadModel(kSmallCard);
    EXPECT_EQ(model->GetTransformationDictionary(), nullptr);
}

} // namespace
