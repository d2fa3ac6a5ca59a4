#include "foreign_model.h"

#include "kit/document/raise.h"
#include "kit/inputs/host_values.h"
#include "kit/model/completion.h"

#include <MCVeltrane_900/CaseRecord.h>
#include <MCVeltrane_900/DictVar.h>
#include <MCVeltrane_900/ModelFactory.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/ScoreClsResult.h>
#include <MCVeltrane_900/ScoreModel.h>
#include <MCVeltrane_900/ScoreRegResult.h>

#include <cmath>
#include <mutex>
#include <ostream>
#include <string>
#include <utility>

namespace veltrane_mining {

using namespace MCVeltrane_900;
using veltrane_kit::CaseView;
using veltrane_kit::Element;
using veltrane_kit::Inputs;
using veltrane_kit::Message;
using veltrane_kit::ModelParts;
using veltrane_kit::Prediction;
using veltrane_kit::RaiseAt;
using veltrane_kit::Target;

namespace {

/// A field that the model asks for.
struct Input {
    std::string name;
    int slot;
};

/// A case as the model gets it: a value that is missing is null.
class ForeignRecord : public CaseRecord {
public:
    explicit ForeignRecord(const std::vector<Input>& inputs) : fInputs(inputs), fGiven(inputs.size()) {
        for (const Input& input : inputs) {
            Add(input.name, std::make_unique<NumericValue>().release());
        }
    }

    void Take(const CaseView& fields) {
        for (std::size_t i = 0; i < fInputs.size(); ++i) {
            fGiven[i] = ToHost(fields[fInputs[i].slot]);
        }
    }

    const ScoreValue* Get(int index) const override {
        const auto place = static_cast<std::size_t>(index);
        return index >= 0 && place < fGiven.size() ? fGiven[place].get() : nullptr;
    }
    const ScoreValue* Get(const std::string& name) const override { return Get(GetIndex(name)); }

private:
    const std::vector<Input>& fInputs;
    std::vector<std::unique_ptr<ScoreValue>> fGiven;
};

/// The model of another plug-in. It belongs to one thread at a time, so threads wait for each other.
class ForeignScorer : public veltrane_kit::Scorer {
public:
    ForeignScorer(std::unique_ptr<ScoreDictionary> dictionary, std::unique_ptr<ScoreModel> model,
                  std::vector<Input> inputs, const ModelParts& parts)
        : fDictionary(std::move(dictionary)), fModel(std::move(model)), fInputs(std::move(inputs)),
          fTarget(*parts.target), fIsClassification(parts.IsClassification()) {}

    std::unique_ptr<State> NewState() const override {
        return std::make_unique<Case>(fInputs, std::unique_ptr<ScoreResult>(fModel->CreateResult()));
    }

    bool Predict(const CaseView& fields, Prediction& prediction, State& state) const override {
        auto& own = static_cast<Case&>(state);
        own.record.Take(fields);
        const std::lock_guard<std::mutex> lock(fMutex);
        if (!fModel->Score(&own.record, own.result.get()).IsOK()) {
            return false;
        }
        const ScoreValue* value = own.result->GetResultValue();
        if (value == nullptr) {
            return false;
        }
        return fIsClassification ? TakeCategory(*value, *own.result, prediction)
                                 : TakeNumber(*value, *own.result, prediction);
    }

    void Display(std::ostream& out, const Target& /*target*/) const override { fModel->Display(out); }

private:
    struct Case : State {
        Case(const std::vector<Input>& inputs, std::unique_ptr<ScoreResult> empty)
            : record(inputs), result(std::move(empty)) {}

        ForeignRecord record;
        std::unique_ptr<ScoreResult> result;
    };

    static bool TakeNumber(const ScoreValue& value, const ScoreResult& result, Prediction& prediction) {
        if (const auto* regression = dynamic_cast<const ScoreRegResult*>(&result); regression != nullptr) {
            const double error = regression->GetStandardError();
            prediction.standardError = std::isfinite(error) ? error : Prediction::kNone;
        }
        prediction.number = value.GetType() == ScoreValue::STRING_VALUE ? Prediction::kNone : value.GetDouble();
        return prediction.number != Prediction::kNone && std::isfinite(prediction.number);
    }

    bool TakeCategory(const ScoreValue& value, const ScoreResult& result, Prediction& prediction) const {
        prediction.category = fTarget.Find(value);
        const auto* categories = dynamic_cast<const ScoreClsResult*>(&result);
        for (std::size_t code = 0; categories != nullptr && code < prediction.probabilities.size(); ++code) {
            prediction.probabilities[code] =
                categories->GetCategoryProbability(&fTarget.Category(static_cast<int>(code)));
        }
        return prediction.category >= 0;
    }

    std::unique_ptr<ScoreDictionary> fDictionary; ///< outlives the model
    std::unique_ptr<ScoreModel> fModel;
    std::vector<Input> fInputs;
    const Target& fTarget;
    bool fIsClassification;
    mutable std::mutex fMutex;
};

ScoreDictVar::VariableType KindOf(veltrane_kit::DataType type) {
    switch (veltrane_kit::HostKindOf(type)) {
    case ScoreValue::STRING_VALUE:
        return ScoreDictVar::STRING_VAR;
    case ScoreValue::DATETIME_VALUE:
        return ScoreDictVar::DATETIME_VAR;
    default:
        return ScoreDictVar::kNUMERIC_VAR;
    }
}

/// The data dictionary, with what the outer model derives and its segments have told as fields too.
std::unique_ptr<ScoreDictionary> DictionaryFor(ModelParts& outer) {
    std::unique_ptr<ScoreDictionary> dictionary(outer.dictionary->Clone());
    for (const std::string& name : outer.inputs->NamesForPart()) {
        if (const auto found = outer.inputs->FindForPart(name); found && dictionary->GetVar(name) == nullptr) {
            auto var = std::make_unique<DictVar>(name, KindOf(outer.inputs->Type(found->slot)));
            dictionary->AddVar(name, var.release());
        }
    }
    return dictionary;
}

std::vector<Input> FindInputs(const Element& element, const ScoreModel& model, Inputs& outer) {
    std::vector<Input> inputs;
    for (const std::string& name : model.GetInputNames()) {
        const auto found = outer.FindForPart(name);
        if (!found) {
            RaiseAt<Message::MISSING_VARIABLE>(element.Tag(), nullptr, name, "MiningSchema");
        }
        outer.Derived().Need(found->slot);
        inputs.push_back({name, found->slot});
    }
    return inputs;
}

/// The target of the outer model where the predictions are of its kind; the segment's own otherwise.
std::unique_ptr<Target> TargetFor(const ModelParts& parts, const ScoreResult& result) {
    const std::string& name = parts.schema.target;
    std::unique_ptr<Target> target =
        name.empty() ? std::make_unique<Target>(Element(), parts.IsClassification())
                     : std::make_unique<Target>(*parts.dictionary->GetVar(name), parts.fields->at(name));
    if (const auto* categories = dynamic_cast<const ScoreClsResult*>(&result)) {
        for (const ScoreValue* category : categories->GetCategories()) {
            target->Learn(*category);
        }
    }
    return target;
}

} // namespace

std::unique_ptr<const veltrane_kit::ModelPlan> CompleteForeign(const Element& element, ModelParts& outer,
                                                               const std::vector<Element>& asked) {
    std::unique_ptr<ScoreDictionary> dictionary = DictionaryFor(outer);
    std::unique_ptr<ScoreModel> model(
        ModelFactory::MakeModelFromXML(static_cast<void*>(element.Dom()), outer.document->modelNames, dictionary.get(),
                                       static_cast<ScoreDictionary*>(nullptr), outer.document->encoding));
    const std::unique_ptr<ScoreResult> result(model == nullptr ? nullptr : model->CreateResult());
    if (result == nullptr) {
        RaiseAt<Message::CANNOT_BUILD_MODEL>(element.Tag(), nullptr);
    }
    const bool isClassification = dynamic_cast<const ScoreClsResult*>(result.get()) != nullptr;
    if (!isClassification && dynamic_cast<const ScoreRegResult*>(result.get()) == nullptr) {
        RaiseAt<Message::UNSUPPORTED_MODEL>("Segment", nullptr, element.Tag());
    }
    ModelParts parts;
    parts.tag = element.Tag();
    parts.function = !isClassification      ? BaseModel::FUNC_REGRESSION
                     : outer.IsClustering() ? BaseModel::FUNC_CLUSTERING
                                            : BaseModel::FUNC_CLASSIFICATION;
    parts.version = outer.version;
    parts.fields = outer.fields;
    parts.dictionary = outer.dictionary;
    parts.schema.target = isClassification == outer.IsClassification() ? outer.schema.target : "";
    parts.target = TargetFor(parts, *result);
    parts.inputs = std::make_unique<Inputs>(parts.schema, *parts.dictionary, *outer.inputs);
    parts.inputs->Layout().needsOrder = true;
    std::vector<Input> inputs = FindInputs(element, *model, *outer.inputs);
    parts.scorer =
        std::make_unique<const ForeignScorer>(std::move(dictionary), std::move(model), std::move(inputs), parts);
    parts.outputs = std::make_unique<veltrane_kit::Outputs>(Element(), isClassification, *parts.inputs, *parts.target,
                                                            parts.told, asked);
    parts.outputs->TellFields();
    return std::make_unique<const veltrane_kit::ModelPlan>(std::move(parts));
}

} // namespace veltrane_mining
