#ifndef VELTRANE_PLUGINS_NETWORK_NETWORK_READER_H
#define VELTRANE_PLUGINS_NETWORK_NETWORK_READER_H

#include "kit/document/element.h"
#include "kit/model/model_plan.h"
#include "network.h"

#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace veltrane_network {

/// Reads the elements of a NeuralNetwork.
///
/// What fails throws a VTException: 260115 and 260272 for elements, 260120, 260285, 260153 for attributes, 260182 for a
/// width or an altitude that isn't above 0, 260246 for a number of elements that isn't the stated one, 260203 for an id
/// or a connection that comes twice, 260116 for an id that no neuron has, 260297 for a connection that comes from the
/// neuron's own layer or one behind it, 260187 for an input that isn't a number, 260159 for an element that has no
/// place here; and what OutputReader throws.
class NetworkReader {
public:
    /// @param network empty; filled
    NetworkReader(Network& network, veltrane_kit::ModelParts& parts) : fNetwork(network), fParts(parts) {}

    void Read(const veltrane_kit::Element& element);

private:
    /// What a neuron has unless it says something else itself.
    struct Defaults {
        Activation activation;
        Normalization normalization;
        double threshold;
        std::optional<double> width;
        double altitude;
    };

    static Defaults ReadDefaults(const veltrane_kit::Element& element, const Defaults& outer);
    void ReadInputs(const veltrane_kit::Element& element);
    void ReadInput(const veltrane_kit::Element& element);
    void ReadLayer(const veltrane_kit::Element& element, const Defaults& outer);
    void ReadNeuron(const veltrane_kit::Element& element, const Layer& layer, const Defaults& outer);
    void ReadConnection(const veltrane_kit::Element& element, const veltrane_kit::Element& neuron, const Layer& layer);
    void AddNeurons(const veltrane_kit::Element& element);
    void AddNode(const veltrane_kit::Element& element);

    Network& fNetwork;
    veltrane_kit::ModelParts& fParts;
    std::unordered_map<std::string, std::uint32_t> fNodes; ///< by id
    std::vector<std::size_t> fSeen; ///< by node, the number of the last neuron that it goes to, from 1
};

} // namespace veltrane_network

#endif
