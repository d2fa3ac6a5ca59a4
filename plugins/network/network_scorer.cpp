#include "network_scorer.h"

#include "network_reader.h"

#include <cmath>
#include <ostream>

namespace veltrane_network {

using veltrane_kit::CaseView;
using veltrane_kit::Element;
using veltrane_kit::ModelParts;
using veltrane_kit::Prediction;

NetworkScorer::NetworkScorer(const Element& element, ModelParts& parts) {
    NetworkReader(fNetwork, parts).Read(element);
    parts.more.haveEntities = true;
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
    AnswerOthers(nodes, 1, prediction.others);
    return Answer(fNetwork.targets.front(), nodes, 1, prediction);
}

/// What the neurons of a target predict.
/// @param nodes      those of a case, so many numbers apart
/// @param prediction cleared
/// @return false where there is no number
bool NetworkScorer::Answer(const NetworkTarget& target, const double* nodes, std::size_t apart,
                           Prediction& prediction) {
    if (!target.isCategory) {
        prediction.number = NumberOf(target, nodes[target.outputs.front().node * apart]);
        return std::isfinite(prediction.number);
    }
    for (const NetworkOutput& output : target.outputs) {
        prediction.probabilities[static_cast<std::size_t>(output.category)] = nodes[output.node * apart];
    }
    if (target.rest != NetworkTarget::kNoCategory) {
        prediction.probabilities[static_cast<std::size_t>(target.rest)] =
            1.0 - nodes[target.outputs.front().node * apart];
    }
    prediction.TakeMostProbable();
    for (const NetworkOutput& output : target.outputs) {
        if (output.category == prediction.category) {
            prediction.entityId = &output.id;
        }
    }
    return true;
}

/// Each target has an answer of its own, or none.
void NetworkScorer::AnswerOthers(const double* nodes, std::size_t apart, std::vector<Prediction>& others) const {
    others.resize(fNetwork.targets.size() - 1);
    for (std::size_t i = 0; i < others.size(); ++i) {
        const NetworkTarget& target = fNetwork.targets[i + 1];
        others[i].Clear(target.isCategory ? static_cast<std::size_t>(target.target->CategoryCount()) : 0);
        if (!target.isCategory) {
            const double adjusted =
                Answer(target, nodes, apart, others[i]) ? target.target->Adjust(others[i].number) : Prediction::kNone;
            others[i].number = std::isfinite(adjusted) ? adjusted : Prediction::kNone;
        } else {
            Answer(target, nodes, apart, others[i]);
        }
    }
}

/// The target's number, which isn't one for an outlier that is to be missing.
double NetworkScorer::NumberOf(const NetworkTarget& target, double activation) {
    double number = activation;
    for (const Inversion& inversion : target.outputs.front().inversions) {
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
