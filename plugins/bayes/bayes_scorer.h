#ifndef VELTRANE_PLUGINS_BAYES_BAYES_SCORER_H
#define VELTRANE_PLUGINS_BAYES_BAYES_SCORER_H

#include "bayes_reader.h"
#include "kit/document/element.h"
#include "kit/model/model_plan.h"

#include <iosfwd>
#include <memory>
#include <vector>

namespace veltrane_bayes {

/// A NaiveBayesModel: how often each category is, times how likely it makes the values of the inputs, shared out.
class BayesScorer : public veltrane_kit::Scorer {
public:
    /// @throws VTException 260179 for a regression, 260159 for an element that has no place here; what reading the
    /// model
    ///         throws
    BayesScorer(const veltrane_kit::Element& element, veltrane_kit::ModelParts& parts);

    std::unique_ptr<State> NewState() const override;
    bool Predict(const veltrane_kit::CaseView& fields, veltrane_kit::Prediction& prediction,
                 State& state) const override;
    std::unique_ptr<const veltrane_kit::BlockScorer> MakeBlockScorer() const override;
    bool MayHaveConfidences() const override { return false; }
    void Display(std::ostream& out, const veltrane_kit::Target& target) const override;

private:
    /// Used anew for every case or block.
    struct Logs : State {
        std::vector<double> logs;    ///< one for each category
        std::vector<double> columns; ///< the same for each row of a block, a category behind the other
    };
    class Blocks;

    BayesModel fModel;
};

/// See veltrane_kit::MakeScorer.
std::unique_ptr<const veltrane_kit::Scorer> MakeBayesScorer(const veltrane_kit::Element& element,
                                                            veltrane_kit::ModelParts& parts);

} // namespace veltrane_bayes

#endif
