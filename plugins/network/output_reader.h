#ifndef VELTRANE_PLUGINS_NETWORK_OUTPUT_READER_H
#define VELTRANE_PLUGINS_NETWORK_OUTPUT_READER_H

#include "kit/document/element.h"
#include "kit/model/model_plan.h"
#include "network.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <unordered_map>

namespace veltrane_network {

/// Reads the NeuralOutputs of a network: what the numbers of its neurons tell of the targets.
class OutputReader {
public:
    /// @param nodes by id
    OutputReader(Network& network, veltrane_kit::ModelParts& parts,
                 const std::unordered_map<std::string, std::uint32_t>& nodes);

    /// Without outputs a regression of one target has the number of the only neuron of the last layer.
    /// @param element the model
    /// @throws VTException 260115, 260272, 260246 for elements, 260120, 260285, 260153 for attributes, 260116 for an id
    ///         that nothing has and for a target without an output, 260203 for a category or a number that comes twice,
    ///         260178 for an expression that can't be inverted, or not to what the target has, 260125 for a field that
    ///         the document doesn't have, 260254 for one that is no target
    void Read(const veltrane_kit::Element& element);

private:
    void ReadOutput(const veltrane_kit::Element& element);
    void ReadLast(const veltrane_kit::Element& model);
    veltrane_kit::Element Resolve(const veltrane_kit::Element& field, NetworkOutput& output) const;
    void FindDerivedFields();
    veltrane_kit::Element ExpressionOf(const veltrane_kit::Element& field) const;
    std::size_t TargetOf(const veltrane_kit::Element& expression);
    veltrane_kit::Target& TargetAt(std::size_t index) const;
    void CompleteCategories(std::size_t index) const;

    Network& fNetwork;
    veltrane_kit::ModelParts& fParts;
    const std::unordered_map<std::string, std::uint32_t>& fNodes;
    veltrane_kit::Element fModel;
    std::unordered_map<std::string, veltrane_kit::Element> fDerived; ///< by name
    std::unordered_map<std::string, std::size_t> fTargets; ///< by name; that of a model without one is the field that
                                                           ///< its first output is of
};

} // namespace veltrane_network

#endif
