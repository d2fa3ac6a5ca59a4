#include <MCScore/MCStatus.h>
#include <MCVeltrane_900/BaseModel.h>
#include <MCVeltrane_900/DateTimeValue.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/PMMLTranslator.h>
#include <MCVeltrane_900/ResultField.h>
#include <MCVeltrane_900/ScoreCaseRecord.h>
#include <MCVeltrane_900/ScoreDictionary.h>
#include <MCVeltrane_900/ScoreRegResult.h>
#include <MCVeltrane_900/StringValue.h>

#include <xercesc/dom/DOM.hpp>

#include <memory>
#include <string>
#include <vector>

/// A plug-in that scores case by case alone. It predicts how many cases it has seen; a case whose field `x` is negative
/// has no prediction, and one whose `x` is 1000 makes it throw. Its output fields tell each field as it came, as a
/// text with its kind, and as it is; with an attribute "typed" they are of their fields' types.
namespace {

using namespace MCVeltrane_900;

/// Nothing that a host could know.
struct ForeignException {};

class RowsResult : public ScoreRegResult {
public:
    void SetResultValue(ScoreValue* value) override { fValue.reset(value ? value->Clone() : nullptr); }
    const ScoreValue* GetResultValue() const override { return fValue.get(); }
    ScoreResultField* GetResultFields() override { return &fFields; }
    void SetResultConfidence(double) override {}
    double GetResultConfidence() const override { return 1; }
    int GetResultKind() override { return 1; }
    void SetStandardError(double) override {}
    double GetStandardError() const override { return 0; }

private:
    std::unique_ptr<ScoreValue> fValue;
    ResultField fFields;
};

/// A result that lies about its kind.
class LyingResult : public RowsResult {
    int GetResultKind() override { return 0; }
};

std::string Shown(const ScoreValue* value) {
    if (value == nullptr) {
        return "none";
    }
    if (const auto* text = dynamic_cast<const StringValue*>(value)) {
        return "text " + text->GetString() + "," + std::to_string(text->GetLength());
    }
    if (const auto* moment = dynamic_cast<const DateTimeValue*>(value)) {
        return "moment " + std::to_string(moment->GetDateTimeType()) + "," + moment->GetNumericString();
    }
    return "number " + NumericValue(value->GetDouble()).GetString();
}

class RowsModel : public BaseModel {
public:
    explicit RowsModel(std::string fault) : fFault(std::move(fault)) {}

    bool SetOption(const std::string& name, const std::string& value) override {
        return name == "unreadableValues" && value == "invalid" && fFault != "knows no option";
    }
    std::vector<std::string> GetInputNames() const override { return {"x", "no field"}; }
    ScoreResult* CreateResult() const override {
        return fFault == "no result" ? nullptr : fFault == "a lie" ? new LyingResult : new RowsResult;
    }

    MCScore::MCStatus Score(const ScoreCaseRecord* record, ScoreResult* result) override {
        const ScoreValue* x = record->Get("x");
        if (x != nullptr && x->GetDouble() == 1000) {
            throw ForeignException();
        }
        NumericValue count(++fCount);
        result->SetResultValue(&count);
        for (const std::string& name : GetDictionary()->GetVarNames()) {
            const ScoreValue* value = record->Get(name);
            result->GetResultFields()->SetResultValue("seen " + name, Shown(value));
            Put(*result->GetResultFields(), name,
                value == nullptr ? std::make_unique<StringValue>("") : std::unique_ptr<ScoreValue>(value->Clone()));
        }
        return MCScore::MCStatus(7, !(x != nullptr && !x->IsSystemMissingValue() && x->GetDouble() < 0));
    }

    bool SkipsCategoryProbabilities() override { return false; }
    void Display(std::ostream&) const override {}

private:
    static void Put(ScoreResultField& fields, const std::string& name, std::unique_ptr<ScoreValue> value) {
        auto values = fields.GetMapResultValue();
        delete values[name];
        values[name] = value.release();
        fields.SetMapResultValue(values);
    }

    std::string fFault;
    double fCount = 0;
};

class RowsTranslator : public PMMLTranslator {
public:
    using PMMLTranslator::ParseFromTree;

    ScoreModel* ParseFromTree(xercesc::DOMDocument* document, const std::string& encoding) override {
        CreateTranscoder(encoding);
        xercesc::DOMElement* root = document->getDocumentElement();
        auto* element = static_cast<xercesc::DOMElement*>(GetChildByTagForced(root, "RowsModel"));
        auto model = std::make_unique<RowsModel>(ToString(GetAttribute(element, "fault")));
        model->SetScoreDictionary(ParseDictionary(GetChildByTagForced(root, "DataDictionary"), false));
        model->SetVarRole(ToString(GetAttribute(element, "target")), ScoreModel::ROLE_TARGET);
        if (auto* results = ParseResultDictionary(element)) {
            model->SetResultScoreDictionary(results);
            if (!ToString(GetAttribute(element, "typed")).empty()) {
                SetTypes(*model->GetDictionary(), *results);
            }
        }
        return model.release();
    }

private:
    /// The library takes output fields for texts or numbers.
    static void SetTypes(const ScoreDictionary& fields, ScoreDictionary& results) {
        for (const std::string& name : fields.GetVarNames()) {
            if (ScoreDictVar* result = results.GetVar(name)) {
                result->SetVarType(fields.GetVar(name)->GetVarType());
                result->SetDateTimeType(fields.GetVar(name)->GetDateTimeType());
            }
        }
    }
};

} // namespace

extern "C" VELTRANE_API ScoreTranslator* GiveMyTranslator() {
    return new RowsTranslator;
}
