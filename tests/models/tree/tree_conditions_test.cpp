// What each condition of a tree says of a case: every operator on every kind of field.
#include "models/kit/scoring.h"
#include "models/tree/small_tree.h"
#include "support/faults/failure.h"
#include "support/rows.h"

#include <gtest/gtest.h>

using namespace veltrane::tests;

namespace {

struct Row {
    const char* name;
    const char* predicate;
    Case holds;
    Case fails;
    Case unknown; ///< empty where the condition is always decided
};

const Row kRows[] = {
    {"True", "<True/>", {{"x", "1"}}, {}, {}},
    {"False", "<False/>", {}, {{"x", "1"}}, {}},
    {"NumberEqual",
     R"(<SimplePredicate field='x' operator='equal' value='1.5'/>)",
     {{"x", "1.5"}},
     {{"x", "1.25"}},
     {{"x", ""}}},
    {"NumberNotEqual",
     R"(<SimplePredicate field='x' operator='notEqual' value='1.5'/>)",
     {{"x", "1.25"}},
     {{"x", "1.5"}},
     {{"x", ""}}},
    {"NumberLess",
     R"(<SimplePredicate field='x' operator='lessThan' value='1.5'/>)",
     {{"x", "1.25"}},
     {{"x", "1.5"}},
     {{"x", ""}}},
    {"NumberLessOrEqual",
     R"(<SimplePredicate field='x' operator='lessOrEqual' value='1.5'/>)",
     {{"x", "1.5"}},
     {{"x", "1.75"}},
     {{"x", ""}}},
    {"NumberGreater",
     R"(<SimplePredicate field='x' operator='greaterThan' value='1.5'/>)",
     {{"x", "1.75"}},
     {{"x", "1.5"}},
     {{"x", ""}}},
    {"NumberGreaterOrEqual",
     R"(<SimplePredicate field='x' operator='greaterOrEqual' value=' 1.5 '/>)",
     {{"x", "1.5"}},
     {{"x", "1.25"}},
     {{"x", ""}}},
    {"NumberIsMissing", R"(<SimplePredicate field='x' operator='isMissing'/>)", {{"x", ""}}, {{"x", "1"}}, {}},
    {"NumberIsNotMissing", R"(<SimplePredicate field='x' operator='isNotMissing'/>)", {{"x", "1"}}, {{"x", ""}}, {}},
    {"CategoryEqual",
     R"(<SimplePredicate field='c' operator='equal' value='u'/>)",
     {{"c", "u"}},
     {{"c", "v"}},
     {{"c", ""}}},
    {"CategoryNotEqualHoldsForTheOthers",
     R"(<SimplePredicate field='c' operator='notEqual' value='u'/>)",
     {{"c", "v"}},
     {{"c", "u"}},
     {{"c", ""}}},
    {"CategoryNotEqualHoldsForUnlistedOnes",
     R"(<SimplePredicate field='c' operator='notEqual' value='u'/>)",
     {{"c", "other"}},
     {{"c", "u"}},
     {}},
    {"CategoryIsMissing", R"(<SimplePredicate field='c' operator='isMissing'/>)", {{"c", ""}}, {{"c", "u"}}, {}},
    {"CategoryIsNotMissing", R"(<SimplePredicate field='c' operator='isNotMissing'/>)", {{"c", "u"}}, {{"c", ""}}, {}},
    {"NumericCategoryEqual",
     R"(<SimplePredicate field='k' operator='equal' value='7'/>)",
     {{"k", "7"}},
     {{"k", "8"}},
     {{"k", ""}}},
    {"NumericCategoryLess",
     R"(<SimplePredicate field='k' operator='lessThan' value='7'/>)",
     {{"k", "6"}},
     {{"k", "7"}},
     {{"k", ""}}},
    {"BooleanEqual",
     R"(<SimplePredicate field='b' operator='equal' value='true'/>)",
     {{"b", "true"}},
     {{"b", "false"}},
     {{"b", ""}}},
    {"BooleanNotEqual",
     R"(<SimplePredicate field='b' operator='notEqual' value='true'/>)",
     {{"b", "false"}},
     {{"b", "true"}},
     {{"b", ""}}},
    {"BooleanLessThanAHalf",
     R"(<SimplePredicate field='b' operator='lessThan' value='0.5'/>)",
     {{"b", "false"}},
     {{"b", "true"}},
     {{"b", ""}}},
    {"BooleanLessOrEqualToAHalf",
     R"(<SimplePredicate field='b' operator='lessOrEqual' value='0.5'/>)",
     {{"b", "false"}},
     {{"b", "true"}},
     {{"b", ""}}},
    {"BooleanGreaterThanAHalf",
     R"(<SimplePredicate field='b' operator='greaterThan' value='0.5'/>)",
     {{"b", "true"}},
     {{"b", "false"}},
     {{"b", ""}}},
    {"BooleanGreaterOrEqualToAHalf",
     R"(<SimplePredicate field='b' operator='greaterOrEqual' value='0.5'/>)",
     {{"b", "true"}},
     {{"b", "false"}},
     {{"b", ""}}},
    {"BooleanLessThanTrue",
     R"(<SimplePredicate field='b' operator='lessThan' value='true'/>)",
     {{"b", "false"}},
     {{"b", "true"}},
     {{"b", ""}}},
    {"BooleanGreaterOrEqualToOne",
     R"(<SimplePredicate field='b' operator='greaterOrEqual' value='1'/>)",
     {{"b", "true"}},
     {{"b", "false"}},
     {}},
    {"BooleanLessOrEqualToTrueHoldsForBoth",
     R"(<SimplePredicate field='b' operator='lessOrEqual' value='TRUE'/>)",
     {{"b", "true"}},
     {},
     {{"b", ""}}},
    {"BooleanLessThanFalseHoldsForNone",
     R"(<SimplePredicate field='b' operator='lessThan' value='false'/>)",
     {},
     {{"b", "false"}},
     {{"b", ""}}},
    {"BooleanCopyLessThanAHalf",
     R"(<SimplePredicate field='same' operator='lessThan' value='0.5'/>)",
     {{"b", "false"}},
     {{"b", "true"}},
     {{"b", ""}}},
    {"DerivedBooleanLessThanAHalf",
     R"(<SimplePredicate field='big' operator='lessThan' value='0.5'/>)",
     {{"x", "10"}},
     {{"x", "11"}},
     {}},
    {"DateLess",
     R"(<SimplePredicate field='d' operator='lessThan' value='2024-02-29'/>)",
     {{"d", "2024-02-28"}},
     {{"d", "2024-02-29"}},
     {{"d", ""}}},
    {"DateEqual",
     R"(<SimplePredicate field='d' operator='equal' value='2024-02-29'/>)",
     {{"d", "2024-02-29"}},
     {{"d", "2024-03-01"}},
     {{"d", ""}}},
    {"OrderLess",
     R"(<SimplePredicate field='o' operator='lessThan' value='mid'/>)",
     {{"o", "low"}},
     {{"o", "mid"}},
     {{"o", ""}}},
    {"OrderLessOrEqual",
     R"(<SimplePredicate field='o' operator='lessOrEqual' value='mid'/>)",
     {{"o", "mid"}},
     {{"o", "high"}},
     {{"o", ""}}},
    {"OrderGreater",
     R"(<SimplePredicate field='o' operator='greaterThan' value='mid'/>)",
     {{"o", "high"}},
     {{"o", "mid"}},
     {{"o", ""}}},
    {"OrderGreaterOrEqual",
     R"(<SimplePredicate field='o' operator='greaterOrEqual' value='mid'/>)",
     {{"o", "mid"}},
     {{"o", "low"}},
     {{"o", ""}}},
    {"OrderEqual",
     R"(<SimplePredicate field='o' operator='equal' value='mid'/>)",
     {{"o", "mid"}},
     {{"o", "high"}},
     {{"o", ""}}},
    {"UnlistedHasNoPlaceBelow",
     R"(<SimplePredicate field='o' operator='greaterOrEqual' value='low'/>)",
     {{"o", "low"}},
     {{"o", "other"}},
     {}},
    {"UnlistedHasNoPlaceAbove",
     R"(<SimplePredicate field='o' operator='lessOrEqual' value='high'/>)",
     {{"o", "high"}},
     {{"o", "other"}},
     {}},
    {"NumericOrderIsThatOfTheList",
     R"(<SimplePredicate field='r' operator='lessThan' value='20'/>)",
     {{"r", "30"}},
     {{"r", "20"}},
     {{"r", ""}}},
    {"NumericOrderGreater",
     R"(<SimplePredicate field='r' operator='greaterThan' value='30'/>)",
     {{"r", "10"}},
     {{"r", "30"}},
     {{"r", ""}}},
    {"SetOfTexts",
     R"(<SimpleSetPredicate field='c' booleanOperator='isIn'><Array n='2' type='string'>u "w"</Array></SimpleSetPredicate>)",
     {{"c", "w"}},
     {{"c", "v"}},
     {{"c", ""}}},
    {"ComplementOfTexts",
     R"(<SimpleSetPredicate field='c' booleanOperator='isNotIn'><Array n='2' type='string'>u w</Array></SimpleSetPredicate>)",
     {{"c", "v"}},
     {{"c", "u"}},
     {{"c", ""}}},
    {"ComplementHoldsForUnlistedOnes",
     R"(<SimpleSetPredicate field='c' booleanOperator='isNotIn'><Array type='string'>u</Array></SimpleSetPredicate>)",
     {{"c", "other"}},
     {{"c", "u"}},
     {}},
    {"SetOfNumbers",
     R"(<SimpleSetPredicate field='x' booleanOperator='isIn'><Array n='3' type='real'>3 1.5 -2</Array></SimpleSetPredicate>)",
     {{"x", "-2"}},
     {{"x", "2"}},
     {{"x", ""}}},
    {"ComplementOfNumbers",
     R"(<SimpleSetPredicate field='k' booleanOperator='isNotIn'><Array n='3' type='int'>3 1 2</Array></SimpleSetPredicate>)",
     {{"k", "4"}},
     {{"k", "1"}},
     {{"k", ""}}},
    {"DerivedNumber",
     R"(<SimplePredicate field='half' operator='greaterOrEqual' value='3'/>)",
     {{"x", "6"}},
     {{"x", "5"}},
     {{"x", ""}}},
    {"DerivedText",
     R"(<SimplePredicate field='copy' operator='equal' value='v'/>)",
     {{"c", "v"}},
     {{"c", "u"}},
     {{"c", ""}}},
    {"DerivedBoolean",
     R"(<SimplePredicate field='big' operator='equal' value='true'/>)",
     {{"x", "11"}},
     {{"x", "10"}},
     {}},
    {"And",
     R"(<CompoundPredicate booleanOperator='and'><SimplePredicate field='x' operator='greaterThan' value='0'/><SimplePredicate field='c' operator='equal' value='u'/></CompoundPredicate>)",
     {{"x", "1"}, {"c", "u"}},
     {{"x", "-1"}, {"c", ""}},
     {{"x", "1"}, {"c", ""}}},
    {"Or",
     R"(<CompoundPredicate booleanOperator='or'><SimplePredicate field='x' operator='greaterThan' value='0'/><SimplePredicate field='c' operator='equal' value='u'/></CompoundPredicate>)",
     {{"x", ""}, {"c", "u"}},
     {{"x", "-1"}, {"c", "v"}},
     {{"x", ""}, {"c", "v"}}},
    {"Xor",
     R"(<CompoundPredicate booleanOperator='xor'><SimplePredicate field='x' operator='greaterThan' value='0'/><SimplePredicate field='c' operator='equal' value='u'/><True/></CompoundPredicate>)",
     {{"x", "1"}, {"c", "u"}},
     {{"x", "1"}, {"c", "v"}},
     {{"x", "1"}, {"c", ""}}},
    {"SurrogateStandsInForAMissingValue",
     R"(<CompoundPredicate booleanOperator='surrogate'><SimplePredicate field='x' operator='greaterThan' value='0'/><SimplePredicate field='c' operator='equal' value='u'/></CompoundPredicate>)",
     {{"x", ""}, {"c", "u"}},
     {{"x", ""}, {"c", "v"}},
     {{"x", ""}, {"c", ""}}},
    {"SurrogateIsNotAskedAfterAnAnswer",
     R"(<CompoundPredicate booleanOperator='surrogate'><SimplePredicate field='x' operator='greaterThan' value='0'/><SimplePredicate field='c' operator='equal' value='u'/></CompoundPredicate>)",
     {{"x", "1"}, {"c", "v"}},
     {{"x", "-1"}, {"c", "u"}},
     {}},
    {"Nested",
     R"(<CompoundPredicate booleanOperator='and'><CompoundPredicate booleanOperator='or'><False/><SimplePredicate field='k' operator='equal' value='1'/></CompoundPredicate><CompoundPredicate booleanOperator='surrogate'><SimplePredicate field='x' operator='equal' value='1'/><True/></CompoundPredicate></CompoundPredicate>)",
     {{"k", "1"}, {"x", ""}},
     {{"k", "1"}, {"x", "2"}},
     {{"k", ""}, {"x", "1"}}},
};

class TreeCondition : public testing::TestWithParam<Row> {
protected:
    void SetUp() override { fScored = std::make_unique<Scored>(ConditionDocument(GetParam().predicate)); }

    std::string Answer(const Case& values) {
        fScored->Score(values);
        return fScored->Text();
    }

    std::unique_ptr<Scored> fScored;
};

TEST_P(TreeCondition, Holds) {
    if (!GetParam().holds.empty()) {
        EXPECT_EQ(Answer(GetParam().holds), "yes");
    }
}

TEST_P(TreeCondition, Fails) {
    if (!GetParam().fails.empty()) {
        EXPECT_EQ(Answer(GetParam().fails), "no");
    }
}

TEST_P(TreeCondition, IsUnknownForAMissingValue) {
    if (!GetParam().unknown.empty()) {
        EXPECT_EQ(Answer(GetParam().unknown), "");
    }
}

INSTANTIATE_TEST_SUITE_P(Rows, TreeCondition, testing::ValuesIn(kRows), NameOfRow());

/// Older producers list the values of a boolean field in capitals.
TEST(TreeBooleans, HaveAnOrderInTheirOwnSpelling) {
    for (const auto& values : {std::pair("FALSE", "TRUE"), std::pair("False", "True"), std::pair("0", "1")}) {
        std::string document = ConditionDocument("<SimplePredicate field='b' operator='lessThan' value='0.5'/>");
        document = Replaced(document, "<DataField name='b' optype='categorical' dataType='boolean'/>",
                            std::string("<DataField name='b' optype='categorical' dataType='boolean'><Value value='") +
                                values.second + "'/><Value value='" + values.first + "'/></DataField>");
        Scored scored(document);
        scored.Score({{"b", values.first}});
        EXPECT_EQ(scored.Text(), "yes") << values.first;
        scored.Score({{"b", values.second}});
        EXPECT_EQ(scored.Text(), "no") << values.second;
    }
}

TEST(TreeBooleans, ListTruthValuesAlone) {
    const std::string document =
        Replaced(ConditionDocument("<SimplePredicate field='b' operator='equal' value='true'/>"),
                 "<DataField name='b' optype='categorical' dataType='boolean'/>",
                 "<DataField name='b' optype='categorical' dataType='boolean'><Value value='Y'/></DataField>");
    ExpectFailure([&] { ReadModel(document); }, {INVALID_ATTRIBUTE_VALUE_IN, "Y", "value", "Value"});
}

TEST(TreeBooleans, AreComparedWithANumberOrATruthValue) {
    ExpectFailure([] { ReadModel(ConditionDocument("<SimplePredicate field='b' operator='lessThan' value='half'/>")); },
                  {INVALID_ATTRIBUTE_VALUE_IN, "half", "value", "SimplePredicate"});
}

/// The codes of the categories stand in several words of bits.
TEST(TreeSets, HoldHundredsOfCategories) {
    std::string array;
    for (int i = 0; i < 500; i += 2) {
        array += "s" + std::to_string(i) + " ";
    }
    Scored scored(ConditionDocument("<SimpleSetPredicate field='c' booleanOperator='isIn'><Array type='string'>" +
                                    array + "</Array></SimpleSetPredicate>"));
    for (int i = 0; i < 501; ++i) {
        scored.Score({{"c", "s" + std::to_string(i)}});
        EXPECT_EQ(scored.Text(), i < 500 && i % 2 == 0 ? "yes" : "no") << i;
    }
}

/// The order is that of the list, whichever condition mentions a value first.
TEST(TreeOrder, OfADerivedFieldIsThatOfItsList) {
    std::string document = Replaced(
        ConditionDocument("<CompoundPredicate booleanOperator='and'>"
                          "<SimplePredicate field='rank' operator='notEqual' value='high'/>"
                          "<SimplePredicate field='rank' operator='greaterThan' value='low'/></CompoundPredicate>"),
        "<DerivedField name='copy'",
        "<DerivedField name='rank' optype='ordinal' dataType='string'><FieldRef field='o'/><Value "
        "value='low'/>"
        "<Value value='mid'/><Value value='high'/></DerivedField><DerivedField name='copy'");
    Scored scored(document);
    for (const auto& [value, answer] : Case{{"low", "no"}, {"mid", "yes"}, {"high", "no"}}) {
        scored.Score({{"o", value}});
        EXPECT_EQ(scored.Text(), answer) << value;
    }
}

/// Each comparison would walk over the whole list, if the order weren't learned once.
TEST(TreeOrder, OfManyValuesIsLearnedOnce) {
    constexpr int kValues = 20000;
    std::string values;
    std::string nodes;
    for (int i = 0; i < kValues; ++i) {
        const std::string value = "'v" + std::to_string(i) + "'/>";
        values += "<Value value=" + value;
        nodes += "<Node score='" + std::to_string(i) +
                 "'><SimplePredicate field='m' operator='lessThan' value=" + value + "</Node>";
    }
    std::string document = ConditionDocument("<True/>");
    document = Replaced(document, "<DataField name='b'",
                        "<DataField name='m' optype='ordinal' dataType='string'>" + values +
                            "</DataField><DataField name='b'");
    document = Replaced(document, "<MiningField name='b'/>", "<MiningField name='m'/><MiningField name='b'/>");
    Scored scored(Replaced(document, "<Node score='yes'><True/></Node>", nodes));
    scored.Score({{"m", "v19998"}});
    EXPECT_EQ(scored.Text(), "19999");
}

/// A few codes among many are kept one by one.
TEST(TreeSets, HoldAFewAmongHundredsOfCategories) {
    std::string many;
    for (int i = 0; i < 500; ++i) {
        many += "s" + std::to_string(i) + " ";
    }
    const std::string set = "<SimpleSetPredicate field='c' booleanOperator='";
    Scored scored(ConditionDocument(
        "<CompoundPredicate booleanOperator='or'>" + set + "isIn'><Array type='string'>" +
        many.substr(0, many.find("s490")) + "</Array></SimpleSetPredicate><CompoundPredicate booleanOperator='and'>" +
        set + "isIn'><Array type='string'>s499 s495 s492 s300</Array></SimpleSetPredicate>" + set +
        "isNotIn'><Array type='string'>s495</Array></SimpleSetPredicate>"
        "</CompoundPredicate></CompoundPredicate>"));
    const auto answer = [&scored](const std::string& category) {
        scored.Score({{"c", category}});
        return scored.Text();
    };
    EXPECT_EQ(answer("s489"), "yes");
    EXPECT_EQ(answer("s490"), "no");
    EXPECT_EQ(answer("s492"), "yes");
    EXPECT_EQ(answer("s495"), "no");
    EXPECT_EQ(answer("s499"), "yes");
    EXPECT_EQ(answer("other"), "no");
}

} // namespace
