#include "support/faults/failure.h"
#include "translators/conditions/predicate_reading.h"

#include <MCVeltrane_900/CompoundPredicate.h>

// CompoundPredicate: what becomes of its children, and what is left of it.

namespace veltrane::tests {
namespace {

const char* const kSimple = "<SimplePredicate field='x' operator='isMissing'/>";
const char* const kSet =
    "<SimpleSetPredicate field='s' booleanOperator='isIn'><Array type='string'>a</Array></SimpleSetPredicate>";
const char* const kContinuousSet =
    "<SimpleSetPredicate field='x' booleanOperator='isIn'><Array type='int'>1</Array></SimpleSetPredicate>";

class CompoundPredicateReading : public PredicateReading {
protected:
    std::string ShapeOf(const std::string& op, const std::string& content) {
        return Shape(ReadCompound(op, content).get());
    }
    static std::string Compound(const std::string& op, const std::string& content) {
        return "<CompoundPredicate booleanOperator='" + op + "'>" + content + "</CompoundPredicate>";
    }
};
class KeptCompoundReading : public CompoundPredicateReading {};

TEST_F(CompoundPredicateReading, TwoChildrenMakeACompound) {
    for (const std::string op : {"and", "or", "xor", "surrogate"}) {
        EXPECT_EQ(ShapeOf(op, std::string(kSimple) + kSet), op + "(simple,set)");
    }
}

TEST_F(CompoundPredicateReading, OneChildStandsAloneWhateverTheOperator) {
    for (const std::string op : {"and", "or", "xor", "surrogate"}) {
        EXPECT_EQ(ShapeOf(op, kSimple), "simple") << op;
        EXPECT_EQ(ShapeOf(op, kSet), "set") << op;
        EXPECT_EQ(ShapeOf(op, Compound("and", std::string(kSimple) + kSet)), "and(simple,set)") << op;
    }
}

TEST_F(CompoundPredicateReading, AndOfTrueAndASimplePredicateIsTheSimplePredicate) {
    EXPECT_EQ(ShapeOf("and", std::string("<True/>") + kSimple), "simple");
    EXPECT_EQ(ShapeOf("and", std::string(kSimple) + "<True/>"), "simple");
}

TEST_F(CompoundPredicateReading, AndOfTrueAloneIsTrue) {
    EXPECT_EQ(ShapeOf("and", "<True/>"), "true");
    EXPECT_EQ(ShapeOf("and", "<True/><True/>"), "true");
}

TEST_F(CompoundPredicateReading, OrOfFalseAloneIsFalse) {
    EXPECT_EQ(ShapeOf("or", "<False/>"), "false");
    EXPECT_EQ(ShapeOf("or", std::string("<False/>") + kSimple), "simple");
}

TEST_F(CompoundPredicateReading, NothingIsNull) {
    for (const std::string op : {"and", "or", "xor", "surrogate"}) {
        EXPECT_EQ(ShapeOf(op, ""), "null") << op;
    }
}

TEST_F(CompoundPredicateReading, AndOfFalseAndASimplePredicateKeepsTheCompound) {
    EXPECT_EQ(ShapeOf("and", std::string("<False/>") + kSimple), "and(false,simple)");
    EXPECT_EQ(ShapeOf("or", std::string("<True/>") + kSimple), "or(true,simple)");
}

TEST_F(CompoundPredicateReading, ConstantsAreChildrenUnderTheOtherOperators) {
    EXPECT_EQ(ShapeOf("xor", "<True/><False/>"), "xor(true,false)");
    EXPECT_EQ(ShapeOf("surrogate", "<True/><False/>"), "surrogate(true,false)");
    EXPECT_EQ(ShapeOf("and", "<False/>"), "false");
    EXPECT_EQ(ShapeOf("or", "<True/>"), "true");
    EXPECT_EQ(ShapeOf("xor", "<True/>"), "true");
}

TEST_F(CompoundPredicateReading, EveryOtherNodeIsSkipped) {
    EXPECT_EQ(ShapeOf("and", std::string("text <!-- <True/> --> <?True?> <Extension>") + kSimple +
                                 "</Extension><true/><Node/>" + kSet),
              "set");
}

TEST_F(CompoundPredicateReading, ChildrenKeepTheirOrder) {
    const Any predicate = ReadCompound("or", "<SimplePredicate field='x' operator='equal' value='1'/>"
                                             "<SimplePredicate field='x' operator='equal' value='2'/>"
                                             "<SimplePredicate field='x' operator='equal' value='3'/>");
    std::string values;
    for (const ScorePredicate* child : dynamic_cast<const CompoundPredicate&>(*predicate).GetPredicates()) {
        values += dynamic_cast<const SimplePredicate&>(*child).GetPredValueByString();
    }
    EXPECT_EQ(values, "123");
}

TEST_F(CompoundPredicateReading, NestedCompoundsThatComeToNothingDisappear) {
    EXPECT_EQ(ShapeOf("and", std::string(kSimple) + Compound("xor", "") + kSet), "and(simple,set)");
    EXPECT_EQ(ShapeOf("or", Compound("and", Compound("or", ""))), "null");
    EXPECT_EQ(ShapeOf("or", Compound("and", "<True/>") + kSimple), "or(true,simple)");
}

TEST_F(CompoundPredicateReading, TheWayOfOrdinalNumbersGoesDown) {
    const std::string content = Compound("and", "<SimplePredicate field='i' operator='lessThan' value='2'/>");
    EXPECT_EQ(ReadCompound("or", content, true)->GetSplit()->GetSplitVarType(), ScoreSplitVar::SCALE_SPLIT);
    EXPECT_EQ(ReadCompound("or", content, false)->GetSplit()->GetSplitVarType(), ScoreSplitVar::DISCRETE_SPLIT);
}

TEST_F(CompoundPredicateReading, AnUnknownOperatorIsRefused) {
    ExpectCompoundFault("<CompoundPredicate booleanOperator='nand'/>",
                        {INVALID_ATTRIBUTE_VALUE_IN, "nand", "booleanOperator", "CompoundPredicate"});
    ExpectCompoundFault("<CompoundPredicate booleanOperator=''/>",
                        {INVALID_ATTRIBUTE_VALUE_IN, "", "booleanOperator", "CompoundPredicate"});
    ExpectCompoundFault("<CompoundPredicate/>",
                        {INVALID_ATTRIBUTE_VALUE_IN, "", "booleanOperator", "CompoundPredicate"});
}

TEST_F(CompoundPredicateReading, AFaultOfAChildIsTheCompounds) {
    ExpectCompoundFault(Compound("and", std::string(kSimple) + kSet + Compound("or", kSimple + Compound("no", ""))),
                        {INVALID_ATTRIBUTE_VALUE_IN, "no", "booleanOperator", "CompoundPredicate"});
    ExpectCompoundFault(Compound("and", std::string(kSimple) + "<SimplePredicate field='z' operator='isMissing'/>"),
                        {MISSING_VARIABLE_IN_BOTH, "z", "DataDictionary", "TransformationDictionary"});
    ExpectCompoundFault(Compound("and", std::string(kSimple) + "<SimpleSetPredicate field='z'/>"),
                        {MISSING_VARIABLE_IN_BOTH, "z", "DataDictionary", "TransformationDictionary"});
}

TEST_F(KeptCompoundReading, ASetOfAContinuousFieldDisappears) {
    EXPECT_EQ(ShapeOf("and", std::string(kContinuousSet) + kSimple), "simple");
    EXPECT_EQ(ShapeOf("or", std::string(kContinuousSet) + "<False/>"), "false");
    EXPECT_EQ(ShapeOf("xor", kContinuousSet), "null");
}

/// Compounds of two children each, one within the other.
std::string Nested(int depth) {
    std::string text;
    for (int i = 0; i < depth; ++i) {
        text += std::string("<CompoundPredicate booleanOperator='or'>") + kSimple;
    }
    text += kSimple;
    for (int i = 0; i < depth; ++i) {
        text += "</CompoundPredicate>";
    }
    return text;
}

// The parser of these tests has no bound of its own, as that of a host may have none.
TEST_F(CompoundPredicateReading, CompoundsNestToAThousand) {
    Any predicate(translator.ParseCompoundPredicate(Element(Nested(1000)), dictionary.get(), nullptr, false));
    int depth = 0;
    for (const ScorePredicate* level = predicate.get(); level->GetPredType() == ScorePredicate::COMPOUND_PREDICATE;
         level = dynamic_cast<const CompoundPredicate&>(*level).GetPredicates().back()) {
        ++depth;
    }
    EXPECT_EQ(depth, 1000);
    const Any copy(predicate->Clone());
    EXPECT_EQ(copy->Evaluate({}), ScorePredicate::PRED_TRUE);
}

TEST_F(CompoundPredicateReading, DeeperCompoundsAreRefused) {
    ExpectCompoundFault(Nested(1001), {PROCESSING_FAILED, "CompoundPredicate"});
    ExpectCompoundFault(Nested(100000), {PROCESSING_FAILED, "CompoundPredicate"});
    EXPECT_EQ(ShapeOf("and", kSimple), "simple");
}

TEST_F(CompoundPredicateReading, ANodeThatIsNoElementIsRefused) {
    xercesc::DOMNode* text = Element("<CompoundPredicate>text</CompoundPredicate>")->getFirstChild();
    for (xercesc::DOMNode* node : {static_cast<xercesc::DOMNode*>(nullptr), text}) {
        ExpectFailure([&] { translator.ParseCompoundPredicate(node, dictionary.get(), nullptr, false); },
                      {MISSING_NODE, "CompoundPredicate"});
        ExpectFailure([&] { translator.ParsePredicate(node, dictionary.get(), nullptr, false); },
                      {MISSING_NODE, "SimplePredicate"});
        ExpectFailure([&] { translator.ParseSetPredicate(node, dictionary.get(), nullptr); },
                      {MISSING_NODE, "SimpleSetPredicate"});
    }
}

} // namespace
} // namespace veltrane::tests
