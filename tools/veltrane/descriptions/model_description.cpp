#include "descriptions/model_description.h"

#include "descriptions/document_description.h"
#include "descriptions/field_description.h"
#include "formulas/expression_text.h"
#include "formulas/stated_values.h"

#include <algorithm>
#include <set>
#include <string_view>

namespace veltrane::host {
namespace {

using Json = nlohmann::ordered_json;

/// An element that models are made of, and what many of them are called.
struct Part {
    const char* element;
    const char* key;
};

constexpr Part kParts[] = {
    {"Segment", "segments"},
    {"Node", "nodes"},
    {"RegressionTable", "tables"},
    {"NumericPredictor", "terms"},
    {"CategoricalPredictor", "terms"},
    {"PredictorTerm", "terms"},
    {"PCell", "terms"},
    {"Parameter", "parameters"},
    {"SimpleRule", "rules"},
    {"CompoundRule", "rules"},
    {"Characteristic", "characteristics"},
    {"Attribute", "attributes"},
    {"Cluster", "clusters"},
    {"BayesInput", "bayesInputs"},
    {"NeuralLayer", "layers"},
    {"Neuron", "neurons"},
    {"Con", "connections"},
    {"SupportVectorMachine", "machines"},
    {"SupportVector", "supportVectors"},
    {"VectorInstance", "vectors"},
    {"Itemset", "itemsets"},
    {"AssociationRule", "rules"},
    {"SequenceRule", "rules"},
    {"row", "rows"},
};

/// The attributes of a model that have keys of their own.
constexpr std::string_view kToldAttributes[] = {"modelName", "functionName", "algorithmName", "isScorable"};

Json DescribeSize(const ModelSize& size) {
    Json described = Json::object();
    for (const Part& part : kParts) {
        const auto count = size.elements.find(part.element);
        if (count != size.elements.end()) {
            described[part.key] = described.value(part.key, std::size_t{0}) + count->second;
        }
    }
    if (size.depth > 0) {
        described["leaves"] = size.leaves;
        described["depth"] = size.depth;
    }
    return described;
}

Json DescribeKind(const DocumentFacts& facts, std::size_t place) {
    const XmlNode& model = facts.model;
    Json attributes = Json::object();
    for (const auto& [name, value] : model.attributes) {
        if (std::find(std::begin(kToldAttributes), std::end(kToldAttributes), name) == std::end(kToldAttributes)) {
            attributes[name] = value;
        }
    }
    return {{"number", place + 1},
            {"kind", model.name},
            {"name", model["modelName"]},
            {"function", model["functionName"]},
            {"algorithm", model["algorithmName"]},
            {"attributes", attributes},
            {"size", DescribeSize(facts.size)}};
}

const XmlNode& Named(const std::vector<const XmlNode*>& nodes, const char* attribute, const std::string& name) {
    static const XmlNode kNone;
    const auto found =
        std::find_if(nodes.begin(), nodes.end(), [&](const XmlNode* node) { return (*node)[attribute] == name; });
    return found == nodes.end() ? kNone : **found;
}

bool IsTarget(const XmlNode& mining) {
    return mining["usageType"] == "target" || mining["usageType"] == "predicted";
}

/// Describes the fields that a model reads and predicts.
class Fields {
public:
    Fields(const DocumentFacts& facts, const ModelFace& face)
        : fFacts(facts), fFace(face), fData(facts.dictionary.Children("DataField")),
          fMining(facts.model.Child("MiningSchema").Children("MiningField")), fTarget(TargetName()) {}

    /// Further targets are none.
    Json Inputs() const {
        Json inputs = Json::array();
        std::set<std::string> names;
        for (const XmlNode* mining : fMining) {
            const std::string& name = (*mining)["name"];
            if (name == fTarget || IsTarget(*mining) || !names.insert(name).second) {
                continue;
            }
            inputs.push_back(DescribeInput(Named(fData, "name", name), *mining, "active"));
        }
        for (const std::string& name : fFace.inputs) {
            if (name == fTarget || !names.insert(name).second) {
                continue;
            }
            const XmlNode mining{"", {{"name", name}}, {}, {}};
            inputs.push_back(DescribeInput(Named(fData, "name", name), mining, "active"));
        }
        return inputs;
    }

    /// Null for a model without a target.
    Json Target() const {
        if (fTarget.empty()) {
            return nullptr;
        }
        const std::vector<const XmlNode*> targets = fFacts.model.Child("Targets").Children("Target");
        const XmlNode& named = Named(targets, "field", fTarget);
        const bool isOnly = named.name.empty() && targets.size() == 1 && !targets.front()->Has("field");
        return DescribeTarget(Named(fData, "name", fTarget), Named(fMining, "name", fTarget),
                              isOnly ? *targets.front() : named);
    }

private:
    std::string TargetName() const {
        if (!fFace.target.empty()) {
            return fFace.target;
        }
        const auto found =
            std::find_if(fMining.begin(), fMining.end(), [](const XmlNode* field) { return IsTarget(*field); });
        return found == fMining.end() ? fFacts.model["targetFieldName"] : (**found)["name"];
    }

    const DocumentFacts& fFacts;
    const ModelFace& fFace;
    std::vector<const XmlNode*> fData;
    std::vector<const XmlNode*> fMining;
    std::string fTarget;
};

Json DescribeOutput(const XmlNode& field, const StatedTypes& types) {
    Json described = {{"name", field["name"]}, {"column", nullptr}};
    described["label"] = field.Has("displayName") ? field["displayName"] : field["name"];
    described["type"] = field["dataType"];
    described["level"] = field["optype"];
    described["feature"] = field.Has("feature") ? field["feature"] : "predictedValue";
    for (const char* attribute : {"value", "targetField", "segmentId", "rank", "ruleFeature"}) {
        if (field.Has(attribute)) {
            described[attribute] = NumberOrText(field[attribute]);
        }
    }
    if (const XmlNode& expression = ExpressionOf(field); !expression.name.empty()) {
        described["formula"] = ExpressionText(expression, types, StatedType(field));
    }
    return described;
}

/// The output fields of the document with the columns that `score` writes them into, and the columns that the document
/// doesn't tell of.
Json DescribeOutputs(const DocumentFacts& facts, const ModelFace& face) {
    Json outputs = Json::array();
    std::set<std::string> left(face.columns.begin(), face.columns.end());
    if (!face.columns.empty()) {
        left.erase(face.columns.front());
        outputs.push_back({{"name", nullptr}, {"column", face.columns.front()}, {"feature", "prediction"}});
    }
    StatedTypes types = TypesOf(facts);
    for (const XmlNode* field : facts.model.Child("Output").Children("OutputField")) {
        outputs.push_back(DescribeOutput(*field, types));
        types.fields.emplace((*field)["name"], StatedType(*field));
        if (left.erase((*field)["name"]) > 0) {
            outputs.back()["column"] = (*field)["name"];
        }
    }
    for (const std::string& column : face.columns) {
        if (left.count(column) > 0) {
            outputs.push_back({{"name", column}, {"column", column}});
        }
    }
    return outputs;
}

} // namespace

Json DescribeOrigin(const DocumentFacts& facts) {
    const XmlNode& application = facts.header.Child("Application");
    const std::string& version = application["version"];
    return {{"format", facts.root.name},
            {"version", facts.root["version"]},
            {"producer", application["name"] + (version.empty() ? "" : " " + version)},
            {"description", facts.header["description"]},
            {"copyright", facts.header["copyright"]},
            {"modelVersion", facts.header["modelVersion"]},
            {"timestamp", facts.header.Child("Timestamp").text}};
}

Json DescribeModel(const DocumentFacts& facts, const DocumentOutline& outline, std::size_t place,
                   const ModelFace& face) {
    const Fields fields(facts, face);
    Json description = {{"document", DescribeOrigin(facts)}, {"models", Json::array()}};
    for (std::size_t at = 0; at < outline.models.size(); ++at) {
        description["models"].push_back({{"number", at + 1},
                                         {"kind", outline.models[at].element},
                                         {"name", outline.models[at].name},
                                         {"isScorable", outline.models[at].isScorable}});
    }
    description["model"] = DescribeKind(facts, place);
    description["inputs"] = fields.Inputs();
    description["target"] = fields.Target();
    description["outputs"] = DescribeOutputs(facts, face);
    description.update(DescribeFields(facts));
    return description;
}

} // namespace veltrane::host
