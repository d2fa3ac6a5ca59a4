#ifndef VELTRANE_FUZZ_DOCUMENTS_H
#define VELTRANE_FUZZ_DOCUMENTS_H

#include <MCVeltrane_900/CaseRecord.h>
#include <MCVeltrane_900/ScoreDictionary.h>
#include <MCVeltrane_900/TransformationDictionary.h>

#include <xercesc/dom/DOM.hpp>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

/// What the targets that take documents share.
namespace veltrane::fuzz {

/// A document and the name of its encoding. The first byte chooses the encoding, unless it is the first one of a
/// document: the samples keep all their bytes.
struct Input {
    const char* encoding;
    std::string document;
};
Input InputOf(const std::uint8_t* data, std::size_t size);

/// Parses a document, by the XML parser alone, for `use`. One that isn't well-formed is passed over: what the factory
/// refuses is a target of its own.
void WithTree(const std::string& document, const std::function<void(xercesc::DOMDocument&)>& use);

/// A case with some value for each field; the values differ from one number to the next.
void FillRecord(const MCVeltrane_900::ScoreDictionary& fields, MCVeltrane_900::CaseRecord& record, int number = 0);

/// A document read into its two dictionaries.
struct Dictionaries {
    std::unique_ptr<MCVeltrane_900::ScoreDictionary> fields;
    std::unique_ptr<MCVeltrane_900::TransformationDictionary> derived;
};

/// @throws VTException from the readers; `dictionaries` has the fields that were read ahead of a failure
void ReadDictionaries(const Input& input, Dictionaries& dictionaries);

/// Computes some cases, copies the dictionary, computes them with the copy too, and displays both.
void Compute(MCVeltrane_900::TransformationDictionary& derived, const MCVeltrane_900::ScoreDictionary& fields);

} // namespace veltrane::fuzz

#endif
