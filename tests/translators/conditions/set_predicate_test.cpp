#include "support/faults/failure.h"
#include "support/rows.h"
#include "translators/conditions/predicate_reading.h"

#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/ScoreEncoder.h>
#include <MCVeltrane_900/ValueLabelSet.h>

// SimpleSetPredicate, and the complement of a set of categories.

namespace veltrane::tests {
namespace {

using Numbers = std::vector<double>;
using Strings = std::vector<std::string>;

std::string Array(const std::string& text, const std::string& attributes = "") {
    return "<Array " + attributes + ">" + text + "</Array>";
}

struct ArrayRow {
    const char* name;
    const char* field;
    const char* op;
    const char* type;
    const char* array;
    bool encoded;
    const char* values; ///< what the store of values holds
    const char* keys;   ///< what the store of numbers holds
    Numbers data;
};
class SetSplit : public PredicateReading, public testing::WithParamInterface<ArrayRow> {};

TEST_P(SetSplit, IsFilledByKindOperatorAndEncoder) {
    const ArrayRow& row = GetParam();
    if (row.encoded) {
        Encode(row.field);
    }
    const std::string field = row.field;
    const std::string type = row.type;
    const Set predicate =
        ReadSet("field='" + field + "' booleanOperator='" + row.op + "'", Array(row.array, "type='" + type + "'"));
    EXPECT_EQ(ValuesOf(predicate->GetSplit()), row.values);
    EXPECT_EQ(NumbersOf(predicate->GetSplit()), row.encoded ? row.keys : "");
    EXPECT_EQ(predicate->GetArrayData(), row.data);
    EXPECT_EQ(predicate->GetPredicateOperator(),
              std::string(row.op) == "isIn" ? SetPredicate::OP_IS_IN : SetPredicate::OP_IS_NOT_IN);
    EXPECT_EQ(predicate->GetSplit()->GetMissvalMap(), -1);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, SetSplit,
    testing::Values(ArrayRow{"TextIn", "s", "isIn", "string", "c a", false, "c,a", "", {}},
                    ArrayRow{"TextInEncoded", "s", "isIn", "string", "c a", true, "", "0,2", {2, 0}},
                    ArrayRow{"TextNotIn", "s", "isNotIn", "string", "b", false, "a,c", "", {}},
                    ArrayRow{"TextNotInEncoded", "s", "isNotIn", "string", "b", true, "", "0,2", {0, 2}},
                    ArrayRow{"OrdinalTextIn", "o", "isIn", "string", "b", false, "b", "", {}},
                    ArrayRow{"OrdinalTextNotInEncoded", "o", "isNotIn", "string", "b", true, "", "0,2", {0, 2}},
                    ArrayRow{"NumberIn", "n", "isIn", "real", "3 1.0", false, "3,1", "", {3, 1}},
                    ArrayRow{"NumberInEncoded", "n", "isIn", "int", "3 1", true, "", "0,2", {}},
                    ArrayRow{"NumberNotIn", "n", "isNotIn", "int", "2", false, "1,3", "", {1, 3}},
                    ArrayRow{"NumberNotInEncoded", "n", "isNotIn", "int", "2", true, "", "0,2", {}},
                    ArrayRow{"OrdinalNumberIn", "i", "isIn", "int", "3 1", false, "3,1", "", {3, 1}},
                    ArrayRow{"OrdinalNumberInEncoded", "i", "isIn", "int", "3 1", true, "", "1,3", {}},
                    ArrayRow{"OrdinalNumberNotInEncoded", "i", "isNotIn", "int", "2", true, "", "1,3", {}},
                    ArrayRow{"UntypedText", "s", "isIn", "", "a", false, "a", "", {}},
                    ArrayRow{"UntypedNumber", "n", "isIn", "", "2", false, "2", "", {2}},
                    ArrayRow{"QuotedTexts", "s", "isIn", "string", "\"a\" \"b\"", false, "a,b", "", {}},
                    ArrayRow{"AllOut", "s", "isNotIn", "string", "a b c", false, "", "", {}}),
    NameOfRow());

class SetPredicateReading : public PredicateReading {};
class KeptSetReading : public PredicateReading {};

TEST_F(SetPredicateReading, AContinuousFieldGivesNoPredicate) {
    EXPECT_EQ(ReadSet("field='x' booleanOperator='isIn'", Array("1 2", "type='int'")), nullptr);
    EXPECT_EQ(ReadSet("field='x' booleanOperator='?'", ""), nullptr);
}

TEST_F(SetPredicateReading, AnElementOutsideTheCategoriesIsRefused) {
    ExpectSetFault("field='s' booleanOperator='isIn'", Array("a d", "type='string'"),
                   {INVALID_ATTRIBUTE_VALUE, "d", "value"});
    ExpectSetFault("field='n' booleanOperator='isIn'", Array("1 4", "type='int'"),
                   {INVALID_ATTRIBUTE_VALUE, "4", "value"});
    ExpectSetFault("field='s' booleanOperator='isNotIn'", Array("a d", "type='string'"),
                   {VALUE_NOT_IN_RANGE, "d", "s"});
    ExpectSetFault("field='n' booleanOperator='isNotIn'", Array("4", "type='int'"), {VALUE_NOT_IN_RANGE, "4", "n"});
}

TEST_F(SetPredicateReading, AMissingValueIsNoElement) {
    ExpectSetFault("field='s' booleanOperator='isIn'", Array("?", "type='string'"),
                   {INVALID_ATTRIBUTE_VALUE, "?", "value"});
}

TEST_F(SetPredicateReading, TheOperatorIsOneOfTwo) {
    ExpectSetFault("field='s' booleanOperator='isin'", Array("a", "type='string'"),
                   {INVALID_ATTRIBUTE_VALUE_IN, "isin", "operator", "s"});
    ExpectSetFault("field='n' booleanOperator=''", Array("1", "type='int'"),
                   {INVALID_ATTRIBUTE_VALUE_IN, "", "operator", "n"});
}

TEST_F(SetPredicateReading, TheTypeOfTheArrayIsCheckedAheadOfTheOperatorOfNumbers) {
    ExpectSetFault("field='n' booleanOperator='isin'", Array("1", "type='object'"),
                   {PROCESSING_ATTRIBUTE_FAILED, "object", "type"});
    ExpectSetFault("field='s' booleanOperator='isIn'", Array("a", "type='object'"),
                   {PROCESSING_ATTRIBUTE_FAILED, "object", "type"});
}

TEST_F(SetPredicateReading, ADateFieldNeedsATypedArray) {
    ExpectSetFault("field='k' booleanOperator='isIn'", Array("1"), {PROCESSING_ATTRIBUTE_FAILED, "", "type"});
    ExpectSetFault("field='q' booleanOperator='isIn'", Array("1"), {PROCESSING_ATTRIBUTE_FAILED, "", "type"});
}

TEST_F(SetPredicateReading, TheArrayIsReadAheadOfTheOperator) {
    ExpectSetFault("field='s' booleanOperator='isin'", "", {MISSING_NODE_IN, "Array", "SimpleSetPredicate"});
    ExpectSetFault("field='s' booleanOperator='isIn'", Array(""), {MISSING_NODE_IN, "Array", "SimpleSetPredicate"});
    ExpectSetFault("field='s' booleanOperator='isIn'", Array("  "), {EMPTY_IN, "Value", "Array"});
    ExpectSetFault("field='s' booleanOperator='isIn'", Array("a b", "n='3' type='string'"),
                   {ARRAY_SIZE_MISMATCH, "2", "n", "3"});
    ExpectSetFault("field='s' booleanOperator='isIn'", Array("a \"b", "type='string'"),
                   {INVALID_CONTENT, "a \"b", "Array"});
    ExpectSetFault("field='n' booleanOperator='isIn'", Array("one", "type='real'"),
                   {INVALID_VALUE_OF_TYPE, "one", "double"});
    ExpectSetFault("field='n' booleanOperator='isIn'", Array("1.5", "type='int'"),
                   {INVALID_VALUE_OF_TYPE, "1.5", "integer"});
}

TEST_F(SetPredicateReading, AProcessingInstructionIsNoArray) {
    ExpectSetFault("field='s' booleanOperator='isIn'", "<?Array a?>", {MISSING_NODE, "Array"});
}

TEST_F(SetPredicateReading, AnotherNodeHasNoElements) {
    std::string op = "isNotIn";
    Numbers array;
    const std::unique_ptr<DiscreteSplit> all(
        translator.HandleArrayDiscreteSplit(Element("<Node/>"), &Field("n"), op, array));
    EXPECT_EQ(ValuesOf(all.get()), "1,2,3");
    EXPECT_EQ(array, (Numbers{1, 2, 3}));
    op = "isIn";
    const std::unique_ptr<DiscreteSplit> none(translator.HandleArrayDiscreteSplit(nullptr, &Field("s"), op, array));
    EXPECT_EQ(ValuesOf(none.get()), "");
    op = "equal";
    ExpectFailure([&] { translator.HandleArrayDiscreteSplit(nullptr, &Field("s"), op, array); },
                  {INVALID_ATTRIBUTE_VALUE_IN, "equal", "operator", "s"});
}

TEST_F(SetPredicateReading, NumbersAreAppendedToTheCallersList) {
    std::string op;
    Numbers array{7};
    const std::unique_ptr<DiscreteSplit> split(translator.HandleArrayDiscreteSplit(
        Element("<SimpleSetPredicate booleanOperator='isIn'><Array type='int'>2</Array></SimpleSetPredicate>"),
        &Field("n"), op, array));
    EXPECT_EQ(array, (Numbers{7, 2}));
    EXPECT_EQ(op, "isIn");
}

TEST_F(SetPredicateReading, AFieldWithoutValuesLearnsThoseOfItsSets) {
    EXPECT_EQ(ValuesOf(ReadSet("field='t' booleanOperator='isIn'", Array("b a b", "type='string'"))->GetSplit()),
              "b,a,b");
    EXPECT_EQ(CategoriesOf(Field("t")), "b,a");
    EXPECT_EQ(ReadSet("field='m' booleanOperator='isIn'", Array("2.50 1", "type='real'"))->GetArrayData(),
              (Numbers{2.5, 1}));
    EXPECT_EQ(CategoriesOf(Field("m")), "2.5,1");
}

TEST_F(SetPredicateReading, AnEmptyTextIsInTheSetWithoutBeingLearned) {
    EXPECT_EQ(ValuesOf(ReadSet("field='t' booleanOperator='isIn'", Array("\"\" a", "type='string'"))->GetSplit()),
              ",a");
    EXPECT_EQ(CategoriesOf(Field("t")), "a");
}

TEST_F(SetPredicateReading, AnUntypedArrayOfAFieldWithoutValuesBeginsWithANumber) {
    ExpectSetFault("field='m' booleanOperator='isIn'", Array("one 2"), {INVALID_VALUE_OF_TYPE, "one", "double"});
    EXPECT_EQ(CategoriesOf(Field("m")), "");
}

TEST_F(SetPredicateReading, ANotInOfAFieldWithoutValuesIsRefused) {
    ExpectSetFault("field='t' booleanOperator='isNotIn'", Array("a", "type='string'"), {MISSING_VALUE_LIST, "t"});
}

TEST_F(KeptSetReading, OnlyTheFirstElementOfAnUntypedArrayIsCheckedToBeANumber) {
    const Set predicate = ReadSet("field='m' booleanOperator='isIn'", Array("1 two"));
    EXPECT_EQ(predicate->GetArrayData(), (Numbers{1, NumericValue::GetSysmisValue()}));
    EXPECT_EQ(CategoriesOf(Field("m")), "1,Undefined");
}

TEST_F(KeptSetReading, WhatTheListOfASetHoldsDependsOnTheField) {
    Encode("n");
    EXPECT_TRUE(ReadSet("field='n' booleanOperator='isIn'", Array("1", "type='int'"))->GetArrayData().empty());
    EXPECT_TRUE(ReadSet("field='s' booleanOperator='isIn'", Array("a", "type='string'"))->GetArrayData().empty());
    Encode("s");
    EXPECT_EQ(ReadSet("field='s' booleanOperator='isIn'", Array("a", "type='string'"))->GetArrayData(), Numbers{0});
}

// The complement goes through the texts of the categories, which have six digits.
TEST_F(KeptSetReading, TheComplementOfLongNumbersIsRounded) {
    const Set predicate = ReadSet("field='g' booleanOperator='isNotIn'", Array("2.5", "type='real'"));
    EXPECT_EQ(predicate->GetArrayData(), Numbers{1234570});
}

class CategoryRemoval : public PredicateReading {
protected:
    Strings Rest(const char* field, const Strings& elements) { return translator.Remove(&Field(field), elements); }
};
class KeptCategoryRemoval : public CategoryRemoval {};

TEST_F(CategoryRemoval, LeavesTheOtherCategoriesInOrder) {
    EXPECT_EQ(Rest("o", {"b"}), (Strings{"a", "c"}));
    EXPECT_EQ(Rest("o", {"c", "a"}), (Strings{"b"}));
    EXPECT_EQ(Rest("o", {}), (Strings{"a", "b", "c"}));
    EXPECT_EQ(Rest("o", {"a", "b", "c"}), Strings());
    EXPECT_EQ(Rest("i", {"2"}), (Strings{"1", "3"}));
}

TEST_F(CategoryRemoval, AnElementThatStandsTwiceCountsOnce) {
    EXPECT_EQ(Rest("o", {"b", "b"}), (Strings{"a", "c"}));
    EXPECT_EQ(Rest("o", {"b", "b", "b", "b"}), (Strings{"a", "c"}));
    EXPECT_EQ(Rest("i", {"2", "2.0"}), (Strings{"1", "3"}));
    EXPECT_EQ(ValuesOf(ReadSet("field='s' booleanOperator='isNotIn'", Array("b b b b b"))->GetSplit()), "a,c");
}

TEST_F(CategoryRemoval, ANumberMayBeWrittenInAnotherWay) {
    EXPECT_EQ(Rest("i", {"2.0"}), (Strings{"1", "3"}));
    EXPECT_EQ(Rest("g", {"1234567"}), (Strings{"2.5"}));
}

TEST_F(CategoryRemoval, EveryElementHasToBeACategory) {
    ExpectFailure([&] { Rest("o", {"a", "d"}); }, {VALUE_NOT_IN_RANGE, "d", "o"});
    ExpectFailure([&] { Rest("o", {""}); }, {VALUE_NOT_IN_RANGE, "", "o"});
    ExpectFailure([&] { Rest("i", {"two"}); }, {VALUE_NOT_IN_RANGE, "two", "i"});
}

TEST_F(CategoryRemoval, AListOfValuesIsRequired) {
    ExpectFailure([&] { Rest("v", {"a"}); }, {MISSING_VALUE_LIST, "v"});
    ExpectFailure([&] { Rest("v", {}); }, {MISSING_VALUE_LIST, "v"});
    Field("v").SetValueLabels(new ValueLabelSet);
    ExpectFailure([&] { Rest("v", {"a"}); }, {MISSING_VALUE_LIST, "v"});
}

TEST_F(KeptCategoryRemoval, AnEmptyCategoryGoesToTheEnd) {
    EXPECT_EQ(Rest("w", {"a"}), (Strings{"b", ""}));
    EXPECT_EQ(Rest("w", {""}), (Strings{"a", "b"}));
    EXPECT_EQ(Rest("w", {"", ""}), (Strings{"a", "b"}));
    EXPECT_EQ(Rest("w", {"a", ""}), (Strings{"b"}));
}

} // namespace
} // namespace veltrane::tests
