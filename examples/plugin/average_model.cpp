#include "average_model.h"

#include <cmath>
#include <ostream>

using namespace MCVeltrane_900;

void AverageResult::SetResultValue(ScoreValue* value) {
    fOther.reset(value ? value->Clone() : nullptr);
    fResult = fOther.get();
}

const ScoreValue* AverageResult::GetResultValue() const {
    return fResult;
}

void AverageResult::SetNumber(double number) {
    fNumber.SetDoubleValue(number);
    fResult = &fNumber;
}

void AverageModel::AddTerm(const ScoreDictVar& field, double weight) {
    fTerms.push_back({&field, weight});
    SetVarRole(&field, ROLE_INPUT);
}

bool AverageModel::SetOption(const std::string& name, const std::string& value) {
    if (name != "rounded" || (value != "true" && value != "false")) {
        return false;
    }
    fRounded = value == "true";
    return true;
}

std::vector<std::string> AverageModel::GetInputNames() const {
    std::vector<std::string> names;
    for (const std::string& name : GetDictionary()->GetVarNames()) {
        if (GetVarRole(name) != ROLE_TARGET) {
            names.push_back(name);
        }
    }
    return names;
}

MCScore::MCStatus AverageModel::Score(const ScoreCaseRecord* record, ScoreResult* result) {
    // Once for each case, in the order of the cases: derived fields may look back.
    const ScoreCaseRecord* derived = nullptr;
    if (TransformationDictionary* fields = GetTransformationDictionary()) {
        derived = fields->GetValuesForDerivedVars(record, GetDictionary());
    }
    double sum = 0;
    double weights = 0;
    for (const Term& term : fTerms) {
        // A derived field knows its place in the derived record; a field of the data is asked for by its name here,
        // since a host lays out its record as it likes.
        const ScoreValue* value = term.field->IsDerivedVariable() ? derived->Get(term.field->GetValueIndex())
                                                                  : record->Get(term.field->GetName());
        if (term.field->IsMissingValue(value)) {
            continue;
        }
        sum += term.weight * value->GetDouble();
        weights += term.weight;
    }
    if (weights == 0) {
        return HandleMissingValue(result);
    }
    const double average = sum / weights;
    static_cast<AverageResult*>(result)->SetNumber(fRounded ? std::round(average) : average);
    return {};
}

void AverageModel::Display(std::ostream& out) const {
    for (const Term& term : fTerms) {
        out << term.field->GetName() << " * " << term.weight << '\n';
    }
}
