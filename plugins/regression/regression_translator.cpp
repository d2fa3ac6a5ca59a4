#include "kit/translator.h"
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

VELTRANE_KIT_EXPORT_TRANSLATOR(veltrane_regression::RegressionTranslator)
