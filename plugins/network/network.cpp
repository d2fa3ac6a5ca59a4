#include "network.h"

#include <algorithm>

namespace veltrane_network {

namespace {

/// The sum of a neuron, in the order of its connections.
double SumOf(const Network& network, const Neuron& neuron, const double* nodes) {
    const std::uint32_t* const from = network.from.data() + neuron.first;
    const double* const weights = network.weights.data() + neuron.first;
    double sum = neuron.bias;
    for (std::size_t i = 0; i < neuron.count; ++i) {
        sum += weights[i] * nodes[from[i]];
    }
    return sum;
}

double RadialBasisOf(const Network& network, const Neuron& neuron, const double* nodes) {
    const std::uint32_t* const from = network.from.data() + neuron.first;
    const double* const weights = network.weights.data() + neuron.first;
    double squares = 0.0;
    for (std::size_t i = 0; i < neuron.count; ++i) {
        const double distance = weights[i] - nodes[from[i]];
        squares += distance * distance;
    }
    return std::exp(neuron.peak - squares / neuron.spread);
}

void ComputeLayer(const Network& network, const Layer& layer, const double* nodes, double* own) {
    const Neuron* const neurons = network.neurons.data() + layer.first;
    if (layer.activation == Activation::RADIAL_BASIS) {
        for (std::size_t i = 0; i < layer.count; ++i) {
            own[i] = RadialBasisOf(network, neurons[i], nodes);
        }
        return;
    }
    for (std::size_t i = 0; i < layer.count; ++i) {
        own[i] = SumOf(network, neurons[i], nodes);
    }
    WithActivation(layer.activation, layer.threshold, [&](const auto& function) {
        for (std::size_t i = 0; i < layer.count; ++i) {
            own[i] = function(own[i]);
        }
    });
}

/// Exponentials relative to the largest, so that none overflows.
void TakeExponentials(double* numbers, std::size_t count) {
    const double largest = *std::max_element(numbers, numbers + count);
    for (std::size_t i = 0; i < count; ++i) {
        numbers[i] = std::exp(numbers[i] - largest);
    }
}

/// @return false where there are no shares
bool ShareOut(double* numbers, std::size_t count) {
    double total = 0.0;
    for (std::size_t i = 0; i < count; ++i) {
        total += numbers[i];
    }
    for (std::size_t i = 0; i < count; ++i) {
        numbers[i] /= total;
    }
    return std::isfinite(total);
}

bool AreFinite(const double* numbers, std::size_t count) {
    return std::all_of(numbers, numbers + count, [](double number) { return std::isfinite(number); });
}

} // namespace

bool Network::Compute(double* nodes) const {
    if (!AreFinite(nodes, inputs.size())) {
        return false;
    }
    for (const Layer& layer : layers) {
        double* const own = nodes + inputs.size() + layer.first;
        ComputeLayer(*this, layer, nodes, own);
        if (!AreFinite(own, layer.count)) {
            return false;
        }
        if (layer.normalization == Normalization::SOFTMAX) {
            TakeExponentials(own, layer.count);
        }
        if (layer.normalization != Normalization::NONE &&
            !(ShareOut(own, layer.count) && AreFinite(own, layer.count))) {
            return false;
        }
    }
    return true;
}

} // namespace veltrane_network
