#include "results/prediction_columns.h"

#include "results/result_columns.h"

#include <MCVeltrane_900/ScoreDictVar.h>
#include <MCVeltrane_900/ScoreDictionary.h>
#include <MCVeltrane_900/ScoreModel.h>
#include <MCVeltrane_900/ScoreResult.h>
#include <MCVeltrane_900/ScoreResultField.h>
#include <MCVeltrane_900/ScoreValue.h>

namespace veltrane::host {

using MCVeltrane_900::ScoreDictVar;
using MCVeltrane_900::ScoreModel;
using MCVeltrane_900::ScoreResult;
using MCVeltrane_900::ScoreResultField;

namespace {

DateForm DateFormOf(const ScoreDictVar* variable) {
    return variable ? host::DateFormOf(*variable) : DateForm::DATE_TIME;
}

} // namespace

PredictionColumns::PredictionColumns(const ScoreModel& model, ScoreResult& emptyResult) {
    if (const auto* dictionary = model.GetResultDictionary()) {
        for (const std::string& name : dictionary->GetVarNames()) {
            fOutputs.push_back({name, DateFormOf(dictionary->GetVar(name))});
        }
    } else if (const ScoreResultField* fields = emptyResult.GetResultFields()) {
        for (const std::string& name : fields->GetResultFields()) {
            fOutputs.push_back({name, DateForm::DATE_TIME});
        }
    }
    const ScoreDictVar* target = model.GetTargetVar();
    fTarget = target ? target->GetName() : "";
    fPredicted = {target ? fTarget : "prediction", DateFormOf(target)};
    for (const Column& output : fOutputs) {
        fOutputNames.push_back(output.name);
    }
    fNames.insert(fOutputNames.begin(), fOutputNames.end());
    while (fNames.count(fPredicted.name) > 0) {
        fPredicted.name = "predicted " + fPredicted.name;
    }
    fNames.insert(fPredicted.name);
}

void PredictionColumns::GiveWayTo(const std::unordered_set<std::string>& kept) {
    if (fTarget.empty() || kept.count(fTarget) == 0) {
        return;
    }
    fNames.erase(fPredicted.name);
    for (std::string& output : fOutputNames) {
        if (output != fTarget) {
            continue;
        }
        fNames.erase(output);
        output = FreeName("output_", fTarget, kept);
        fNames.insert(output);
    }
    fPredicted.name = FreeName("predicted_", fTarget, kept);
    fNames.insert(fPredicted.name);
}

/// The name with as many prefixes as it takes to be no other column's.
std::string PredictionColumns::FreeName(const std::string& prefix, std::string name,
                                        const std::unordered_set<std::string>& kept) const {
    while (kept.count(name) > 0 || fNames.count(name) > 0) {
        name = prefix + name;
    }
    return name;
}

bool PredictionColumns::Has(const std::string& name) const {
    return fNames.count(name) > 0;
}

std::vector<std::string> PredictionColumns::Names() const {
    std::vector<std::string> names{fPredicted.name};
    for (const Column& output : fOutputs) {
        names.push_back(output.name);
    }
    return names;
}

std::vector<DateForm> PredictionColumns::DateForms() const {
    std::vector<DateForm> forms{fPredicted.dateForm};
    for (const Column& output : fOutputs) {
        forms.push_back(output.dateForm);
    }
    return forms;
}

void PredictionColumns::WriteHeader(CsvWriter& writer) const {
    writer.Text(fPredicted.name);
    for (const std::string& output : fOutputNames) {
        writer.Text(output);
    }
}

void PredictionColumns::WriteCase(ScoreResult& result, CsvWriter& writer) {
    WriteValue(result.GetResultValue(), fPredicted.dateForm, writer, fText);
    const ScoreResultField* fields = result.GetResultFields();
    for (const Column& output : fOutputs) {
        WriteValue(fields ? fields->GetResultValue(output.name) : nullptr, output.dateForm, writer, fText);
    }
}

void PredictionColumns::WriteEmpty(CsvWriter& writer) const {
    for (std::size_t cells = fOutputs.size() + 1; cells > 0; --cells) {
        writer.Empty();
    }
}

} // namespace veltrane::host
