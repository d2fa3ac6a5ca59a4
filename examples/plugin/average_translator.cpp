#include "average_model.h"

#include <xercesc/dom/DOM.hpp>

using namespace MCVeltrane_900;

namespace {

/// Reads a document with a WeightedAverageModel:
///
///     <WeightedAverageModel functionName="regression" target="grade">
///       <Term field="theory" weight="2"/>
///       <Term field="practice" weight="1"/>
///     </WeightedAverageModel>
class AverageTranslator : public PMMLTranslator {
public:
    using PMMLTranslator::ParseFromTree;

    /// The road of a document; the factory deletes the DOM afterwards, so the model keeps nothing of it.
    ScoreModel* ParseFromTree(xercesc::DOMDocument* document, const std::string& encoding) override {
        CreateTranscoder(encoding);
        xercesc::DOMElement* root = document->getDocumentElement();
        auto model = std::make_unique<AverageModel>();
        model->SetScoreDictionary(ParseDictionary(GetChildByTagForced(root, "DataDictionary"), true));
        if (auto* derived = HandleTransformationDictionary(root, model->GetDictionary())) {
            model->SetTransformationScoreDictionary(derived);
            derived->SetUpDerivedCaseRecord(); // once, when all fields are there
        }
        ReadModel(static_cast<xercesc::DOMElement*>(GetChildByTagForced(root, "WeightedAverageModel")), *model);
        return model.release();
    }

private:
    void ReadModel(xercesc::DOMElement* element, AverageModel& model) {
        model.SetMiningFunction(
            BaseModel::MiningFunctionFromString(ToString(GetAttributeForced(element, "functionName"))));
        const std::string target = ToString(GetAttributeForced(element, "target"));
        if (!model.GetDictionary()->GetVar(target)) {
            FailOn(target);
        }
        model.SetVarRole(target, ScoreModel::ROLE_TARGET);
        HandleTargets(static_cast<xercesc::DOMElement*>(GetChildByTag(element, "Targets")),
                      const_cast<ScoreDictionary*>(model.GetDictionary()));
        for (auto* child = GetFirstChildElt(element); child; child = GetNextSiblingElt(child)) {
            if (XStrEqualsUTF8Str(child->getNodeName(), "Term")) {
                ReadTerm(static_cast<xercesc::DOMElement*>(child), model);
            }
        }
    }

    void ReadTerm(xercesc::DOMElement* element, AverageModel& model) {
        const std::string name = ToString(GetAttributeForced(element, "field"));
        const ScoreDictVar* field = model.GetDictionary()->GetVar(name);
        if (!field && model.GetTransformationDictionary()) {
            field = model.GetTransformationDictionary()->GetVar(name);
        }
        if (!field || field->GetVarType() != ScoreDictVar::kNUMERIC_VAR) {
            FailOn(name);
        }
        const XMLCh* weight = GetAttributeForced(element, "weight");
        const double number = VerifyDouble(weight);
        if (!(number > 0)) {
            VTException failure;
            failure.PutErrorMessage(static_cast<int>(Message::INVALID_ATTRIBUTE_VALUE), ToString(weight).c_str(),
                                    "weight");
            throw failure;
        }
        model.AddTerm(*field, number);
    }

    /// Failures are catalogued: the host shows a number and a text.
    [[noreturn]] static void FailOn(const std::string& field) {
        VTException failure;
        failure.PutErrorMessage(static_cast<int>(Message::MISSING_VARIABLE_IN_BOTH), field.c_str(), "DataDictionary",
                                "TransformationDictionary");
        throw failure;
    }
};

} // namespace

/// The one symbol that the factory needs: a new translator, which the factory deletes.
extern "C" __attribute__((visibility("default"))) ScoreTranslator* GiveMyTranslator() {
    return new AverageTranslator;
}
