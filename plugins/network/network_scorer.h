#ifndef VELTRANE_PLUGINS_NETWORK_NETWORK_SCORER_H
#define VELTRANE_PLUGINS_NETWORK_NETWORK_SCORER_H

#include "kit/document/element.h"
#include "kit/model/model_plan.h"
#include "network.h"

#include <cstddef>
#include <iosfwd>
#include <memory>
#include <vector>

namespace veltrane_network {

/// A NeuralNetwork: its output neurons give the probabilities of categories, or a number, of each target.
class NetworkScorer : public veltrane_kit::Scorer {
public:
    /// @throws VTException what NetworkReader throws
    NetworkScorer(const veltrane_kit::Element& element, veltrane_kit::ModelParts& parts);

    std::unique_ptr<State> NewState() const override;
    bool Predict(const veltrane_kit::CaseView& fields, veltrane_kit::Prediction& prediction,
                 State& state) const override;
    std::unique_ptr<const veltrane_kit::BlockScorer> MakeBlockScorer() const override;
    bool MayHaveConfidences() const override { return false; }
    bool MayHaveMore() const override { return fNetwork.targets.size() > 1; }
    void Display(std::ostream& out, const veltrane_kit::Target& target) const override;

private:
    /// Used anew for every case or block.
    struct Nodes : State {
        std::vector<double> numbers; ///< of a case
        std::vector<double> rows;    ///< Network::kRows for each node
    };
    class Blocks;

    static double NumberOf(const NetworkTarget& target, double activation);
    static bool Answer(const NetworkTarget& target, const double* nodes, std::size_t apart,
                       veltrane_kit::Prediction& prediction);
    void AnswerOthers(const double* nodes, std::size_t apart, std::vector<veltrane_kit::Prediction>& others) const;

    Network fNetwork;
};

/// See veltrane_kit::MakeScorer.
std::unique_ptr<const veltrane_kit::Scorer> MakeNetworkScorer(const veltrane_kit::Element& element,
                                                              veltrane_kit::ModelParts& parts);

} // namespace veltrane_network

#endif
