#include "kit/model/completion.h"

#include "kit/document/raise.h"
#include "kit/inputs/dictionary_completion.h"
#include "kit/model/center_fields.h"

#include <algorithm>
#include <utility>

namespace veltrane_kit {

using namespace MCVeltrane_900;

namespace {

constexpr Word<BaseModel::FUNCNAME_TYPE> kFunctions[] = {
    {u"classification", BaseModel::FUNC_CLASSIFICATION},
    {u"regression", BaseModel::FUNC_REGRESSION},
};

constexpr Word<BaseModel::FUNCNAME_TYPE> kClustering[] = {{u"clustering", BaseModel::FUNC_CLUSTERING}};

constexpr const XMLCh* kFunction = u"functionName";

/// Networks and neighbours may have categories of some targets and numbers of others.
bool IsMixed(const Element& model) {
    return (model.Is(u"NearestNeighborModel") || model.Is(u"NeuralNetwork")) && Same(model.Raw(kFunction), u"mixed");
}

/// The function of a model. A mixed one is known with the level of its first target.
BaseModel::FUNCNAME_TYPE ReadFunction(const Element& model) {
    const bool mayCluster = model.Is(u"MiningModel") || model.Is(u"NearestNeighborModel");
    if (model.Is(u"ClusteringModel") || (mayCluster && Same(model.Raw(kFunction), u"clustering"))) {
        return model.OneOf(kFunction, kClustering);
    }
    return IsMixed(model) ? BaseModel::FUNC_NONE : model.OneOf(kFunction, kFunctions);
}

bool IsContinuous(const ScoreDictVar& var) {
    return var.GetMLevel() == ScoreDictVar::LEVEL_CONTINUOUS && var.GetVarType() != ScoreDictVar::STRING_VAR;
}

void ReadAttributes(const Element& model, ModelParts& parts) {
    parts.tag = model.Tag();
    parts.name = model.TextOr(u"modelName", "");
    parts.algorithm = model.TextOr(u"algorithmName", "");
    parts.function = ReadFunction(model);
    if (!model.FlagOr(u"isScorable", true)) {
        Raise<Message::UNSUPPORTED_VALUE_IN>(model.Text(u"isScorable"), "isScorable", parts.tag, "true");
    }
}

/// Of several targets a part predicts first that of its outer model, where the function suits it.
void PreferTarget(const std::string& name, const Element& model, ModelParts& parts) {
    std::vector<std::string>& others = parts.schema.otherTargets;
    const auto found = std::find(others.begin(), others.end(), name);
    if (found == others.end()) {
        return;
    }
    const bool isNumber = IsContinuous(*parts.dictionary->GetVar(name));
    if (IsMixed(model) || isNumber == (parts.function == BaseModel::FUNC_REGRESSION)) {
        std::swap(parts.schema.target, *found);
    }
}

/// The library reads targets too, into the dictionary that hosts see.
void ReadTarget(const Element& model, PMMLTranslator& translator, ModelParts& parts) {
    const std::string& target = parts.schema.target;
    CompleteTargets(model, target, *parts.dictionary);
    TakeTargetLevels(model, *parts.dictionary);
    if (IsMixed(model)) {
        const ScoreDictVar* var = target.empty() ? nullptr : parts.dictionary->GetVar(target);
        parts.function =
            var == nullptr || IsContinuous(*var) ? BaseModel::FUNC_REGRESSION : BaseModel::FUNC_CLASSIFICATION;
    }
    if (target.empty()) {
        parts.target = std::make_unique<Target>(FindTarget(model, target), parts.IsClassification());
    } else {
        parts.target = std::make_unique<Target>(*parts.dictionary->GetVar(target), parts.fields->at(target));
        parts.target->Read(FindTarget(model, target));
    }
    for (const std::string& name : parts.schema.otherTargets) {
        const ScoreDictVar& var = *parts.dictionary->GetVar(name);
        const auto other = std::make_shared<Target>(var, parts.fields->at(name));
        other->Read(FindTarget(model, name));
        parts.more.targets.push_back({other, !IsContinuous(var)});
    }
    translator.HandleTargets(CopyOfTargets(model, *parts.dictionary), parts.dictionary.get());
}

void ReadTargetAndInputs(const Element& model, const DocumentParts& document, PMMLTranslator& translator,
                         ModelParts& parts) {
    parts.schema = ReadMiningSchema(model, *parts.fields, *parts.dictionary);
    ReadTarget(model, translator, parts);
    parts.inputs = std::make_unique<Inputs>(parts.schema, *parts.fields, *parts.dictionary, document.encoding);
    parts.inputs->ReadDerivedFields(document.root.Child(u"TransformationDictionary"),
                                    model.Child(u"LocalTransformations"));
}

/// The cluster that a model of models predicts is one of its parts', while its entity is the part.
bool NamesClusters(const Element& model, const ModelParts& parts) {
    return model.Is(u"MiningModel") && parts.IsClustering();
}

/// Whether a part says of fields what the dictionary of its outer model doesn't.
bool ChangesDictionary(const Element& model) {
    if (model.Child(u"Targets")) {
        return true;
    }
    const Element schema = model.Child(u"MiningSchema");
    for (Element field = schema ? schema.FirstChild() : Element(); field; field = field.NextSibling()) {
        if (field.Has(u"optype")) {
            return true;
        }
    }
    return false;
}

} // namespace

DocumentParts CompleteDocument(const Element& root, const std::string& encoding, PMMLTranslator& translator) {
    DocumentParts document;
    document.root = root;
    document.encoding = encoding;
    document.version = root.TextOr(u"version", "");
    const Element dictionary = root.RequireChild(u"DataDictionary");
    document.fields = std::make_shared<const DataFields>(ReadDataFields(dictionary));
    CompleteDictionary(dictionary);
    document.dictionary.reset(translator.ParseDictionary(dictionary.Dom(), false));
    return document;
}

std::unique_ptr<const ModelPlan> CompleteModel(const Element& model, const DocumentParts& document,
                                               std::unique_ptr<ScoreDictionary> dictionary, PMMLTranslator& translator,
                                               MakeScorer makeScorer) {
    ModelParts parts;
    ReadAttributes(model, parts);
    parts.version = document.version;
    parts.fields = document.fields;
    parts.dictionary = std::move(dictionary);
    parts.document = &document;
    parts.translator = &translator;
    ShareCenterFields(model);
    ReadTargetAndInputs(model, document, translator, parts);
    parts.more.entities = AskedEntities(model, {});
    parts.more.namesClusters = NamesClusters(model, parts);
    parts.scorer = makeScorer(model, parts);
    parts.outputs = std::make_unique<Outputs>(model, parts.IsClassification(), *parts.inputs, *parts.target, parts.told,
                                              std::vector<Element>(), parts.more);
    return std::make_unique<const ModelPlan>(std::move(parts));
}

void RequireRoomForParts(const Element& element, const ModelParts& parts) {
    if (parts.depth < kDeepestPart) {
        return;
    }
    VTException failure;
    failure.PutErrorMessage(static_cast<int>(Message::UNSUPPORTED_ELEMENT), element.Tag().c_str(),
                            element.Tag().c_str());
    const std::string detail = " Models lie in " + std::to_string(kDeepestPart) + " others at most.";
    failure.SetDetailMessage(detail.c_str());
    throw failure;
}

/// A classification that names no target predicts that of the outer model. The older models have no schema and see the
/// fields of the outer one.
std::unique_ptr<const ModelPlan> CompletePart(const Element& model, ModelParts& outer, MakeScorer makeScorer,
                                              const std::vector<Element>& asked) {
    ModelParts parts;
    ReadAttributes(model, parts);
    parts.version = outer.version;
    parts.fields = outer.fields;
    parts.document = outer.document;
    parts.translator = outer.translator;
    parts.depth = outer.depth + 1;
    parts.dictionary = outer.dictionary;
    if (ChangesDictionary(model)) {
        parts.dictionary.reset(outer.dictionary->Clone());
    }
    const bool isEmbedded = model.Is(u"Regression") || model.Is(u"DecisionTree");
    if (!isEmbedded) {
        parts.schema = ReadMiningSchema(model, *parts.fields, *parts.dictionary, outer.inputs.get());
    }
    PreferTarget(outer.schema.target, model, parts);
    if (parts.schema.target.empty() && parts.IsClassification() && parts.function == outer.function) {
        parts.schema.target = outer.schema.target;
    }
    ReadTarget(model, *parts.translator, parts);
    parts.inputs = std::make_unique<Inputs>(parts.schema, *parts.dictionary, *outer.inputs, isEmbedded);
    ShareCenterFields(model);
    parts.inputs->ReadDerivedFields({}, model.Child(u"LocalTransformations"));
    parts.more.entities = AskedEntities(model, asked);
    parts.more.entities.AskAlso(outer.more.entities);
    parts.more.namesClusters = NamesClusters(model, parts);
    parts.scorer = makeScorer(model, parts);
    if (parts.scorer->LooksBack()) {
        parts.inputs->Layout().needsOrder = true;
    }
    parts.outputs = std::make_unique<Outputs>(model, parts.IsClassification(), *parts.inputs, *parts.target, parts.told,
                                              asked, parts.more);
    parts.outputs->TellFields();
    // The inputs have taken what the schema says; a forest would keep it a thousand times.
    parts.schema.fields = std::vector<MiningField>();
    return std::make_unique<const ModelPlan>(std::move(parts));
}

} // namespace veltrane_kit
