#include "kit/model/model.h"

#include <MCVeltrane_900/TransformVar.h>
#include <MCVeltrane_900/TransformationDictionary.h>
#include <MCVeltrane_900/VersionInfo.h>

#include <algorithm>
#include <cmath>
#include <ostream>
#include <typeinfo>
#include <utility>

namespace veltrane_kit {

using namespace MCVeltrane_900;

namespace {

constexpr const char* kPolicyOption = "missingValuePolicy";
constexpr const char* kUnreadableOption = "unreadableValues";

/// A result takes its values by a pointer to non-const, and clones them.
ScoreValue* Lend(const ScoreValue& value) {
    return const_cast<ScoreValue*>(&value);
}

MCScore::MCStatus NoPrediction() {
    return MCScore::MCStatus(ScoreModel::NO_PREDICTION, false);
}

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

Model::Model(std::shared_ptr<const ModelPlan> plan) : fPlan(std::move(plan)), fState(*fPlan) {
    const ModelParts& parts = fPlan->Parts();
    SetAlgorithmName(parts.algorithm);
    SetMiningFunction(parts.function);
    SetVersionInfo(new VersionInfo(parts.version));
    SetScoreDictionary(parts.dictionary.get(), false);
    SetTransformationScoreDictionary(ListDerivedFields(fPlan->GetInputs()).release());
    SetResultScoreDictionary(fPlan->GetOutputs().MakeDictionary().release());
    for (const MiningField& field : parts.schema.fields) {
        if (field.role != ROLE_TARGET || field.name == parts.schema.target) {
            SetVarRole(field.name, field.role);
        }
    }
    if (!parts.schema.target.empty()) {
        SetVarRole(parts.schema.target, ROLE_TARGET);
    }
}

Model::~Model() = default;

bool Model::SetOption(const std::string& name, const std::string& value) {
    if (name == kUnreadableOption) {
        return value == "invalid";
    }
    if (name != kPolicyOption) {
        return false;
    }
    if (value != "noPrediction" && value != "defaultPrediction") {
        return false;
    }
    SetMissingValuePolicy(value == "noPrediction" ? MV_NO_PREDICTION : MV_DEFAULT_PREDICTION);
    return true;
}

std::vector<std::string> Model::GetInputNames() const {
    return fPlan->GetInputs().NeededNames();
}

ScoreResult* Model::CreateResult() const {
    if (fPlan->IsClassification()) {
        return new ClassificationResult(fPlan->Layout(), fPlan->Parts().IsClustering()
                                                             ? ClassificationResult::kClustering
                                                             : ClassificationResult::kKind);
    }
    return new RegressionResult(fPlan->Layout());
}

MCScore::MCStatus Model::Score(const ScoreCaseRecord* record, ScoreResult* result) {
    if (record == nullptr || result == nullptr) {
        return NoPrediction();
    }
    MCScore::MCStatus status;
    if (fPlan->Predict(*record, fState)) {
        if (GetMissingValuePolicy() == MV_DEFAULT_PREDICTION) {
            fPlan->CompleteOthers(fState.prediction.others);
        }
        Report(*result);
    } else {
        status = PredictDefault(*result);
    }
    fState.inputs.EndCase();
    return status;
}

/// A case without a prediction, and why.
MCScore::MCStatus Model::Unscored(int lacking) {
    MCScore::MCStatus status = NoPrediction();
    fPlan->GetInputs().WhyUnscored(lacking, fState.inputs).WriteTo(status);
    return status;
}

void Model::Report(ScoreResult& result) {
    OutputValues* outputs = OwnOutputs(result);
    if (outputs == nullptr) {
        ReportToForeign(result);
        return;
    }
    if (fPlan->IsClassification()) {
        auto& own = static_cast<ClassificationResult&>(result);
        own.SetPrediction(fState.prediction.category, fState.prediction.probabilities,
                          fState.prediction.ResultConfidence());
    } else {
        auto& own = static_cast<RegressionResult&>(result);
        own.Clear();
        own.Value().SetNumber(fState.prediction.number);
        own.SetStandardError(fState.prediction.standardError);
    }
    fPlan->GetOutputs().Fill(result.GetResultValue(), fState.prediction, fState.inputs.Case(), fPlan->GetTarget(),
                             *outputs);
}

/// A result that this model didn't make: everything goes by its operations, outputs by name.
void Model::ReportToForeign(ScoreResult& result) {
    Clear(result);
    if (fPlan->IsClassification()) {
        result.SetResultValue(Lend(fPlan->GetTarget().Category(fState.prediction.category)));
        result.SetResultConfidence(fState.prediction.ResultConfidence());
        auto* categories = dynamic_cast<ScoreClsResult*>(&result);
        for (int code = 0; categories != nullptr && code < fPlan->GetTarget().CategoryCount(); ++code) {
            categories->SetCategoryProbability(Lend(fPlan->GetTarget().Category(code)),
                                               fState.prediction.ProbabilityOf(code));
        }
    } else {
        NumericValue value(fState.prediction.number);
        result.SetResultValue(&value);
        if (auto* regression = dynamic_cast<ScoreRegResult*>(&result); regression != nullptr) {
            regression->SetStandardError(fState.prediction.standardError);
        }
    }
    FillOutputs(result.GetResultValue(), result);
}

/// What a case gets that can't be scored: by the policy the target's default, or nothing.
MCScore::MCStatus Model::PredictDefault(ScoreResult& result) {
    const int lacking = fState.prediction.lacking;
    const bool wantsDefault = GetMissingValuePolicy() == MV_DEFAULT_PREDICTION && !fState.inputs.HasOtherLayout();
    if (wantsDefault && fPlan->PredictDefault(fState.prediction)) {
        Report(result);
        return MCScore::MCStatus();
    }
    fState.prediction.Clear(fPlan->Probabilities());
    Clear(result);
    FillOutputs(nullptr, result);
    return Unscored(lacking);
}

/// The output fields of a result that this model has made; null for any other result.
OutputValues* Model::OwnOutputs(ScoreResult& result) const {
    if (fPlan->IsClassification()) {
        auto* own =
            typeid(result) == typeid(ClassificationResult) ? static_cast<ClassificationResult*>(&result) : nullptr;
        return own != nullptr && own->IsOf(*fPlan->Layout()) ? &own->Outputs() : nullptr;
    }
    auto* own = typeid(result) == typeid(RegressionResult) ? static_cast<RegressionResult*>(&result) : nullptr;
    return own != nullptr && own->IsOf(*fPlan->Layout()) ? &own->Outputs() : nullptr;
}

void Model::FillOutputs(const ScoreValue* value, ScoreResult& result) {
    if (fPlan->GetOutputs().IsEmpty()) {
        return;
    }
    if (OutputValues* own = OwnOutputs(result); own != nullptr) {
        FillOutputs(value, *own);
        return;
    }
    if (fForeignOutputs == nullptr) {
        fForeignOutputs = std::make_unique<OutputValues>(*fPlan->Layout());
    }
    FillOutputs(value, *fForeignOutputs);
    ScoreResultField* fields = result.GetResultFields();
    for (const auto& [name, output] : fForeignOutputs->GetMapResultValue()) {
        if (fields != nullptr) {
            fields->SetResultValue(name, output);
        }
    }
}

/// Of a case that was refused for its layout nothing was read: what is known are the values of the one before it.
void Model::FillOutputs(const ScoreValue* value, OutputValues& outputs) {
    if (fState.inputs.HasOtherLayout()) {
        outputs.Clear();
    } else {
        fPlan->GetOutputs().Fill(value, fState.prediction, fState.inputs.Case(), fPlan->GetTarget(), outputs);
    }
}

void Model::Clear(ScoreResult& result) {
    if (typeid(result) == typeid(ClassificationResult)) {
        static_cast<ClassificationResult&>(result).Clear();
    } else if (typeid(result) == typeid(RegressionResult)) {
        static_cast<RegressionResult&>(result).Clear();
    } else {
        result.SetResultValue(nullptr);
        result.SetResultConfidence(Prediction::kNone);
    }
}

void Model::Display(std::ostream& out) const {
    const ModelParts& parts = fPlan->Parts();
    out << parts.tag << (parts.name.empty() ? "" : " \"" + parts.name + "\"") << "\n";
    out << "function: "
        << (parts.IsClustering()        ? "clustering"
            : fPlan->IsClassification() ? "classification"
                                        : "regression")
        << "\n";
    if (!GetAlgorithmName().empty()) {
        out << "algorithm: " << GetAlgorithmName() << "\n";
    }
    out << "target: " << (fPlan->GetTarget().Name().empty() ? "none" : fPlan->GetTarget().Name()) << "\n";
    out << "inputs:";
    for (const std::string& name : fPlan->GetInputs().Names()) {
        out << " " << name;
    }
    out << "\n";
    fPlan->GetScorer().Display(out, fPlan->GetTarget());
}

} // namespace veltrane_kit
