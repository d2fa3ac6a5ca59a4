#include "network_scorer.h"

#include "network_reader.h"

#include <cmath>
#include <ostream>

namespace veltrane_network {

using veltrane_kit::CaseView;
using veltrane_kit::Element;
using veltrane_kit::ModelParts;
using veltrane_kit::Prediction;

NetworkScorer::NetworkScorer(const Element& element, ModelParts& parts) : fIsClassification(parts.IsClassification()) {
    NetworkReader(fNetwork, parts).Read(element);
}

std::unique_ptr<veltrane_kit::Scorer::State> NetworkScorer::NewState() const {
    auto state = std::make_unique<Nodes>();
    state->numbers.resize(fNetwork.NodeCount());
    return state;
}

bool NetworkScorer::Predict(const CaseView& fields, Prediction& prediction, State& state) const {
    double* const nodes = static_cast<Nodes&>(state).numbers.data();
    for (std::size_t i = 0; i < fNetwork.inputs.size(); ++i) {
        const int slot = fNetwork.inputs[i];
        if (fields.IsMissing(slot)) {
            prediction.lacking = slot;
            return false;
        }
        nodes[i] = fields.Number(slot);
    }
    if (!fNetwork.Compute(nodes)) {
        return false;
    }
    if (!fIsClassification) {
        prediction.number = NumberOf(nodes[fNetwork.outputs.front().node]);
        return std::isfinite(prediction.number);
    }
    for (const NetworkOutput& output : fNetwork.outputs) {
        prediction.probabilities[static_cast<std::size_t>(output.category)] = nodes[output.node];
    }
    if (fNetwork.rest != Network::kNoCategory) {
        prediction.probabilities[static_cast<std::size_t>(fNetwork.rest)] = 1.0 - nodes[fNetwork.outputs.front().node];
    }
    prediction.TakeMostProbable();
    for (const NetworkOutput& output : fNetwork.outputs) {
        if (output.category == prediction.category) {
            prediction.entityId = &output.id;
        }
    }
    return true;
}

/// The target's number, which isn't one for an outlier that is to be missing.
double NetworkScorer::NumberOf(double activation) const {
    double number = activation;
    for (const Inversion& inversion : fNetwork.outputs.front().inversions) {
        number = inversion.Of(number);
    }
    return number;
}

void NetworkScorer::Display(std::ostream& out, const veltrane_kit::Target& /*target*/) const {
    out << "inputs: " << fNetwork.inputs.size() << "\n";
    for (const Layer& layer : fNetwork.layers) {
        out << "layer of " << layer.count << " neurons\n";
    }
    out << "connections: " << fNetwork.from.size() << "\n";
}

std::unique_ptr<const veltrane_kit::Scorer> MakeNetworkScorer(const Element& element, ModelParts& parts) {
    return std::make_unique<const NetworkScorer>(element, parts);
}

} // namespace veltrane_network
