#include <veltrane.h>

#include <xercesc/dom/DOM.hpp>

#include <memory>
#include <ostream>

/// A plug-in for the tests of hosts. Its model predicts twice the number x: a case without x has no prediction, one
/// with a negative x fails with the status 7. The option "factor" takes the place of two. An attribute "fault" makes
/// the plug-in break its side of the contract in one of the ways that a host has to survive.
namespace {

using namespace MCVeltrane_900;

/// Nothing that a host could know.
struct ForeignException {};

class NumberResult : public ScoreRegResult {
public:
    explicit NumberResult(int kind) : fKind(kind) {
        fFields.SetResultValue("Half", NumericValue::GetSysmisValue());
        fFields.SetResultValue("Size", std::string());
    }

    void SetResultValue(ScoreValue* value) override { fValue.reset(value ? value->Clone() : nullptr); }
    const ScoreValue* GetResultValue() const override { return fValue.get(); }
    ScoreResultField* GetResultFields() override { return &fFields; }
    void SetResultConfidence(double) override {}
    double GetResultConfidence() const override { return 1; }
    int GetResultKind() override { return fKind; }
    void SetStandardError(double) override {}
    double GetStandardError() const override { return 0; }

private:
    int fKind;
    std::unique_ptr<ScoreValue> fValue;
    ResultField fFields;
};

class ScriptedModel : public BaseModel {
public:
    explicit ScriptedModel(std::string fault) : fFault(std::move(fault)) {}

    bool SetOption(const std::string& name, const std::string& value) override {
        if (name != "factor") {
            return false;
        }
        fFactor = NumericValue(value).GetDouble();
        return !NumericValue::IsSystemMissingValue(fFactor);
    }

    std::vector<std::string> GetInputNames() const override { return {"x"}; }

    ScoreResult* CreateResult() const override {
        if (fFault == "no result") {
            return nullptr;
        }
        return new NumberResult(fFault == "a lie" ? 0 : fFault == "no kind" ? 28 : 1);
    }

    MCScore::MCStatus Score(const ScoreCaseRecord* record, ScoreResult* result) override {
        if (fFault == "throws at a case") {
            throw ForeignException();
        }
        if (fFault == "no prediction") {
            result->SetResultValue(nullptr);
            return {};
        }
        const ScoreValue* x = record->Get("x");
        if (!x || x->IsSystemMissingValue()) {
            return HandleMissingValue(result);
        }
        if (x->GetDouble() < 0) {
            return Refused();
        }
        NumericValue predicted(fFactor * x->GetDouble());
        result->SetResultValue(&predicted);
        result->GetResultFields()->SetResultValue("Half", x->GetDouble() / 2);
        result->GetResultFields()->SetResultValue("Size", std::string(x->GetDouble() > 10 ? "big, or so" : "small"));
        return fFault == "warns" ? MCScore::MCStatus(8, true) : MCScore::MCStatus();
    }

    bool SkipsCategoryProbabilities() override { return false; }
    void Display(std::ostream& out) const override { out << "scripted\n"; }

private:
    /// With the fault "tells" it says which field is to blame, with "tells nonsense" one that isn't there.
    MCScore::MCStatus Refused() const {
        MCScore::MCStatus status(7, false);
        if (fFault.starts_with("tells")) {
            status.SetDiscreteDatum(0, 900902);
            status.SetDiscreteDatum(1, fFault == "tells" ? 0 : 1000);
        }
        return status;
    }

    std::string fFault;
    double fFactor = 2;
};

class ScriptedTranslator : public PMMLTranslator {
public:
    using PMMLTranslator::ParseFromTree;

    ScoreModel* ParseFromTree(xercesc::DOMDocument* document, const std::string& encoding) override {
        CreateTranscoder(encoding);
        xercesc::DOMElement* root = document->getDocumentElement();
        auto* element = static_cast<xercesc::DOMElement*>(GetChildByTagForced(root, "ScriptedModel"));
        const std::string fault = ToString(GetAttribute(element, "fault"));
        if (fault == "no model") {
            return nullptr;
        }
        if (fault == "throws at the document") {
            throw ForeignException();
        }
        auto model = std::make_unique<ScriptedModel>(fault);
        if (fault == "no dictionary") {
            return model.release();
        }
        model->SetScoreDictionary(ParseDictionary(GetChildByTagForced(root, "DataDictionary"), true));
        model->SetVarRole(ToString(GetAttribute(element, "target")), ScoreModel::ROLE_TARGET);
        if (auto* results = ParseResultDictionary(element)) {
            model->SetResultScoreDictionary(results);
        }
        return model.release();
    }
};

} // namespace

extern "C" VELTRANE_API ScoreTranslator* GiveMyTranslator() {
    return new ScriptedTranslator;
}
