#include "support/failure.h"
#include "translators/conditions/predicate_reading.h"

// Each attribute of each predicate missing, empty, misspelled and of a wrong kind.

namespace veltrane::tests {
namespace {

struct FaultRow {
    const char* label;
    const char* element;
    int id;
    const char* text;
};
class PredicateFault : public PredicateReading, public testing::WithParamInterface<FaultRow> {};

TEST_P(PredicateFault, IsRefused) {
    const std::string both = std::string("<CompoundPredicate booleanOperator='and'>"
                                         "<SimplePredicate field='x' operator='isMissing'/>") +
                             GetParam().element + "</CompoundPredicate>";
    ExpectCompoundFault(both, GetParam().id, GetParam().text);
}

constexpr const char* kNoSuchField =
    "Missing variable:'' definition in the 'DataDictionary' and 'TransformationDictionary'.";

INSTANTIATE_TEST_SUITE_P(
    Simple, PredicateFault,
    testing::Values(
        FaultRow{"NoField", "<SimplePredicate operator='equal' value='1'/>", 260120,
                 "Missing the attribute 'field' of 'SimplePredicate'."},
        FaultRow{"EmptyField", "<SimplePredicate field='' operator='equal' value='1'/>", 260125, kNoSuchField},
        FaultRow{"MisspelledField", "<SimplePredicate field='X' operator='equal' value='1'/>", 260125,
                 "Missing variable:'X' definition in the 'DataDictionary' and 'TransformationDictionary'."},
        FaultRow{"MisspelledFieldAttribute", "<SimplePredicate Field='x' operator='equal' value='1'/>", 260120,
                 "Missing the attribute 'field' of 'SimplePredicate'."},
        FaultRow{"NoOperatorOfAScale", "<SimplePredicate field='x' value='1'/>", 260120,
                 "Missing the attribute 'operator' of 'SimplePredicate'."},
        FaultRow{"NoOperatorOfAnOrdinalField", "<SimplePredicate field='o' value='a'/>", 260120,
                 "Missing the attribute 'operator' of 'SimplePredicate'."},
        FaultRow{"NoOperatorOfACategoricalField", "<SimplePredicate field='s' value='a'/>", 260120,
                 "Missing the attribute 'operator' of 'SimplePredicate'."},
        FaultRow{"EmptyOperatorOfAScale", "<SimplePredicate field='x' operator='' value='1'/>", 260303,
                 "Unsupported value '' of attribute 'operator'."},
        FaultRow{"EmptyOperatorOfAnOrdinalField", "<SimplePredicate field='o' operator='' value='a'/>", 260153,
                 "Invalid value: '' of attribute 'operator' in 'o'."},
        FaultRow{"MisspelledOperatorOfAScale", "<SimplePredicate field='x' operator='EQUAL' value='1'/>", 260303,
                 "Unsupported value 'EQUAL' of attribute 'operator'."},
        FaultRow{"MisspelledOperatorOfAnOrdinalField", "<SimplePredicate field='o' operator='equals' value='a'/>",
                 260153, "Invalid value: 'equals' of attribute 'operator' in 'o'."},
        FaultRow{"MisspelledIsMissing", "<SimplePredicate field='x' operator='ismissing'/>", 260119,
                 "Missing the attribute 'value'."},
        FaultRow{"NoValueOfAScale", "<SimplePredicate field='x' operator='equal'/>", 260119,
                 "Missing the attribute 'value'."},
        FaultRow{"NoValueOfAnOrdinalField", "<SimplePredicate field='o' operator='equal'/>", 260120,
                 "Missing the attribute 'value' of 'SimplePredicate'."},
        FaultRow{"NoValueOfACategoricalField", "<SimplePredicate field='s' operator='equal'/>", 260119,
                 "Missing the attribute 'value'."},
        FaultRow{"MisspelledValueAttribute", "<SimplePredicate field='x' operator='equal' Value='1'/>", 260119,
                 "Missing the attribute 'value'."},
        FaultRow{"EmptyValueOfAScale", "<SimplePredicate field='x' operator='lessThan' value=''/>", 260171,
                 "Invalid value of attribute 'operator', expect 'equal' for null string value."},
        FaultRow{"BlankValueOfAScale", "<SimplePredicate field='x' operator='lessThan' value=' '/>", 260151,
                 "The value: ' ' is invalid of type: 'double'."},
        FaultRow{"TextForANumber", "<SimplePredicate field='x' operator='equal' value='low'/>", 260151,
                 "The value: 'low' is invalid of type: 'double'."},
        FaultRow{"TextForADate", "<SimplePredicate field='d' operator='equal' value='1970-01-02'/>", 260151,
                 "The value: '1970-01-02' is invalid of type: 'double'."},
        FaultRow{"TextForAnOrdinalNumber", "<SimplePredicate field='i' operator='equal' value='low'/>", 260153,
                 "Invalid value: 'low' of attribute 'value' in 'i'."},
        FaultRow{"TextForACategoricalNumber", "<SimplePredicate field='n' operator='equal' value='low'/>", 260291,
                 "No valid value in value list of variable: 'n'."},
        FaultRow{"NumberForAText", "<SimplePredicate field='s' operator='equal' value='1'/>", 260291,
                 "No valid value in value list of variable: 's'."},
        FaultRow{"ValueBesideIsMissing", "<SimplePredicate field='x' operator='isMissing' value='1'/>", 260212,
                 "Conflict setting between the attribute 'value' and 'isMissing'."},
        FaultRow{"ValueBesideIsNotMissing", "<SimplePredicate field='o' operator='isNotMissing' value='a'/>", 260212,
                 "Conflict setting between the attribute 'value' and 'isNotMissing'."}),
    [](const auto& row) { return row.param.label; });

INSTANTIATE_TEST_SUITE_P(
    Set, PredicateFault,
    testing::Values(
        FaultRow{"NoField", "<SimpleSetPredicate booleanOperator='isIn'><Array>a</Array></SimpleSetPredicate>", 260120,
                 "Missing the attribute 'field' of 'SimpleSetPredicate'."},
        FaultRow{"EmptyField",
                 "<SimpleSetPredicate field='' booleanOperator='isIn'><Array>a</Array></SimpleSetPredicate>", 260125,
                 kNoSuchField},
        FaultRow{"MisspelledField",
                 "<SimpleSetPredicate field='S' booleanOperator='isIn'><Array>a</Array></SimpleSetPredicate>", 260125,
                 "Missing variable:'S' definition in the 'DataDictionary' and 'TransformationDictionary'."},
        FaultRow{"NoOperator", "<SimpleSetPredicate field='s'><Array>a</Array></SimpleSetPredicate>", 260120,
                 "Missing the attribute 'booleanOperator' of 'SimpleSetPredicate'."},
        FaultRow{"MisspelledOperatorAttribute",
                 "<SimpleSetPredicate field='s' operator='isIn'><Array>a</Array></SimpleSetPredicate>", 260120,
                 "Missing the attribute 'booleanOperator' of 'SimpleSetPredicate'."},
        FaultRow{"EmptyOperator",
                 "<SimpleSetPredicate field='s' booleanOperator=''><Array>a</Array></SimpleSetPredicate>", 260153,
                 "Invalid value: '' of attribute 'operator' in 's'."},
        FaultRow{"MisspelledOperator",
                 "<SimpleSetPredicate field='s' booleanOperator='in'><Array>a</Array></SimpleSetPredicate>", 260153,
                 "Invalid value: 'in' of attribute 'operator' in 's'."},
        FaultRow{"NoArray", "<SimpleSetPredicate field='s' booleanOperator='isIn'/>", 260115,
                 "Missing node of 'Array' element  in 'SimpleSetPredicate'."},
        FaultRow{"MisspelledArray",
                 "<SimpleSetPredicate field='s' booleanOperator='isIn'><array>a</array></SimpleSetPredicate>", 260115,
                 "Missing node of 'Array' element  in 'SimpleSetPredicate'."},
        FaultRow{"EmptyArray", "<SimpleSetPredicate field='s' booleanOperator='isNotIn'><Array/></SimpleSetPredicate>",
                 260115, "Missing node of 'Array' element  in 'SimpleSetPredicate'."},
        FaultRow{"BlankArray",
                 "<SimpleSetPredicate field='s' booleanOperator='isIn'><Array> \t</Array></SimpleSetPredicate>", 260284,
                 "Empty 'Value' in 'Array'."},
        FaultRow{
            "UnclosedQuote",
            "<SimpleSetPredicate field='s' booleanOperator='isNotIn'><Array>\"a\" \"b c</Array></SimpleSetPredicate>",
            260156, "Invalid content: '\"a\" \"b c' of element 'Array'."},
        FaultRow{"WrongSize",
                 "<SimpleSetPredicate field='s' booleanOperator='isIn'><Array n='2'>a b c</Array></SimpleSetPredicate>",
                 260241, "The value: '3' of attribute 'n' does not match the array size: '2'."},
        FaultRow{"SizeIsNoNumber",
                 "<SimpleSetPredicate field='s' booleanOperator='isIn'><Array n='two'>a b</Array></SimpleSetPredicate>",
                 260151, "The value: 'two' is invalid of type: 'integer'."},
        FaultRow{"MisspelledType",
                 "<SimpleSetPredicate field='s' booleanOperator='isIn'><Array type='String'>a</Array>"
                 "</SimpleSetPredicate>",
                 260222, "Error occurred in process the value 'String' of attribute 'type'."},
        FaultRow{"TextsOfANumberField",
                 "<SimpleSetPredicate field='n' booleanOperator='isIn'><Array type='string'>one</Array>"
                 "</SimpleSetPredicate>",
                 260152, "Invalid value 'one' of attribute 'value'."},
        FaultRow{"NumbersOfATextField",
                 "<SimpleSetPredicate field='s' booleanOperator='isIn'><Array type='real'>1</Array>"
                 "</SimpleSetPredicate>",
                 260152, "Invalid value '1' of attribute 'value'."},
        FaultRow{"TextsInAnArrayOfNumbers",
                 "<SimpleSetPredicate field='n' booleanOperator='isNotIn'><Array type='int'>one</Array>"
                 "</SimpleSetPredicate>",
                 260151, "The value: 'one' is invalid of type: 'integer'."}),
    [](const auto& row) { return row.param.label; });

} // namespace
} // namespace veltrane::tests
