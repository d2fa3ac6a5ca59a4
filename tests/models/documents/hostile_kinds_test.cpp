// Scorecards, rules and tables of sizes that nobody writes by hand.
#include "models/baseline/small_baseline.h"
#include "models/kit/scoring.h"
#include "models/rules/small_rules.h"
#include "models/scorecard/small_card.h"
#include "support/faults/failure.h"

#include <gtest/gtest.h>

#include <string>

using namespace veltrane::tests;

namespace {

std::string Repeated(int count, const std::string& text) {
    std::string repeated;
    repeated.reserve(static_cast<std::size_t>(count) * text.size());
    for (int i = 0; i < count; ++i) {
        repeated += text;
    }
    return repeated;
}

TEST(HostileRules, NestAsDeepAsADocumentMay) {
    constexpr int kDepth = 1000;
    const std::string inner = "<SimpleRule id='deep' score='b'><True/></SimpleRule>";
    Scored scored(
        Replaced(kSmallRules, "<CompoundRule>\n",
                 Repeated(kDepth, "<CompoundRule><SimplePredicate field='x' operator='lessThan' value='9'/>") + inner +
                     Repeated(kDepth, "</CompoundRule>") + "<CompoundRule>\n"));
    EXPECT_TRUE(scored.Score({{"x", "8"}}).IsOK());
    EXPECT_EQ(scored.Text("id"), "deep");
    EXPECT_EQ(scored.Text("rule"), Repeated(kDepth, "x < 9 and ") + "true -> b");
    scored.Score({{"x", "9"}});
    EXPECT_EQ(scored.Text(), "c");
}

TEST(HostileRules, AreManyAndAllHold) {
    constexpr int kMany = 50000;
    const std::string many = Repeated(kMany, "<SimpleRule score='b' weight='0.5'><True/></SimpleRule>");
    for (const char* criterion : {"firstHit", "weightedMax", "weightedSum"}) {
        Scored scored(
            Replaced(Replaced(kSmallRules, "firstHit", criterion), "<CompoundRule>\n", many + "<CompoundRule>\n"));
        EXPECT_TRUE(scored.Score({{"x", "8"}}).IsOK());
        EXPECT_EQ(scored.Text("id"), "2") << criterion;
        scored.Score({{"x", "0"}});
        EXPECT_EQ(scored.Text(), std::string(criterion) == "weightedSum" ? "b" : "a");
    }
}

TEST(HostileScorecard, HasManyCharacteristicsWithAReasonEach) {
    constexpr int kMany = 20000;
    std::string many;
    for (int i = 0; i < kMany; ++i) {
        many += "<Characteristic reasonCode='R" + std::to_string(i) + "'><Attribute partialScore='" +
                std::to_string(-i) + "'><True/></Attribute></Characteristic>";
    }
    Scored scored(Replaced(kSmallCard, " <Characteristics>", " <Characteristics>" + many));
    EXPECT_TRUE(scored.Score({{"x", "1"}, {"c", "u"}}).IsOK());
    EXPECT_EQ(scored.Text("first"), "R" + std::to_string(kMany - 1));
    EXPECT_EQ(scored.Text("third"), "R" + std::to_string(kMany - 3));
    EXPECT_EQ(scored.Number(), 15 - kMany * (kMany - 1.0) / 2);
}

TEST(HostileBaseline, HasATableOfManyFields) {
    constexpr int kDepth = 500;
    std::string fields;
    std::string schema;
    std::string open;
    for (int i = 0; i < kDepth; ++i) {
        const std::string name = "'f" + std::to_string(i) + "'";
        fields += "<DataField name=" + name + " optype='categorical' dataType='string'/>";
        schema += "<MiningField name=" + name + " missingValueReplacement='a'/>";
        open += "<FieldValue field=" + name + " value='a'>";
    }
    std::string document = Replaced(kSmallTable, "</DataDictionary>", fields + "</DataDictionary>");
    document = Replaced(document, "</MiningSchema>", schema + "</MiningSchema>");
    const std::string first =
        "<FieldValue field='c' value='u'><FieldValueCount field='d' value='a' count='4'/></FieldValue>";
    const std::string second =
        "<FieldValue field='c' value='v'><FieldValueCount field='d' value='a' count='3'/></FieldValue>";
    Scored scored(Replaced(document, first + second, open + first + second + Repeated(kDepth, "</FieldValue>")));
    EXPECT_TRUE(scored.Score({{"c", "u"}, {"d", "a"}}).IsOK());
    EXPECT_NEAR(scored.Number(), 0.8, 1e-15);
}

TEST(HostileBaseline, GrowsWithItsValuesAlone) {
    Scored scored(kSmallTable);
    for (int i = 0; i < 5000; ++i) {
        scored.Score({{"c", "u"}, {"d", "other" + std::to_string(i)}});
    }
    scored.Score({{"c", "u"}, {"d", "a"}});
    EXPECT_NEAR(scored.Number(), 4.0 / (5 * 5000), 1e-9); // all others are one value
}

} // namespace
