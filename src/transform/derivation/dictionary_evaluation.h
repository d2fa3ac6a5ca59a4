#ifndef VELTRANE_TRANSFORM_DICTIONARY_EVALUATION_H
#define VELTRANE_TRANSFORM_DICTIONARY_EVALUATION_H

#include "transform/derivation/derivation.h"

#include <MCVeltrane_900/TransformationDictionary.h>

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace veltrane::transform {

class FieldEvaluation;

/// A field in the order of computation, with what looking it up by name gave.
struct DerivedField {
    MCVeltrane_900::TransformVar* var;
    FieldEvaluation* evaluation;
    const std::string* name;
    int position; ///< in the derived record, -1 when it isn't there
    int flag;     ///< the field's value index
};

/// The inside of a dictionary of derived fields: how a case goes through it, and what it has looked up for that.
class DictionaryEvaluation {
public:
    using Dictionary = MCVeltrane_900::TransformationDictionary;
    using Record = MCVeltrane_900::ScoreCaseRecord;
    using Value = MCVeltrane_900::ScoreValue;

    explicit DictionaryEvaluation(Dictionary& dictionary) : fDictionary(dictionary) {}
    DictionaryEvaluation(const DictionaryEvaluation&) = delete;
    DictionaryEvaluation& operator=(const DictionaryEvaluation&) = delete;

    static DictionaryEvaluation& Of(const Dictionary& dictionary) { return *dictionary.fEvaluation; }

    /// The dictionary of a case's derived fields, seen through its base; null when it is of another class.
    static const Dictionary* DictionaryOf(const ApplyCase& oneCase);

    // The values of the case that have been stored. A plan asks for them leaf by leaf, so they are found in the
    // dictionary at once.

    static bool IsComputed(const Dictionary& dictionary, int index) {
        return index >= 0 && static_cast<std::size_t>(index) < dictionary.fComputedFlags.size() &&
               dictionary.fComputedFlags[static_cast<std::size_t>(index)];
    }

    /// The position of a name in the derived record, which stays for as long as the revision of the variables does; -1
    /// for none so far.
    static int StoredPosition(const Dictionary& dictionary, const std::string& name);
    static const Value* StoredValue(const Dictionary& dictionary, int position);

    /// The values of a derived record of the library's own class, for as long as a field is evaluated.
    struct StoredValues {
        const Record* record = nullptr;
        const std::vector<Value*>* values = nullptr; ///< null for another class
    };
    /// The same, with no call for each value.
    /// @param stored of the record that was asked before
    static const Value* StoredValue(const Dictionary& dictionary, int position, StoredValues& stored) {
        if (dictionary.fDerivedRecord != stored.record) {
            FindStoredValues(dictionary, stored);
        }
        const auto at = static_cast<std::size_t>(position);
        return stored.values != nullptr && at < stored.values->size() ? (*stored.values)[at]
                                                                      : StoredValue(dictionary, position);
    }

    /// The value of a field in the derived record, which is read by its name. Its value index, which anyone can set, is
    /// where the name is looked for first: positions in the record never change.
    static const Value* StoredValue(const Dictionary& dictionary, int index, const std::string& name);

    /// The fields of the derived names and their positions. Names without a derived field are left out.
    std::vector<DerivedField>& Fields();
    /// The record or the list of names has changed.
    void ForgetFields() { fFieldsFound = false; }
    void SetComputed(const DerivedField& field, bool stored);

    // The records, which assignment shares. Those that an assignment has replaced are kept alive too.

    /// A copy of another dictionary's record; null for null.
    Record* CopyRecord(const Record* record);
    Record* KeepRecord(std::shared_ptr<Record> record);
    void ShareRecords(const Dictionary& other);

    Derivation derivation;
    std::vector<std::string> storedNames; ///< the names of the derived record by position, as they were set up
    std::string text;                     ///< scratch of the text form

private:
    static void FindStoredValues(const Dictionary& dictionary, StoredValues& stored);

    Dictionary& fDictionary;
    std::vector<std::shared_ptr<Record>> fRecords;

    /// Good for one revision of the variables and one state of the record and the names.
    std::vector<DerivedField> fFields;
    unsigned long long fFieldsRevision = 0;
    bool fFieldsFound = false;
};

} // namespace veltrane::transform

#endif
