#ifndef VELTRANE_TESTS_TRANSLATORS_PREDICATE_READING_H
#define VELTRANE_TESTS_TRANSLATORS_PREDICATE_READING_H

#include "support/dom.h"
#include "support/faults/failure.h"
#include "translators/frame/test_translator.h"

#include <MCVeltrane_900/DiscreteSplit.h>
#include <MCVeltrane_900/ScaleSplit.h>
#include <MCVeltrane_900/ScoreDictVar.h>
#include <MCVeltrane_900/ScoreDictionary.h>
#include <MCVeltrane_900/ScorePredicate.h>
#include <MCVeltrane_900/SetPredicate.h>
#include <MCVeltrane_900/SimplePredicate.h>

#include <gtest/gtest.h>

#include <deque>
#include <memory>
#include <string>

namespace veltrane::tests {

/// Reads predicates over these fields:
///
///     x   continuous, double
///     d   continuous, dateDaysSince[1970]
///     i   ordinal, integer, values 1, 2, 3
///     o   ordinal, string, values a, b, c
///     h   ordinal, string, values "", a, b
///     q   ordinal, date, values 1, 2
///     v   ordinal, string, without values
///     j   ordinal, integer, without values
///     s   categorical, string, values a, b, c; "?" is declared missing
///     w   categorical, string, values "", a, b
///     n   categorical, double, values 1, 2, 3
///     g   categorical, double, values 1234567, 2.5
///     k   categorical, date, values 1, 2
///     t   categorical, string, without values
///     m   categorical, double, without values
class PredicateReading : public testing::Test {
protected:
    PredicateReading();

    using Simple = std::unique_ptr<MCVeltrane_900::SimplePredicate>;
    using Set = std::unique_ptr<MCVeltrane_900::SetPredicate>;
    using Any = std::unique_ptr<MCVeltrane_900::ScorePredicate>;

    /// A SimplePredicate with these attributes: "field='x' operator='equal' value='1'".
    Simple ReadSimple(const std::string& attributes, bool ordinalAsScale = false);

    /// A SimpleSetPredicate with these attributes and this content.
    Set ReadSet(const std::string& attributes, const std::string& content);

    /// A CompoundPredicate with this operator and content.
    Any ReadCompound(const std::string& booleanOperator, const std::string& content, bool ordinalAsScale = false);

    /// Expect that reading fails with this id and text.
    void ExpectSimpleFault(const std::string& attributes, const Failure& failure, const char* file = __builtin_FILE(),
                           int line = __builtin_LINE());
    void ExpectSetFault(const std::string& attributes, const std::string& content, const Failure& failure,
                        const char* file = __builtin_FILE(), int line = __builtin_LINE());
    void ExpectCompoundFault(const std::string& element, const Failure& failure, const char* file = __builtin_FILE(),
                             int line = __builtin_LINE());

    MCVeltrane_900::ScoreDictVar& Field(const std::string& name) { return *dictionary->GetVar(name); }

    /// Gives a field an encoder of its categories.
    void Encode(const std::string& name) { translator.SetupCatEncoder(&Field(name)); }

    /// The root of a document that lives as long as the fixture.
    xercesc::DOMElement* Element(const std::string& text);

    TestTranslator translator{"UTF-8"};
    std::unique_ptr<MCVeltrane_900::ScoreDictionary> dictionary;

private:
    std::deque<ParsedXml> fDocuments;
};

/// The values that a discrete split holds, in order, with commas: "a,b".
std::string ValuesOf(const MCVeltrane_900::ScoreSplitVar* split);

/// The numbers from -1 to 9 that a split sends to its child, with commas.
std::string NumbersOf(const MCVeltrane_900::ScoreSplitVar* split);

/// The first range of a scale split as "[1,2)", "none" without one.
std::string FirstRangeOf(const MCVeltrane_900::ScoreSplitVar* split);

/// Whether a split has a range for a number.
bool Holds(const MCVeltrane_900::ScoreSplitVar* split, double number);

/// The labels of a variable's categories, with commas.
std::string CategoriesOf(const MCVeltrane_900::ScoreDictVar& var);

/// The structure of a predicate: "and(simple,or(true,set))"; "null" for null.
std::string Shape(const MCVeltrane_900::ScorePredicate* predicate);

} // namespace veltrane::tests

#endif
