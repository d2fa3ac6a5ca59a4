#include "kit/model/translator.h"

#include "kit/document/checks/document_check.h"
#include "kit/document/raise.h"
#include "kit/inputs/completion.h"

#include <xercesc/dom/DOMDocument.hpp>

#include <utility>

namespace veltrane_kit {

using namespace MCVeltrane_900;

namespace {

constexpr Word<BaseModel::FUNCNAME_TYPE> kFunctions[] = {
    {u"classification", BaseModel::FUNC_CLASSIFICATION},
    {u"regression", BaseModel::FUNC_REGRESSION},
};

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
    ModelParts parts = ReadParts(root, element);
    std::unique_ptr<Model> model = BuildModel(element, parts);
    parts.outputs = std::make_unique<Outputs>(element, parts.IsClassification(), *parts.inputs, *parts.target, *this);
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

ModelParts ModelTranslator::ReadParts(const Element& root, const Element& model) {
    ModelParts parts;
    parts.tag = model.Tag();
    parts.version = root.TextOr(u"version", "");
    parts.name = model.TextOr(u"modelName", "");
    parts.algorithm = model.TextOr(u"algorithmName", "");
    parts.function = model.OneOf(u"functionName", kFunctions);
    if (!model.FlagOr(u"isScorable", true)) {
        Raise<Message::UNSUPPORTED_VALUE_IN>(model.Text(u"isScorable"), "isScorable", parts.tag, "true");
    }
    const Completed completed = Complete(root, model);
    parts.dictionary.reset(ParseDictionary(root.RequireChild(u"DataDictionary").Dom(), false));
    parts.schema = ReadMiningSchema(model, *parts.dictionary);
    const std::string& target = parts.schema.target;
    PrepareTargets(model, parts.IsClassification(), *parts.dictionary);
    OwnTarget own;
    if (target.empty()) {
        own = TakeOwnTarget(model, parts.IsClassification(), *this);
    }
    const bool isListed = !target.empty() && ListsValues(*parts.dictionary->GetVar(target));
    const Element targets = model.Child(u"Targets");
    HandleTargets(targets ? targets.Dom() : nullptr, parts.dictionary.get());
    parts.derived.reset(HandleTransformationDictionary(completed.derivedFields.Dom(), parts.dictionary.get()));
    if (parts.derived != nullptr) {
        parts.derived->SetUpDerivedCaseRecord();
    }
    parts.inputs = std::make_unique<Inputs>(parts.schema, completed.validities, *parts.dictionary, parts.derived.get());
    parts.inputs->SetBooleans(completed.booleans);
    if (target.empty()) {
        parts.target = std::make_unique<Target>(std::move(own));
    } else {
        parts.target = std::make_unique<Target>(target, *parts.dictionary->GetVar(target), isListed);
        parts.target->Read(FindTarget(model, target));
    }
    return parts;
}

} // namespace veltrane_kit
