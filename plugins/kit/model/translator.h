#ifndef VELTRANE_PLUGINS_KIT_TRANSLATOR_H
#define VELTRANE_PLUGINS_KIT_TRANSLATOR_H

#include "kit/document/element.h"
#include "kit/model/model.h"

#include <MCVeltrane_900/PMMLTranslator.h>

#include <memory>
#include <string>

namespace veltrane_kit {

/// The base of a plug-in's translator. It reads all that models have in common and asks the plug-in for the rest.
class ModelTranslator : public MCVeltrane_900::PMMLTranslator {
public:
    /// @param tag of the model's element, a literal
    explicit ModelTranslator(const XMLCh* tag) : fTag(tag) {}

    using PMMLTranslator::ParseFromTree;

    /// Reads the first model of the kind that stands directly below the root. What producers write and the library's
    /// readers don't take is completed in the document first.
    /// @return a model that the caller owns
    /// @throws VTException 260160 for a root other than PMML, 260301 for a model inside of another one, or what the
    ///         readers throw
    MCVeltrane_900::ScoreModel* ParseFromTree(xercesc::DOMDocument* document, const std::string& encoding) override;

protected:
    /// Builds the model from its own elements.
    /// @param element the model's element
    /// @param parts   dictionaries, mining schema, inputs and target, read; outputs are read later, when the target's
    ///                categories are known
    virtual std::unique_ptr<Model> BuildModel(const Element& element, ModelParts& parts) = 0;

private:
    Element FindModel(const Element& root) const;
    ModelParts ReadParts(const Element& root, const Element& model, const std::string& encoding);

    const XMLCh* fTag;
};

} // namespace veltrane_kit

#endif
