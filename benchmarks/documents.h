#ifndef VELTRANE_BENCHMARKS_DOCUMENTS_H
#define VELTRANE_BENCHMARKS_DOCUMENTS_H

#include <MCVeltrane_900/ScoreDictionary.h>
#include <MCVeltrane_900/TransformationDictionary.h>

#include <memory>
#include <string>

namespace veltrane::bench {

/// A document read into its two dictionaries.
struct Loaded {
    std::unique_ptr<MCVeltrane_900::ScoreDictionary> fields;
    std::unique_ptr<MCVeltrane_900::TransformationDictionary> derived;
};

Loaded Load(const std::string& document);

/// Parses the document into a DOM with the XML parser alone, and throws it away.
void ParseDomOnly(const std::string& document);

/// Reads the document with the XML parser alone, which tells what it meets and keeps nothing.
void ParseSaxOnly(const std::string& document);

std::string ReadFile(const std::string& path);

/// Puts a head, `fields` elements of a data dictionary and a transformation dictionary together.
std::string Document(const std::string& dataFields, int fieldCount, const std::string& derivedFields);

std::string ManyFields(int count);
std::string InlineTable(int rows);
std::string ManyDerivedFields(int count);

/// A document whose root holds `count` conditions behind its data dictionary: comparisons of numbers and categories.
std::string ManySimplePredicates(int count);

/// The same with two comparisons, one of an ordinal category, and a set of five in each compound.
std::string ManyCompounds(int count);

/// A tree model of this many nodes, an odd number: balanced and binary, over 20 numeric fields.
std::string TreeDocument(int nodes);

/// The average of as many such trees.
std::string ForestDocument(int trees, int nodes);

/// A regression model with as many numeric predictors.
std::string RegressionDocument(int predictors);

/// Arrays of 20 categories each, in a document that has no model and no dictionary.
/// @param quote stands around each category
std::string CategoryArrays(int count, const char* quote);

} // namespace veltrane::bench

#endif
