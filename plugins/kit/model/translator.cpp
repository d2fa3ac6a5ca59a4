#include "kit/model/translator.h"

#include "kit/document/checks/document_check.h"
#include "kit/document/raise.h"
#include "kit/inputs/dictionary_completion.h"

#include <MCVeltrane_900/TransformVar.h>

#include <xercesc/dom/DOMDocument.hpp>

#include <utility>

namespace veltrane_kit {

using namespace MCVeltrane_900;

namespace {

constexpr Word<BaseModel::FUNCNAME_TYPE> kFunctions[] = {
    {u"classification", BaseModel::FUNC_CLASSIFICATION},
    {u"regression", BaseModel::FUNC_REGRESSION},
};

ScoreDictVar::VariableType KindOf(DataType type) {
    if (IsText(type)) {
        return ScoreDictVar::STRING_VAR;
    }
    return IsMoment(type) || IsCounting(type) ? ScoreDictVar::DATETIME_VAR : ScoreDictVar::kNUMERIC_VAR;
}

/// The derived fields by name, for hosts that ask which there are. They are computed by the model alone, so there is no
/// record of them to ask for.
/// @return null for none
std::unique_ptr<TransformationDictionary> ListDerivedFields(const Inputs& inputs) {
    const DerivedFields& fields = inputs.Derived();
    if (fields.IsEmpty()) {
        return nullptr;
    }
    auto list = std::make_unique<TransformationDictionary>();
    for (const int slot : fields.Slots()) {
        const std::string& name = fields.NameOf(slot);
        list->AddVar(name, std::make_unique<TransformVar>(name, KindOf(inputs.Type(slot))).release());
        list->AddDerievedVarName(name);
    }
    return list;
}

} // namespace

ScoreModel* ModelTranslator::ParseFromTree(xercesc::DOMDocument* document, const std::string& encoding) {
    CreateTranscoder(encoding);
    const DocumentText text(encoding);
    const Element root(document->getDocumentElement(), text);
    if (!root.Is(u"PMML")) {
        Raise<Message::INVALID_TOP_ELEMENT>(root.Tag(), "PMML");
    }
    CheckDocument(root, fTag);
    const Element element = FindModel(root);
    ModelParts parts = ReadParts(root, element, encoding);
    std::unique_ptr<Model> model = BuildModel(element, parts);
    parts.outputs = std::make_unique<Outputs>(element, parts.IsClassification(), *parts.inputs, *parts.target);
    model->Adopt(std::move(parts));
    return model.release();
}

/// A model within another one is a part of that: scored alone it would give something else.
Element ModelTranslator::FindModel(const Element& root) const {
    for (const Element child : root.Children()) {
        if (child.Is(fTag)) {
            return child;
        }
    }
    Raise<Message::UNSUPPORTED_MODEL>(Narrow(fTag));
}

ModelParts ModelTranslator::ReadParts(const Element& root, const Element& model, const std::string& encoding) {
    ModelParts parts;
    parts.tag = model.Tag();
    parts.version = root.TextOr(u"version", "");
    parts.name = model.TextOr(u"modelName", "");
    parts.algorithm = model.TextOr(u"algorithmName", "");
    parts.function = model.OneOf(u"functionName", kFunctions);
    if (!model.FlagOr(u"isScorable", true)) {
        Raise<Message::UNSUPPORTED_VALUE_IN>(model.Text(u"isScorable"), "isScorable", parts.tag, "true");
    }
    const Element dictionary = root.RequireChild(u"DataDictionary");
    parts.fields = std::make_unique<DataFields>(ReadDataFields(dictionary));
    CompleteDictionary(dictionary);
    parts.dictionary.reset(ParseDictionary(dictionary.Dom(), false));
    parts.schema = ReadMiningSchema(model, *parts.fields, *parts.dictionary);
    const std::string& target = parts.schema.target;
    CompleteTargets(model, target, *parts.dictionary);
    PrepareTargets(model, parts.IsClassification(), *parts.dictionary);
    OwnTarget own;
    if (target.empty()) {
        own = TakeOwnTarget(model, parts.IsClassification(), *this);
    }
    const bool isListed = !target.empty() && ListsValues(*parts.dictionary->GetVar(target));
    const Element targets = model.Child(u"Targets");
    HandleTargets(targets ? targets.Dom() : nullptr, parts.dictionary.get());
    parts.inputs = std::make_unique<Inputs>(parts.schema, *parts.fields, *parts.dictionary, encoding);
    parts.inputs->ReadDerivedFields(root.Child(u"TransformationDictionary"), model.Child(u"LocalTransformations"));
    parts.derived = ListDerivedFields(*parts.inputs);
    if (target.empty()) {
        parts.target = std::make_unique<Target>(std::move(own));
    } else {
        parts.target = std::make_unique<Target>(target, *parts.dictionary->GetVar(target), isListed);
        parts.target->Read(FindTarget(model, target));
    }
    return parts;
}

} // namespace veltrane_kit
