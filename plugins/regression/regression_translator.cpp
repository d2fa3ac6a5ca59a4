#include "kit/model/translator.h"
#include "regression_model.h"

namespace veltrane_regression {

namespace {

class RegressionTranslator : public veltrane_kit::ModelTranslator {
public:
    RegressionTranslator() : ModelTranslator(u"RegressionModel") {}

protected:
    std::unique_ptr<veltrane_kit::Model> BuildModel(const veltrane_kit::Element& element,
                                                    veltrane_kit::ModelParts& parts) override {
        return std::make_unique<RegressionModel>(element, parts);
    }
};

} // namespace

} // namespace veltrane_regression

/// The entry of the plug-in: a new translator, which the factory deletes.
extern "C" VELTRANE_API MCVeltrane_900::ScoreTranslator* GiveMyTranslator() {
    return new veltrane_regression::RegressionTranslator;
}
