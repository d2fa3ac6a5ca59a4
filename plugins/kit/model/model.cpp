#include "kit/model/model.h"

#include <MCVeltrane_900/ScoreValueProbability.h>
#include <MCVeltrane_900/ScoreValueProbabilitySet.h>
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

} // namespace

Model::~Model() = default;

void Model::Adopt(ModelParts parts) {
    fTag = std::move(parts.tag);
    fName = std::move(parts.name);
    SetAlgorithmName(parts.algorithm);
    SetMiningFunction(parts.function);
    fIsClassification = parts.function == FUNC_CLASSIFICATION;
    SetVersionInfo(new VersionInfo(parts.version));
    SetScoreDictionary(parts.dictionary.release());
    SetTransformationScoreDictionary(parts.derived.release());
    SetResultScoreDictionary(parts.outputs->MakeDictionary().release());
    for (const MiningField& field : parts.schema.fields) {
        if (field.role != ROLE_TARGET || field.name == parts.schema.target) {
            SetVarRole(field.name, field.role);
        }
    }
    if (!parts.schema.target.empty()) {
        SetVarRole(parts.schema.target, ROLE_TARGET);
    }
    fFields = std::move(parts.fields);
    fInputs = std::move(parts.inputs);
    fTarget = std::move(parts.target);
    fOutputs = std::move(parts.outputs);

    auto layout = std::make_shared<ResultLayout>();
    for (int code = 0; fIsClassification && code < fTarget->CategoryCount(); ++code) {
        layout->categories.emplace_back(fTarget->Category(code).Clone());
    }
    layout->outputs = fOutputs->Layout();
    fLayout = std::move(layout);
}

bool Model::SetOption(const std::string& name, const std::string& value) {
    if (name == kUnreadableOption) {
        return value == "invalid";
    }
    if (name != kPolicyOption) {
        return SetModelOption(name, value);
    }
    if (value != "noPrediction" && value != "defaultPrediction") {
        return false;
    }
    SetMissingValuePolicy(value == "noPrediction" ? MV_NO_PREDICTION : MV_DEFAULT_PREDICTION);
    return true;
}

bool Model::SetModelOption(const std::string&, const std::string&) {
    return false;
}

std::vector<std::string> Model::GetInputNames() const {
    return fInputs->NeededNames();
}

ScoreResult* Model::CreateResult() const {
    if (fIsClassification) {
        return new ClassificationResult(fLayout);
    }
    return new RegressionResult(fLayout);
}

MCScore::MCStatus Model::Score(const ScoreCaseRecord* record, ScoreResult* result) {
    if (record == nullptr || result == nullptr) {
        return NoPrediction();
    }
    fPrediction.Clear(fLayout->categories.size());
    MCScore::MCStatus status;
    if (PredictCase(*record)) {
        Report(*result);
    } else {
        status = PredictDefault(*result);
    }
    fInputs->EndCase();
    return status;
}

/// A case without a prediction, and why.
MCScore::MCStatus Model::Unscored(int lacking) const {
    MCScore::MCStatus status = NoPrediction();
    fInputs->WhyUnscored(lacking).WriteTo(status);
    return status;
}

bool Model::PredictCase(const ScoreCaseRecord& record) {
    if (!fInputs->Read(record) || !Predict(*fInputs, fPrediction)) {
        return false;
    }
    if (fIsClassification) {
        return fPrediction.category != Prediction::kNoCategory;
    }
    if (fPrediction.number == Prediction::kNone) {
        return false;
    }
    fPrediction.number = fTarget->Adjust(fPrediction.number);
    return std::isfinite(fPrediction.number);
}

void Model::Report(ScoreResult& result) {
    OutputValues* outputs = OwnOutputs(result);
    if (outputs == nullptr) {
        ReportToForeign(result);
        return;
    }
    if (fIsClassification) {
        auto& own = static_cast<ClassificationResult&>(result);
        own.Clear();
        own.Value().Set(&fTarget->Category(fPrediction.category));
        own.SetProbabilities(fPrediction.probabilities);
        own.SetResultConfidence(fPrediction.ProbabilityOf(fPrediction.category));
    } else {
        auto& own = static_cast<RegressionResult&>(result);
        own.Clear();
        own.Value().SetNumber(fPrediction.number);
    }
    fOutputs->Fill(result.GetResultValue(), fPrediction, *fInputs, *fTarget, *outputs);
}

/// A result that this model didn't make: everything goes by its operations, outputs by name.
void Model::ReportToForeign(ScoreResult& result) {
    Clear(result);
    if (fIsClassification) {
        result.SetResultValue(Lend(fTarget->Category(fPrediction.category)));
        result.SetResultConfidence(fPrediction.ProbabilityOf(fPrediction.category));
        auto* categories = dynamic_cast<ScoreClsResult*>(&result);
        for (int code = 0; categories != nullptr && code < fTarget->CategoryCount(); ++code) {
            categories->SetCategoryProbability(Lend(fTarget->Category(code)), fPrediction.ProbabilityOf(code));
        }
    } else {
        NumericValue value(fPrediction.number);
        result.SetResultValue(&value);
    }
    FillOutputs(result.GetResultValue(), result);
}

/// What a case gets that can't be scored: by the policy the target's default, or nothing.
MCScore::MCStatus Model::PredictDefault(ScoreResult& result) {
    const int lacking = fPrediction.lacking;
    fPrediction.Clear(fLayout->categories.size());
    Clear(result);
    MCScore::MCStatus status = NoPrediction();
    if (GetMissingValuePolicy() == MV_DEFAULT_PREDICTION && !fInputs->HasOtherLayout()) {
        status = fTarget->IsOwn() ? TakeOwnDefault(result) : HandleMissingValue(&result);
        TakeDefault(result);
    }
    FillOutputs(result.GetResultValue(), result);
    return status.IsError() ? Unscored(lacking) : status;
}

/// What HandleMissingValue gives for a target in the dictionary, for one that no field holds.
MCScore::MCStatus Model::TakeOwnDefault(ScoreResult& result) const {
    if (fIsClassification) {
        return TakeOwnPriors(result);
    }
    const ScoreValue* value = fTarget->Var().GetDefValue();
    if (value == nullptr) {
        return NoPrediction();
    }
    result.SetResultValue(Lend(*value));
    return MCScore::MCStatus();
}

MCScore::MCStatus Model::TakeOwnPriors(ScoreResult& result) const {
    const ScoreValueProbabilitySet* priors = fTarget->Var().GetValueProbabilities();
    if (priors == nullptr) {
        return NoPrediction();
    }
    auto* categories = dynamic_cast<ScoreClsResult*>(&result);
    double best = 0.0;
    for (const ScoreValueProbability* prior : priors->GetAllValueProbabilities()) {
        if (categories != nullptr) {
            categories->SetCategoryProbability(Lend(*prior->GetValue()), prior->GetProbability());
        }
        if (prior->GetProbability() > best) {
            best = prior->GetProbability();
            result.SetResultValue(Lend(*prior->GetValue()));
            result.SetResultConfidence(best);
        }
    }
    return MCScore::MCStatus();
}

/// Makes a prediction of what the result holds, for the output fields. A category without a prior has no share.
void Model::TakeDefault(ScoreResult& result) {
    const ScoreValue* value = result.GetResultValue();
    if (value == nullptr) {
        return;
    }
    if (!fIsClassification) {
        fPrediction.number = value->GetDouble();
        return;
    }
    fPrediction.category = fTarget->Find(*value);
    std::vector<double>& probabilities = fPrediction.probabilities;
    const auto* categories = dynamic_cast<ScoreClsResult*>(&result);
    if (OwnOutputs(result) != nullptr) {
        const std::vector<double>& own = static_cast<const ClassificationResult&>(result).Probabilities();
        std::copy_n(own.begin(), probabilities.size(), probabilities.begin());
    } else if (categories != nullptr) {
        for (std::size_t code = 0; code < probabilities.size(); ++code) {
            probabilities[code] = categories->GetCategoryProbability(&fTarget->Category(static_cast<int>(code)));
        }
    }
    if (std::any_of(probabilities.begin(), probabilities.end(), [](double p) { return p != Prediction::kNone; })) {
        std::replace(probabilities.begin(), probabilities.end(), Prediction::kNone, 0.0);
    }
}

/// The output fields of a result that this model has made; null for any other result.
OutputValues* Model::OwnOutputs(ScoreResult& result) const {
    if (fIsClassification) {
        auto* own =
            typeid(result) == typeid(ClassificationResult) ? static_cast<ClassificationResult*>(&result) : nullptr;
        return own != nullptr && own->IsOf(*fLayout) ? &own->Outputs() : nullptr;
    }
    auto* own = typeid(result) == typeid(RegressionResult) ? static_cast<RegressionResult*>(&result) : nullptr;
    return own != nullptr && own->IsOf(*fLayout) ? &own->Outputs() : nullptr;
}

void Model::FillOutputs(const ScoreValue* value, ScoreResult& result) {
    if (fOutputs->IsEmpty()) {
        return;
    }
    if (OutputValues* own = OwnOutputs(result); own != nullptr) {
        fOutputs->Fill(value, fPrediction, *fInputs, *fTarget, *own);
        return;
    }
    if (fForeignOutputs == nullptr) {
        fForeignOutputs = std::make_unique<OutputValues>(*fLayout);
    }
    fOutputs->Fill(value, fPrediction, *fInputs, *fTarget, *fForeignOutputs);
    ScoreResultField* fields = result.GetResultFields();
    for (const auto& [name, output] : fForeignOutputs->GetMapResultValue()) {
        if (fields != nullptr) {
            fields->SetResultValue(name, output);
        }
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
    out << fTag << (fName.empty() ? "" : " \"" + fName + "\"") << "\n";
    out << "function: " << (fIsClassification ? "classification" : "regression") << "\n";
    if (!GetAlgorithmName().empty()) {
        out << "algorithm: " << GetAlgorithmName() << "\n";
    }
    out << "target: " << (fTarget->Name().empty() ? "none" : fTarget->Name()) << "\n";
    out << "inputs:";
    for (const std::string& name : fInputs->Names()) {
        out << " " << name;
    }
    out << "\n";
    DisplayModel(out);
}

void Model::DisplayModel(std::ostream&) const {}

} // namespace veltrane_kit
