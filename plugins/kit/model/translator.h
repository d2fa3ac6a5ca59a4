#ifndef VELTRANE_PLUGINS_KIT_TRANSLATOR_H
#define VELTRANE_PLUGINS_KIT_TRANSLATOR_H

#include "kit/document/element.h"
#include "kit/model/model.h"
#include "kit/model/scorer.h"

#include <MCVeltrane_900/PMMLTranslator.h>

#include <string>
#include <vector>

namespace veltrane_kit {

/// The translator of a plug-in: it reads all that models have in common, and has the kind's own part made.
class ModelTranslator : public MCVeltrane_900::PMMLTranslator {
public:
    /// @param tag        of the model's element, a literal
    /// @param makeScorer of the kind
    ModelTranslator(const XMLCh* tag, MakeScorer makeScorer) : fTag(tag), fMakeScorer(makeScorer) {}

    /// Takes the model list that is in force, for models that hold others.
    void SetModelNames(const std::vector<std::string>& names) { fModelNames = names; }

    using PMMLTranslator::ParseFromTree;

    /// Reads the first model of the kind that stands directly below the root. What producers write and the library's
    /// readers don't take is completed in the document first.
    /// @return a model that the caller owns
    /// @throws VTException 260160 for a root other than PMML, 260301 for a model inside of another one, or what the
    ///         readers throw
    MCVeltrane_900::ScoreModel* ParseFromTree(xercesc::DOMDocument* document, const std::string& encoding) override;

private:
    Element FindModel(const Element& root) const;

    const XMLCh* fTag;
    MakeScorer fMakeScorer;
    std::vector<std::string> fModelNames;
};

} // namespace veltrane_kit

#endif
