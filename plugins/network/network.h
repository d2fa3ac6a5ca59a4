#ifndef VELTRANE_PLUGINS_NETWORK_NETWORK_H
#define VELTRANE_PLUGINS_NETWORK_NETWORK_H

#include "activation.h"
#include "inversion.h"
#include "kit/results/target.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace veltrane_network {

/// What becomes of the activations of a layer; the normalizationMethod of the document.
enum class Normalization { NONE, SIMPLEMAX, SOFTMAX };

struct Neuron {
    std::size_t first; ///< of its connections
    std::size_t count;
    double bias;
    double peak = 0.0;   ///< of a radial basis, the logarithm of its value at distance 0
    double spread = 0.0; ///< of a radial basis, twice the square of its width
};

struct Layer {
    Activation activation;
    double threshold;
    Normalization normalization;
    std::size_t first; ///< of its neurons
    std::size_t count;
};

/// What the number of a neuron tells of a target.
struct NetworkOutput {
    std::uint32_t node = 0;
    int category = -1;                 ///< whose number it is, of a target of categories
    std::vector<Inversion> inversions; ///< of a target of numbers, on the way to its number
    std::string id;                    ///< of the neuron
};

/// A target and the neurons that tell of it.
struct NetworkTarget {
    static constexpr int kNoCategory = -1;

    const veltrane_kit::Target* target; ///< borrowed
    bool isCategory;
    std::vector<NetworkOutput> outputs = {}; ///< one for each category, or the only one
    int rest = kNoCategory; ///< the category without an output, which has what the only other one leaves
};

/// A network as it is computed. Each input and each neuron is a node: first the inputs, then the neurons layer by
/// layer. A connection comes from a node of an earlier layer, so that one way over the nodes computes all.
struct Network {
    std::vector<int> inputs; ///< slots
    std::vector<Layer> layers;
    std::vector<Neuron> neurons;
    std::vector<std::uint32_t> from;    ///< by connection, the node
    std::vector<double> weights;        ///< by connection
    std::vector<NetworkTarget> targets; ///< the model's own first

    std::size_t NodeCount() const { return inputs.size() + neurons.size(); }

    /// Computes the neurons of one case.
    /// @param nodes a number for each, those of the inputs there
    /// @return false where one isn't finite
    bool Compute(double* nodes) const;

    /// How many rows are computed at once.
    static constexpr std::size_t kRows = 16;

    /// The same for kRows cases, bit for bit.
    /// @param nodes kRows numbers for each
    /// @param spoilt set to not a number for rows with a number that isn't finite, else to 0
    void ComputeRows(double* nodes, double* spoilt) const;
};

} // namespace veltrane_network

#endif
