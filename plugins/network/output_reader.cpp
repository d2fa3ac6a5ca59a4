#include "output_reader.h"

#include "kit/document/raise.h"
#include "kit/model/completion.h" // its DocumentParts

#include <set>

namespace veltrane_network {

using veltrane_kit::Element;
using veltrane_kit::Message;
using veltrane_kit::Raise;
using veltrane_kit::RaiseAt;

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
    if (fNetwork.outputs.empty()) {
        Raise<Message::MISSING_NODE_IN>("NeuralOutput", outputs.Tag());
    }
    CompleteCategories();
}

void OutputReader::ReadLast(const Element& model) {
    const Layer& last = fNetwork.layers.back();
    if (fParts.IsClassification() || last.count != 1) {
        Raise<Message::MISSING_NODE_IN>("NeuralOutputs", model.Tag());
    }
    fNetwork.outputs.emplace_back().node = static_cast<std::uint32_t>(fNetwork.NodeCount() - 1);
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
    if (!IsOfTarget(expression)) {
        return;
    }
    RequireSuitable(expression);
    if (fParts.IsClassification()) {
        output.category = fParts.target->CategoryOf(expression, u"value");
    } else if (!fNetwork.outputs.empty()) {
        Raise<Message::DUPLICATE_DEFINITION>(element.Tag(), expression.Text(u"field"), "NeuralOutputs");
    }
    fNetwork.outputs.push_back(std::move(output));
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

bool OutputReader::IsOfTarget(const Element& expression) {
    const std::string name = expression.Text(u"field");
    if (fParts.fields->count(name) == 0) {
        RaiseAt<Message::MISSING_VARIABLE_IN_BOTH>(expression.Tag(), "field", name, "DataDictionary",
                                                   "TransformationDictionary");
    }
    if (fTarget.empty()) {
        fTarget = name;
    }
    if (name == fTarget) {
        return true;
    }
    const veltrane_kit::MiningField* field = fParts.schema.Find(name);
    if (field == nullptr || field->role != MCVeltrane_900::ScoreModel::ROLE_TARGET) {
        Raise<Message::VALUE_TARGET_MISMATCH>(name, "field", expression.Tag(), fTarget, "MiningSchema");
    }
    return false;
}

void OutputReader::RequireSuitable(const Element& expression) const {
    if (expression.Is(u"NormDiscrete") != fParts.IsClassification()) {
        Raise<Message::UNEXPECTED_NODE_IN>(expression.Tag(),
                                           fParts.IsClassification() ? "NormDiscrete" : "FieldRef or NormContinuous",
                                           "NeuralOutput");
    }
}

/// Each category has one neuron. Of two categories one may have none.
void OutputReader::CompleteCategories() const {
    if (!fParts.IsClassification()) {
        return;
    }
    std::set<int> known;
    for (const NetworkOutput& output : fNetwork.outputs) {
        if (!known.insert(output.category).second) {
            Raise<Message::DUPLICATE_DEFINITION>("NeuralOutput", fParts.target->Category(output.category).GetString(),
                                                 "NeuralOutputs");
        }
    }
    if (fNetwork.outputs.size() == 1 && fParts.target->CategoryCount() == 2) {
        fNetwork.rest = 1 - fNetwork.outputs.front().category;
    }
}

} // namespace veltrane_network
