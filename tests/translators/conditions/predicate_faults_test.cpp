#include "support/faults/fault.h"
#include "translators/conditions/predicate_reading.h"

// Each attribute of each predicate missing, empty, misspelled and of a wrong kind.

namespace veltrane::tests {
namespace {

class PredicateFault : public PredicateReading, public testing::WithParamInterface<Fault> {};

TEST_P(PredicateFault, IsRefused) {
    const std::string both = "<CompoundPredicate booleanOperator='and'>"
                             "<SimplePredicate field='x' operator='isMissing'/>" +
                             GetParam().document + "</CompoundPredicate>";
    ExpectCompoundFault(both, GetParam().failure);
}

constexpr Failure kNoSuchField{MISSING_VARIABLE_IN_BOTH, "", "DataDictionary", "TransformationDictionary"};

const Fault kSimpleFaults[] = {
    {"NoField", "<SimplePredicate operator='equal' value='1'/>",
     Failure(MISSING_ATTRIBUTE_OF, "field", "SimplePredicate")},
    {"EmptyField", "<SimplePredicate field='' operator='equal' value='1'/>", kNoSuchField},
    {"MisspelledField", "<SimplePredicate field='X' operator='equal' value='1'/>",
     Failure(MISSING_VARIABLE_IN_BOTH, "X", "DataDictionary", "TransformationDictionary")},
    {"MisspelledFieldAttribute", "<SimplePredicate Field='x' operator='equal' value='1'/>",
     Failure(MISSING_ATTRIBUTE_OF, "field", "SimplePredicate")},
    {"NoOperatorOfAScale", "<SimplePredicate field='x' value='1'/>",
     Failure(MISSING_ATTRIBUTE_OF, "operator", "SimplePredicate")},
    {"NoOperatorOfAnOrdinalField", "<SimplePredicate field='o' value='a'/>",
     Failure(MISSING_ATTRIBUTE_OF, "operator", "SimplePredicate")},
    {"NoOperatorOfACategoricalField", "<SimplePredicate field='s' value='a'/>",
     Failure(MISSING_ATTRIBUTE_OF, "operator", "SimplePredicate")},
    {"EmptyOperatorOfAScale", "<SimplePredicate field='x' operator='' value='1'/>",
     Failure(UNSUPPORTED_VALUE, "", "operator")},
    {"EmptyOperatorOfAnOrdinalField", "<SimplePredicate field='o' operator='' value='a'/>",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "", "operator", "o")},
    {"MisspelledOperatorOfAScale", "<SimplePredicate field='x' operator='EQUAL' value='1'/>",
     Failure(UNSUPPORTED_VALUE, "EQUAL", "operator")},
    {"MisspelledOperatorOfAnOrdinalField", "<SimplePredicate field='o' operator='equals' value='a'/>",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "equals", "operator", "o")},
    {"MisspelledIsMissing", "<SimplePredicate field='x' operator='ismissing'/>", Failure(MISSING_ATTRIBUTE, "value")},
    {"NoValueOfAScale", "<SimplePredicate field='x' operator='equal'/>", Failure(MISSING_ATTRIBUTE, "value")},
    {"NoValueOfAnOrdinalField", "<SimplePredicate field='o' operator='equal'/>",
     Failure(MISSING_ATTRIBUTE_OF, "value", "SimplePredicate")},
    {"NoValueOfACategoricalField", "<SimplePredicate field='s' operator='equal'/>",
     Failure(MISSING_ATTRIBUTE, "value")},
    {"MisspelledValueAttribute", "<SimplePredicate field='x' operator='equal' Value='1'/>",
     Failure(MISSING_ATTRIBUTE, "value")},
    {"EmptyValueOfAScale", "<SimplePredicate field='x' operator='lessThan' value=''/>",
     Failure(ATTRIBUTE_NEEDS_NULL_TEXT, "operator", "equal")},
    {"BlankValueOfAScale", "<SimplePredicate field='x' operator='lessThan' value=' '/>",
     Failure(INVALID_VALUE_OF_TYPE, " ", "double")},
    {"TextForANumber", "<SimplePredicate field='x' operator='equal' value='low'/>",
     Failure(INVALID_VALUE_OF_TYPE, "low", "double")},
    {"TextForADate", "<SimplePredicate field='d' operator='equal' value='1970-01-02'/>",
     Failure(INVALID_VALUE_OF_TYPE, "1970-01-02", "double")},
    {"TextForAnOrdinalNumber", "<SimplePredicate field='i' operator='equal' value='low'/>",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "low", "value", "i")},
    {"TextForACategoricalNumber", "<SimplePredicate field='n' operator='equal' value='low'/>",
     Failure(NO_VALID_VALUE, "n")},
    {"NumberForAText", "<SimplePredicate field='s' operator='equal' value='1'/>", Failure(NO_VALID_VALUE, "s")},
    {"ValueBesideIsMissing", "<SimplePredicate field='x' operator='isMissing' value='1'/>",
     Failure(CONFLICTING_ATTRIBUTES, "value", "isMissing")},
    {"ValueBesideIsNotMissing", "<SimplePredicate field='o' operator='isNotMissing' value='a'/>",
     Failure(CONFLICTING_ATTRIBUTES, "value", "isNotMissing")},
};

INSTANTIATE_TEST_SUITE_P(Simple, PredicateFault, testing::ValuesIn(kSimpleFaults), NameOfRow());

const Fault kSetFaults[] = {
    {"NoField", "<SimpleSetPredicate booleanOperator='isIn'><Array>a</Array></SimpleSetPredicate>",
     Failure(MISSING_ATTRIBUTE_OF, "field", "SimpleSetPredicate")},
    {"EmptyField", "<SimpleSetPredicate field='' booleanOperator='isIn'><Array>a</Array></SimpleSetPredicate>",
     kNoSuchField},
    {"MisspelledField", "<SimpleSetPredicate field='S' booleanOperator='isIn'><Array>a</Array></SimpleSetPredicate>",
     Failure(MISSING_VARIABLE_IN_BOTH, "S", "DataDictionary", "TransformationDictionary")},
    {"NoOperator", "<SimpleSetPredicate field='s'><Array>a</Array></SimpleSetPredicate>",
     Failure(MISSING_ATTRIBUTE_OF, "booleanOperator", "SimpleSetPredicate")},
    {"MisspelledOperatorAttribute",
     "<SimpleSetPredicate field='s' operator='isIn'><Array>a</Array></SimpleSetPredicate>",
     Failure(MISSING_ATTRIBUTE_OF, "booleanOperator", "SimpleSetPredicate")},
    {"EmptyOperator", "<SimpleSetPredicate field='s' booleanOperator=''><Array>a</Array></SimpleSetPredicate>",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "", "operator", "s")},
    {"MisspelledOperator", "<SimpleSetPredicate field='s' booleanOperator='in'><Array>a</Array></SimpleSetPredicate>",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "in", "operator", "s")},
    {"NoArray", "<SimpleSetPredicate field='s' booleanOperator='isIn'/>",
     Failure(MISSING_NODE_IN, "Array", "SimpleSetPredicate")},
    {"MisspelledArray", "<SimpleSetPredicate field='s' booleanOperator='isIn'><array>a</array></SimpleSetPredicate>",
     Failure(MISSING_NODE_IN, "Array", "SimpleSetPredicate")},
    {"EmptyArray", "<SimpleSetPredicate field='s' booleanOperator='isNotIn'><Array/></SimpleSetPredicate>",
     Failure(MISSING_NODE_IN, "Array", "SimpleSetPredicate")},
    {"BlankArray", "<SimpleSetPredicate field='s' booleanOperator='isIn'><Array> \t</Array></SimpleSetPredicate>",
     Failure(EMPTY_IN, "Value", "Array")},
    {"UnclosedQuote",
     "<SimpleSetPredicate field='s' booleanOperator='isNotIn'><Array>\"a\" \"b c</Array></SimpleSetPredicate>",
     Failure(INVALID_CONTENT, "\"a\" \"b c", "Array")},
    {"WrongSize",
     "<SimpleSetPredicate field='s' booleanOperator='isIn'><Array n='2'>a b c</Array></SimpleSetPredicate>",
     Failure(ARRAY_SIZE_MISMATCH, "3", "n", "2")},
    {"SizeIsNoNumber",
     "<SimpleSetPredicate field='s' booleanOperator='isIn'><Array n='two'>a b</Array></SimpleSetPredicate>",
     Failure(INVALID_VALUE_OF_TYPE, "two", "integer")},
    {"MisspelledType",
     "<SimpleSetPredicate field='s' booleanOperator='isIn'><Array type='String'>a</Array>"
     "</SimpleSetPredicate>",
     Failure(PROCESSING_ATTRIBUTE_FAILED, "String", "type")},
    {"TextsOfANumberField",
     "<SimpleSetPredicate field='n' booleanOperator='isIn'><Array type='string'>one</Array>"
     "</SimpleSetPredicate>",
     Failure(INVALID_ATTRIBUTE_VALUE, "one", "value")},
    {"NumbersOfATextField",
     "<SimpleSetPredicate field='s' booleanOperator='isIn'><Array type='real'>1</Array>"
     "</SimpleSetPredicate>",
     Failure(INVALID_ATTRIBUTE_VALUE, "1", "value")},
    {"TextsInAnArrayOfNumbers",
     "<SimpleSetPredicate field='n' booleanOperator='isNotIn'><Array type='int'>one</Array>"
     "</SimpleSetPredicate>",
     Failure(INVALID_VALUE_OF_TYPE, "one", "integer")},
};

INSTANTIATE_TEST_SUITE_P(Set, PredicateFault, testing::ValuesIn(kSetFaults), NameOfRow());

} // namespace
} // namespace veltrane::tests
