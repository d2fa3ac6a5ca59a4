#ifndef VELTRANE_TESTS_TRANSLATORS_DICTIONARY_READING_H
#define VELTRANE_TESTS_TRANSLATORS_DICTIONARY_READING_H

#include "support/faults/failure.h"
#include "translators/frame/test_translator.h"

#include <MCVeltrane_900/ScoreDictVar.h>
#include <MCVeltrane_900/ScoreDictionary.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace veltrane::tests {

/// Reads data dictionaries from the text of their fields.
class DictionaryReading : public testing::Test {
protected:
    using Dictionary = std::unique_ptr<MCVeltrane_900::ScoreDictionary>;

    /// Reads a DataDictionary element as it stands.
    Dictionary ReadElement(const std::string& element, bool withEncoders = false);

    /// Reads fields within a DataDictionary that declares their right number.
    Dictionary Read(const std::string& fields, bool withEncoders = false);

    /// Reads one field; the variable lives as long as the fixture.
    MCVeltrane_900::ScoreDictVar* ReadField(const std::string& field, bool withEncoders = false);

    /// Expects the fields to fail with this id and text.
    void ExpectFault(const std::string& fields, const Failure& failure, const char* file = __builtin_FILE(),
                     int line = __builtin_LINE());

    /// The ranges of the variable's missing set, as "[low, high)" with the brackets of their ends.
    static std::vector<std::string> MissingRanges(const MCVeltrane_900::ScoreDictVar* var);

    /// The variable's labels as "value=label".
    static std::vector<std::string> Labels(const MCVeltrane_900::ScoreDictVar* var);

    TestTranslator translator{"UTF-8"};

private:
    std::vector<Dictionary> fRead;
};

/// Field elements by their level: <DataField name='f' optype='LEVEL' ATTRIBUTES>CHILDREN</DataField>.
std::string Categorical(const std::string& children, const std::string& attributes = "");
std::string Continuous(const std::string& children, const std::string& attributes = "");

inline std::string Extension(const std::string& name, const std::string& value) {
    return "<Extension name='" + name + "' value='" + value + "'/>";
}

} // namespace veltrane::tests

#endif
