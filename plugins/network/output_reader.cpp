#include "output_reader.h"

#include "kit/document/raise.h"
#include "kit/model/completion.h" // its DocumentParts

#include <set>

namespace veltrane_network {

using veltrane_kit::Element;
using veltrane_kit::Message;
using veltrane_kit::Raise;
using veltrane_kit::RaiseAt;

OutputReader::OutputReader(Network& network, veltrane_kit::ModelParts& parts,
                           const std::unordered_map<std::string, std::uint32_t>& nodes)
    : fNetwork(network), fParts(parts), fNodes(nodes) {
    fNetwork.targets.push_back({parts.target.get(), parts.IsClassification()});
    for (const veltrane_kit::Outputs::OtherTarget& other : parts.more.targets) {
        fNetwork.targets.push_back({other.target.get(), other.isCategory});
    }
    for (std::size_t i = 0; i < fNetwork.targets.size(); ++i) {
        if (const std::string& name = TargetAt(i).Name(); !name.empty()) {
            fTargets.emplace(name, i);
        }
    }
}

void OutputReader::Read(const Element& element) {
    fModel = element;
    const Element outputs = element.Child(u"NeuralOutputs");
    if (!outputs) {
        ReadLast(element);
        return;
    }
    FindDerivedFields();
    std::size_t count = 0;
    for (const Element child : outputs.Children()) {
        if (child.Is(u"NeuralOutput")) {
            ReadOutput(child);
            ++count;
        } else if (!child.Is(u"Extension")) {
            child.RaiseMisplaced();
        }
    }
    if (outputs.Has(u"numberOfOutputs") && outputs.Number(u"numberOfOutputs") != static_cast<double>(count)) {
        Raise<Message::ELEMENT_NUMBER_MISMATCH>(outputs.Text(u"numberOfOutputs"), "numberOfOutputs",
                                                std::to_string(count), "NeuralOutput", outputs.Tag());
    }
    if (count == 0) {
        Raise<Message::MISSING_NODE_IN>("NeuralOutput", outputs.Tag());
    }
    for (std::size_t i = 0; i < fNetwork.targets.size(); ++i) {
        CompleteCategories(i);
    }
}

void OutputReader::ReadLast(const Element& model) {
    const Layer& last = fNetwork.layers.back();
    if (fParts.IsClassification() || fNetwork.targets.size() > 1 || last.count != 1) {
        Raise<Message::MISSING_NODE_IN>("NeuralOutputs", model.Tag());
    }
    fNetwork.targets.front().outputs.emplace_back().node = static_cast<std::uint32_t>(fNetwork.NodeCount() - 1);
}

void OutputReader::ReadOutput(const Element& element) {
    NetworkOutput output;
    output.id = element.Text(u"outputNeuron");
    const auto node = fNodes.find(output.id);
    if (node == fNodes.end()) {
        Raise<Message::MISSING_ELEMENT_WITH_VALUE>(output.id, "outputNeuron", element.Tag());
    }
    output.node = node->second;
    const Element expression = Resolve(element.RequireChild(u"DerivedField"), output);
    const std::size_t index = TargetOf(expression);
    NetworkTarget& target = fNetwork.targets[index];
    if (expression.Is(u"NormDiscrete") != target.isCategory) {
        Raise<Message::UNEXPECTED_NODE_IN>(
            expression.Tag(), target.isCategory ? "NormDiscrete" : "FieldRef or NormContinuous", element.Tag());
    }
    if (target.isCategory) {
        output.category = TargetAt(index).CategoryOf(expression, u"value");
    } else if (!target.outputs.empty()) {
        Raise<Message::DUPLICATE_DEFINITION>(element.Tag(), expression.Text(u"field"), "NeuralOutputs");
    }
    target.outputs.push_back(std::move(output));
}

/// Follows fields that are derived from others down to an expression of a field of the dictionary, and takes note of
/// what has to be inverted on the way. A name that comes again is that of the data field, as it is within the derived
/// field of that name.
Element OutputReader::Resolve(const Element& field, NetworkOutput& output) const {
    Element expression = ExpressionOf(field);
    std::set<std::string> passed;
    while (!expression.Is(u"NormDiscrete")) {
        if (expression.Is(u"NormContinuous")) {
            output.inversions.emplace_back(expression);
        }
        const std::string name = expression.Text(u"field");
        const auto derived = fDerived.find(name);
        if (derived == fDerived.end() || !passed.insert(name).second) {
            return expression;
        }
        expression = ExpressionOf(derived->second);
    }
    return expression;
}

/// Those of the model go before those of the document.
void OutputReader::FindDerivedFields() {
    for (const Element& parent :
         {fModel.Child(u"LocalTransformations"), fParts.document->root.Child(u"TransformationDictionary")}) {
        for (Element child = parent ? parent.FirstChild() : Element(); child; child = child.NextSibling()) {
            if (child.Is(u"DerivedField")) {
                fDerived.emplace(child.Text(u"name"), child);
            }
        }
    }
}

Element OutputReader::ExpressionOf(const Element& field) const {
    for (const Element child : field.Children()) {
        if (child.Is(u"FieldRef") || child.Is(u"NormContinuous") || child.Is(u"NormDiscrete")) {
            return child;
        }
        if (!child.Is(u"Value") && !child.Is(u"Extension")) {
            Raise<Message::UNEXPECTED_NODE_IN>(child.Tag(), "FieldRef, NormContinuous or NormDiscrete", field.Tag());
        }
    }
    Raise<Message::MISSING_NODE_IN>("EXPRESSION", field.Tag());
}

/// The place of the target whose field an expression is of.
std::size_t OutputReader::TargetOf(const Element& expression) {
    const std::string name = expression.Text(u"field");
    if (fParts.fields->count(name) == 0) {
        RaiseAt<Message::MISSING_VARIABLE_IN_BOTH>(expression.Tag(), "field", name, "DataDictionary",
                                                   "TransformationDictionary");
    }
    if (fTargets.empty()) {
        fTargets.emplace(name, 0);
    }
    const auto found = fTargets.find(name);
    if (found == fTargets.end()) {
        const std::string& own = fParts.target->Name();
        Raise<Message::VALUE_TARGET_MISMATCH>(name, "field", expression.Tag(),
                                              own.empty() ? fTargets.begin()->first : own, "MiningSchema");
    }
    return found->second;
}

veltrane_kit::Target& OutputReader::TargetAt(std::size_t index) const {
    return index == 0 ? *fParts.target : *fParts.more.targets[index - 1].target;
}

/// Each category has one neuron. Of two categories one may have none.
void OutputReader::CompleteCategories(std::size_t index) const {
    NetworkTarget& target = fNetwork.targets[index];
    const veltrane_kit::Target& field = TargetAt(index);
    if (target.outputs.empty()) {
        Raise<Message::MISSING_ELEMENT_WITH_VALUE>(field.Name(), "field", "NeuralOutputs");
    }
    if (!target.isCategory) {
        return;
    }
    std::set<int> known;
    for (const NetworkOutput& output : target.outputs) {
        if (!known.insert(output.category).second) {
            Raise<Message::DUPLICATE_DEFINITION>("NeuralOutput", field.Category(output.category).GetString(),
                                                 "NeuralOutputs");
        }
    }
    if (target.outputs.size() == 1 && field.CategoryCount() == 2) {
        target.rest = 1 - target.outputs.front().category;
    }
}

} // namespace veltrane_network
