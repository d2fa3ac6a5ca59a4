// A network for several rows at once: each takes the same steps in the same order as a single case.
#include "network.h"

#include <algorithm>
#include <array>

namespace veltrane_network {

namespace {

constexpr std::size_t kRows = Network::kRows;
using Rows = std::array<double, kRows>;

void SumRows(const Network& network, const Neuron& neuron, const double* nodes, double* own) {
    const std::uint32_t* const from = network.from.data() + neuron.first;
    const double* const weights = network.weights.data() + neuron.first;
    Rows sums;
    sums.fill(neuron.bias);
    for (std::size_t i = 0; i < neuron.count; ++i) {
        const double* const numbers = nodes + from[i] * kRows;
        const double weight = weights[i];
        for (std::size_t row = 0; row < kRows; ++row) {
            sums[row] += weight * numbers[row];
        }
    }
    std::copy(sums.begin(), sums.end(), own);
}

void RadialBasisRows(const Network& network, const Neuron& neuron, const double* nodes, double* own) {
    const std::uint32_t* const from = network.from.data() + neuron.first;
    const double* const weights = network.weights.data() + neuron.first;
    Rows squares{};
    for (std::size_t i = 0; i < neuron.count; ++i) {
        const double* const numbers = nodes + from[i] * kRows;
        const double weight = weights[i];
        for (std::size_t row = 0; row < kRows; ++row) {
            const double distance = weight - numbers[row];
            squares[row] += distance * distance;
        }
    }
    for (std::size_t row = 0; row < kRows; ++row) {
        own[row] = std::exp(neuron.peak - squares[row] / neuron.spread);
    }
}

void ComputeLayer(const Network& network, const Layer& layer, const double* nodes, double* own) {
    const Neuron* const neurons = network.neurons.data() + layer.first;
    const bool isRadial = layer.activation == Activation::RADIAL_BASIS;
    for (std::size_t i = 0; i < layer.count; ++i) {
        (isRadial ? RadialBasisRows : SumRows)(network, neurons[i], nodes, own + i * kRows);
    }
    WithActivation(layer.activation, layer.threshold, [&](const auto& function) {
        for (std::size_t i = 0; i < layer.count * kRows; ++i) {
            own[i] = function(own[i]);
        }
    });
}

/// A number less itself is 0, or not a number where it isn't finite.
void Spoil(const double* numbers, std::size_t count, double* spoilt) {
    for (std::size_t i = 0; i < count; ++i) {
        for (std::size_t row = 0; row < kRows; ++row) {
            spoilt[row] += numbers[i * kRows + row] - numbers[i * kRows + row];
        }
    }
}

void TakeExponentials(double* numbers, std::size_t count) {
    Rows largest;
    std::copy_n(numbers, kRows, largest.begin());
    for (std::size_t i = 1; i < count; ++i) {
        for (std::size_t row = 0; row < kRows; ++row) {
            largest[row] = std::max(largest[row], numbers[i * kRows + row]);
        }
    }
    for (std::size_t i = 0; i < count; ++i) {
        for (std::size_t row = 0; row < kRows; ++row) {
            numbers[i * kRows + row] = std::exp(numbers[i * kRows + row] - largest[row]);
        }
    }
}

void ShareOut(double* numbers, std::size_t count, double* spoilt) {
    Rows totals{};
    for (std::size_t i = 0; i < count; ++i) {
        for (std::size_t row = 0; row < kRows; ++row) {
            totals[row] += numbers[i * kRows + row];
        }
    }
    for (std::size_t i = 0; i < count; ++i) {
        for (std::size_t row = 0; row < kRows; ++row) {
            numbers[i * kRows + row] /= totals[row];
        }
    }
    Spoil(totals.data(), 1, spoilt);
    Spoil(numbers, count, spoilt);
}

} // namespace

void Network::ComputeRows(double* nodes, double* spoilt) const {
    std::fill_n(spoilt, kRows, 0.0);
    Spoil(nodes, inputs.size(), spoilt);
    for (const Layer& layer : layers) {
        double* const own = nodes + (inputs.size() + layer.first) * kRows;
        ComputeLayer(*this, layer, nodes, own);
        Spoil(own, layer.count, spoilt);
        if (layer.normalization == Normalization::SOFTMAX) {
            TakeExponentials(own, layer.count);
        }
        if (layer.normalization != Normalization::NONE) {
            ShareOut(own, layer.count, spoilt);
        }
    }
}

} // namespace veltrane_network
