#ifndef VELTRANE_TESTS_TRANSLATORS_READ_CONDITIONS_H
#define VELTRANE_TESTS_TRANSLATORS_READ_CONDITIONS_H

#include "support/dom.h"
#include "translators/conditions/plain_conditions.h"

#include <MCVeltrane_900/CaseRecord.h>
#include <MCVeltrane_900/PMMLTranslator.h>
#include <MCVeltrane_900/ScoreDictionary.h>
#include <MCVeltrane_900/ScorePredicate.h>

#include <memory>
#include <string>
#include <vector>

namespace veltrane::tests {

/// Which fields have encoders. Ordinal numbers over an encoder answer the encoded form alone.
enum class Encoders { NONE, TEXTS, ALL };

/// Conditions read by the library, over fields of its own dictionary.
class ReadConditions {
public:
    ReadConditions(const std::vector<PlainField>& fields, const std::vector<PlainCondition>& conditions,
                   Encoders encoders, bool ordinalAsScale);

    /// The result over a record of the values; over an encoded vector when all fields have encoders. A category that
    /// the dictionary doesn't list stands in the vector as -1.
    Truth Evaluate(std::size_t condition, const PlainCase& values) const;

private:
    std::vector<double> EncodedValues(const PlainCase& values) const;
    void Fill(MCVeltrane_900::CaseRecord& record, const PlainCase& values) const;

    const std::vector<PlainField>& fFields;
    Encoders fEncoders;
    MCVeltrane_900::PMMLTranslator fTranslator{"UTF-8"};
    std::unique_ptr<MCVeltrane_900::ScoreDictionary> fDictionary;
    std::vector<std::unique_ptr<MCVeltrane_900::ScorePredicate>> fPredicates;
};

} // namespace veltrane::tests

#endif
