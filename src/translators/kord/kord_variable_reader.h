#ifndef VELTRANE_TRANSLATORS_KORD_VARIABLE_READER_H
#define VELTRANE_TRANSLATORS_KORD_VARIABLE_READER_H

#include "translators/frame/document_text.h"

#include <MCVeltrane_900/DictVar.h>

#include <memory>

namespace MCVeltrane_900 {
class ScoreDictionary;
class ScoreMissingValueSet;
class ScoreValue;
class ScoreValueLabelSet;
} // namespace MCVeltrane_900

namespace veltrane::translators {

/// Makes a variable of one "variable" element of a "kord-ml" document. The order of the checks is the order in which a
/// document's faults are reported.
class KordVariableReader {
public:
    /// Borrows both.
    KordVariableReader(MCVeltrane_900::BaseTranslator& translator, const DocumentText& text)
        : fTranslator(translator), fText(text) {}

    /// @param dictionary the variables so far, for the test of names
    /// @throws VTException for the first fault, xercesc::NumberFormatException for that of a "format-spec"
    std::unique_ptr<MCVeltrane_900::DictVar> Read(const xercesc::DOMElement* variable,
                                                  const MCVeltrane_900::ScoreDictionary& dictionary) const;

private:
    using Var = MCVeltrane_900::DictVar;

    /// What a child element of the variable is read by.
    struct ChildRule {
        const char* tag;
        void (KordVariableReader::*read)(const xercesc::DOMElement* child, Var& var) const;
    };
    static const ChildRule kChildRules[];

    std::unique_ptr<Var> MakeVar(const xercesc::DOMElement* variable,
                                 const MCVeltrane_900::ScoreDictionary& dictionary) const;
    void SetLevel(const xercesc::DOMElement* variable, Var& var) const;
    void ReadChild(const xercesc::DOMElement* child, Var& var) const;
    void ReadCategories(const xercesc::DOMElement* categories, Var& var) const;
    void ReadMissingValues(const xercesc::DOMElement* missingValues, Var& var) const;
    void ReadStatistics(const xercesc::DOMElement* statistics, Var& var) const;
    void ReadFormat(const xercesc::DOMElement* format, Var& var) const;

    void AddCategory(const xercesc::DOMElement* category, const Var& var,
                     MCVeltrane_900::ScoreValueLabelSet& labels) const;
    void AddMissingCategory(const xercesc::DOMElement* category, const Var& var,
                            MCVeltrane_900::ScoreMissingValueSet& missing) const;
    void AddMissingRange(const xercesc::DOMElement* range, const Var& var,
                         MCVeltrane_900::ScoreMissingValueSet& missing) const;
    std::unique_ptr<MCVeltrane_900::ScoreValue> MakeValue(const Var& var, const XMLCh* text) const;

    MCVeltrane_900::BaseTranslator& fTranslator;
    const DocumentText& fText;
};

} // namespace veltrane::translators

#endif
