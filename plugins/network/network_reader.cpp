#include "network_reader.h"

#include "kit/document/common_elements.h"
#include "kit/document/raise.h"
#include "kit/values/data_types.h"
#include "output_reader.h"

#include <cmath>
#include <utility>

namespace veltrane_network {

using veltrane_kit::Element;
using veltrane_kit::Message;
using veltrane_kit::Raise;
using veltrane_kit::RaiseAt;
using veltrane_kit::Word;

namespace {

constexpr Word<Activation> kActivations[] = {
    {u"threshold", Activation::THRESHOLD},
    {u"logistic", Activation::LOGISTIC},
    {u"tanh", Activation::TANH},
    {u"identity", Activation::IDENTITY},
    {u"exponential", Activation::EXPONENTIAL},
    {u"reciprocal", Activation::RECIPROCAL},
    {u"square", Activation::SQUARE},
    {u"Gauss", Activation::GAUSS},
    {u"sine", Activation::SINE},
    {u"cosine", Activation::COSINE},
    {u"Elliott", Activation::ELLIOTT},
    {u"arctan", Activation::ARCTAN},
    {u"rectifier", Activation::RECTIFIER},
    {u"radialBasis", Activation::RADIAL_BASIS},
};

constexpr Word<Normalization> kNormalizations[] = {
    {u"none", Normalization::NONE},
    {u"simplemax", Normalization::SIMPLEMAX},
    {u"softmax", Normalization::SOFTMAX},
};

/// Twice the square of a width.
double SpreadOf(double width) {
    return 2.0 * (width * width);
}

/// A number above 0, or the one of the element around.
template <typename Fallback>
Fallback AboveZeroOr(const Element& element, const XMLCh* name, const Fallback& fallback) {
    if (!element.Has(name)) {
        return fallback;
    }
    const double number = element.Number(name);
    if (!(number > 0.0)) {
        RaiseAt<Message::REQUIRES_ABOVE_ZERO>(element.Tag(), nullptr, element.Text(name), veltrane_kit::Narrow(name));
    }
    return number;
}

/// The same of a width, whose square has to be a number that can be divided by.
std::optional<double> WidthOr(const Element& element, const std::optional<double>& fallback) {
    constexpr const XMLCh* kWidth = u"width";
    const std::optional<double> width = AboveZeroOr(element, kWidth, fallback);
    if (element.Has(kWidth) && !std::isnormal(SpreadOf(*width))) {
        element.RaiseInvalid(kWidth);
    }
    return width;
}

/// How many children of a tag an element has: one at least, and as many as it says itself.
void CheckCount(const Element& element, const XMLCh* attribute, const char* tag, std::size_t count) {
    if (count == 0) {
        Raise<Message::MISSING_NODE_IN>(tag, element.Tag());
    }
    if (element.Has(attribute) && element.Number(attribute) != static_cast<double>(count)) {
        Raise<Message::ELEMENT_NUMBER_MISMATCH>(element.Text(attribute), veltrane_kit::Narrow(attribute),
                                                std::to_string(count), tag, element.Tag());
    }
}

} // namespace

void NetworkReader::Read(const Element& element) {
    const Defaults defaults =
        ReadDefaults(element, {Activation::IDENTITY, Normalization::NONE, 0.0, std::nullopt, 1.0});
    ReadInputs(element.RequireChild(u"NeuralInputs"));
    AddNeurons(element);
    for (const Element child : element.Children()) {
        if (child.Is(u"NeuralLayer")) {
            ReadLayer(child, defaults);
        } else if (!child.Is(u"NeuralInputs") && !child.Is(u"NeuralOutputs")) {
            veltrane_kit::RequireCommonElement(child);
        }
    }
    CheckCount(element, u"numberOfLayers", "NeuralLayer", fNetwork.layers.size());
    OutputReader(fNetwork, fParts, fNodes).Read(element);
}

NetworkReader::Defaults NetworkReader::ReadDefaults(const Element& element, const Defaults& outer) {
    Defaults own = outer;
    own.activation = element.OneOfOr(u"activationFunction", kActivations, outer.activation);
    own.normalization = element.OneOfOr(u"normalizationMethod", kNormalizations, outer.normalization);
    own.threshold = element.NumberOr(u"threshold", outer.threshold);
    own.width = WidthOr(element, outer.width);
    own.altitude = AboveZeroOr(element, u"altitude", outer.altitude);
    return own;
}

void NetworkReader::ReadInputs(const Element& element) {
    for (const Element child : element.Children()) {
        if (child.Is(u"NeuralInput")) {
            ReadInput(child);
        } else if (!child.Is(u"Extension")) {
            child.RaiseMisplaced();
        }
    }
    CheckCount(element, u"numberOfInputs", "NeuralInput", fNetwork.inputs.size());
}

void NetworkReader::ReadInput(const Element& element) {
    const Element field = element.RequireChild(u"DerivedField");
    const auto type = veltrane_kit::ReadDataType(field, u"dataType").value_or(veltrane_kit::DataType::DOUBLE);
    if (veltrane_kit::IsText(type)) {
        RaiseAt<Message::REQUIRES_NUMERIC>(field.Tag(), "dataType", field.TextOr(u"name", element.Text(u"id")));
    }
    AddNode(element);
    fNetwork.inputs.push_back(fParts.inputs->Derived().AddUnnamed(field, type));
}

void NetworkReader::ReadLayer(const Element& element, const Defaults& outer) {
    const Defaults defaults = ReadDefaults(element, outer);
    Layer layer{defaults.activation, defaults.threshold, defaults.normalization, fNetwork.neurons.size(), 0};
    for (const Element child : element.Children()) {
        if (child.Is(u"Neuron")) {
            ReadNeuron(child, layer, defaults);
            ++layer.count;
        } else if (!child.Is(u"Extension")) {
            child.RaiseMisplaced();
        }
    }
    CheckCount(element, u"numberOfNeurons", "Neuron", layer.count);
    fNetwork.layers.push_back(layer);
}

void NetworkReader::ReadNeuron(const Element& element, const Layer& layer, const Defaults& outer) {
    Neuron neuron{fNetwork.from.size(), 0, element.NumberOr(u"bias", 0.0)};
    for (const Element child : element.Children()) {
        if (child.Is(u"Con")) {
            ReadConnection(child, element, layer);
            ++neuron.count;
        } else if (!child.Is(u"Extension")) {
            child.RaiseMisplaced();
        }
    }
    if (neuron.count == 0) {
        Raise<Message::MISSING_NODE_IN>("Con", element.Tag());
    }
    const std::optional<double> width = WidthOr(element, outer.width);
    const double altitude = AboveZeroOr(element, u"altitude", outer.altitude);
    if (layer.activation == Activation::RADIAL_BASIS) {
        if (!width) {
            Raise<Message::MISSING_ATTRIBUTE_OF>("width", element.Tag());
        }
        neuron.peak = static_cast<double>(neuron.count) * std::log(altitude);
        neuron.spread = SpreadOf(*width);
    }
    fNetwork.neurons.push_back(neuron);
}

void NetworkReader::ReadConnection(const Element& element, const Element& neuron, const Layer& layer) {
    const std::string id = element.Text(u"from");
    const auto known = fNodes.find(id);
    if (known == fNodes.end()) {
        Raise<Message::MISSING_ELEMENT_WITH_VALUE>(id, "from", element.Tag());
    }
    const std::uint32_t node = known->second;
    if (node >= fNetwork.inputs.size() + layer.first) {
        RaiseAt<Message::SOURCE_IS_DESTINATION>(element.Tag(), "from", id, neuron.Tag());
    }
    if (std::exchange(fSeen[node], fNetwork.neurons.size() + 1) == fNetwork.neurons.size() + 1) {
        Raise<Message::DUPLICATE_DEFINITION>(element.Tag(), id, neuron.Tag());
    }
    fNetwork.from.push_back(node);
    fNetwork.weights.push_back(element.Number(u"weight"));
}

/// Makes all neurons known ahead of their connections: one that comes from behind is another fault than one from
/// nobody.
void NetworkReader::AddNeurons(const Element& element) {
    for (const Element layer : element.Children()) {
        for (Element neuron = layer.Is(u"NeuralLayer") ? layer.FirstChild() : Element(); neuron;
             neuron = neuron.NextSibling()) {
            if (neuron.Is(u"Neuron")) {
                AddNode(neuron);
            }
        }
    }
    fSeen.resize(fNodes.size());
}

/// Inputs and neurons have ids of one kind.
void NetworkReader::AddNode(const Element& element) {
    const std::string id = element.Text(u"id");
    if (!fNodes.emplace(id, static_cast<std::uint32_t>(fNodes.size())).second) {
        Raise<Message::DUPLICATE_DEFINITION>(element.Tag(), id, fParts.tag);
    }
}

} // namespace veltrane_network
