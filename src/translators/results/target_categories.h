#ifndef VELTRANE_TRANSLATORS_TARGET_CATEGORIES_H
#define VELTRANE_TRANSLATORS_TARGET_CATEGORIES_H

#include "translators/frame/document_text.h"

#include <MCVeltrane_900/PMMLTranslator.h>
#include <MCVeltrane_900/ScoreValueLabelSet.h>
#include <MCVeltrane_900/ScoreValueProbabilitySet.h>

#include <memory>

namespace veltrane::translators {

/// The categories that one Target states for its variable. They join the labels that the variable has, or become its
/// labels in the end. Borrows all that it is made with.
class TargetCategories {
public:
    TargetCategories(MCVeltrane_900::PMMLTranslator& translator, const DocumentText& text,
                     MCVeltrane_900::ScoreDictVar& var);

    /// Reads one TargetValue.
    /// @throws VTException 260120, 260151, 260285; labels that joined the variable's own set stay there
    void Read(const xercesc::DOMElement* targetValue);

    /// Gives the variable what was read: labels, which are checked then, and prior probabilities.
    /// @throws VTException 260203, 260271, 260294; the variable has the labels by then
    void HandOver();

private:
    std::string ReadValue(const xercesc::DOMElement* targetValue) const;

    MCVeltrane_900::PMMLTranslator& fTranslator;
    const DocumentText& fText;
    MCVeltrane_900::ScoreDictVar& fVar;

    /// Null when the variable has labels.
    std::unique_ptr<MCVeltrane_900::ScoreValueLabelSet> fNewLabels;
    MCVeltrane_900::ScoreValueLabelSet& fLabels;
    std::unique_ptr<MCVeltrane_900::ScoreValueProbabilitySet> fProbabilities;
    bool fIsAnyRead = false;
};

} // namespace veltrane::translators

#endif
