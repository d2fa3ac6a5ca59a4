#include "kit/model/translator.h"
#include "tree_model.h"

namespace veltrane_tree {

namespace {

class TreeTranslator : public veltrane_kit::ModelTranslator {
public:
    TreeTranslator() : ModelTranslator(u"TreeModel") {}

protected:
    std::unique_ptr<veltrane_kit::Model> BuildModel(const veltrane_kit::Element& element,
                                                    veltrane_kit::ModelParts& parts) override {
        return std::make_unique<TreeModel>(element, parts);
    }
};

} // namespace

} // namespace veltrane_tree

/// The entry of the plug-in: a new translator, which the factory deletes.
extern "C" VELTRANE_API MCVeltrane_900::ScoreTranslator* GiveMyTranslator() {
    return new veltrane_tree::TreeTranslator;
}
