#ifndef VELTRANE_TESTS_TRANSLATORS_KORD_READING_H
#define VELTRANE_TESTS_TRANSLATORS_KORD_READING_H

#include "translators/dictionary/dictionary_reading.h"

#include <MCVeltrane_900/KORDTranslator.h>

namespace veltrane::tests {

/// A translator as a plug-in derives it.
class KordTestTranslator : public MCVeltrane_900::KORDTranslator {
public:
    using KORDTranslator::GetTranscoder;
    using KORDTranslator::ParseFromTree;
    MCVeltrane_900::ScoreModel* ParseFromTree(xercesc::DOMDocument*, const std::string&) override { return nullptr; }
};

/// Reads dictionaries of "kord-ml" documents from the text of their variables.
class KordReading : public DictionaryReading {
protected:
    KordReading();

    /// Reads a dictionary element as it stands.
    Dictionary ReadKordElement(const std::string& element);

    /// Reads the variables within a dictionary element.
    Dictionary ReadVariables(const std::string& variables);

    /// Reads one variable; it lives as long as the fixture.
    MCVeltrane_900::ScoreDictVar* ReadVariable(const std::string& variable);

    /// Expects the variables to fail with this id and text.
    void ExpectKordFault(const std::string& variables, const Failure& failure, const char* file = __builtin_FILE(),
                         int line = __builtin_LINE());

    KordTestTranslator kord;

private:
    std::vector<Dictionary> fKordRead;
};

/// Variables: <variable name='v' storage-type='STORAGE' measurement-level='LEVEL'>CHILDREN</variable>.
std::string TextVariable(const std::string& children, const std::string& level = "NOMINAL");
std::string NumberVariable(const std::string& children, const std::string& level = "ORDINAL");

} // namespace veltrane::tests

#endif
