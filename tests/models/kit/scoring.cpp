#include "models/kit/scoring.h"

#include <MCVeltrane_900/DateTimeValue.h>
#include <MCVeltrane_900/ModelFactory.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/ScoreClsResult.h>
#include <MCVeltrane_900/ScoreDictVar.h>
#include <MCVeltrane_900/ScoreDictionary.h>
#include <MCVeltrane_900/ScoreResultField.h>
#include <MCVeltrane_900/StringValue.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace veltrane::tests {
namespace {

ScoreValue* MakeValue(const ScoreDictVar& var, const std::string& text) {
    switch (var.GetVarType()) {
    case ScoreDictVar::STRING_VAR:
        return new StringValue(text);
    case ScoreDictVar::DATETIME_VAR:
        return new DateTimeValue(text, var.GetDateTimeType());
    default:
        return new NumericValue(text);
    }
}

double NumberOf(const ScoreValue* value) {
    return value == nullptr || value->GetType() == ScoreValue::STRING_VALUE ? kMissing : value->GetDouble();
}

std::string TextOf(const ScoreValue* value) {
    return value == nullptr ? "" : value->GetString();
}

std::vector<std::string> Cells(const std::string& line) {
    std::vector<std::string> cells;
    const bool endsInReturn = !line.empty() && line.back() == '\r';
    std::istringstream in(endsInReturn ? line.substr(0, line.size() - 1) : line);
    std::string cell;
    while (std::getline(in, cell, ',')) {
        cells.push_back(cell);
    }
    return cells;
}

} // namespace

Scored::Scored(const std::string& document) : Scored(ReadModel(document)) {}

Scored::Scored(std::unique_ptr<ScoreModel> model) : fModel(std::move(model)), fResult(fModel->CreateResult()) {}

MCScore::MCStatus Scored::Score(const Case& values) {
    return fModel->Score(MakeRecord(*fModel, values).get(), fResult.get());
}

std::string Scored::Text() const {
    return TextOf(fResult->GetResultValue());
}

double Scored::Number() const {
    return NumberOf(fResult->GetResultValue());
}

std::string Scored::Text(const std::string& output) {
    return TextOf(fResult->GetResultFields()->GetResultValue(output));
}

double Scored::Number(const std::string& output) {
    return NumberOf(fResult->GetResultFields()->GetResultValue(output));
}

double Scored::Probability(const std::string& category) const {
    const StringValue value(category);
    return dynamic_cast<const ScoreClsResult&>(*fResult).GetCategoryProbability(&value);
}

std::unique_ptr<ScoreModel> ReadModel(const std::string& document) {
    static const std::vector<std::string> kNames = {"MiningModel",
                                                    "RegressionModel",
                                                    "TreeModel",
                                                    "Scorecard",
                                                    "RuleSetModel",
                                                    "BaselineModel",
                                                    "NeuralNetwork",
                                                    "SupportVectorMachineModel",
                                                    "GeneralRegressionModel",
                                                    "NaiveBayesModel",
                                                    "ClusteringModel",
                                                    "NearestNeighborModel"};
    std::istringstream in(document);
    return std::unique_ptr<ScoreModel>(ModelFactory::MakeModelFromXML(in, kNames, "UTF-8"));
}

std::unique_ptr<CaseRecord> MakeRecord(const ScoreModel& model, const Case& values) {
    auto record = std::make_unique<CaseRecord>();
    for (const std::string& name : model.GetDictionary()->GetVarNames()) {
        const auto found = values.find(name);
        const bool isMissing = found == values.end() || found->second.empty();
        record->Add(name, isMissing ? nullptr : MakeValue(*model.GetDictionary()->GetVar(name), found->second));
    }
    return record;
}

std::string ReadFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        throw std::runtime_error("no file " + path);
    }
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

std::vector<Case> ReadRows(const std::string& path) {
    std::istringstream in(ReadFile(path));
    std::string line;
    std::getline(in, line);
    const std::vector<std::string> names = Cells(line);
    std::vector<Case> rows;
    while (std::getline(in, line)) {
        const std::vector<std::string> cells = Cells(line);
        Case row;
        for (std::size_t i = 0; i < names.size(); ++i) {
            row[names[i]] = i < cells.size() ? cells[i] : "";
        }
        rows.push_back(std::move(row));
    }
    return rows;
}

double ToNumber(const std::string& text) {
    return std::strtod(text.c_str(), nullptr);
}

void ExpectRefused(const std::string& document, const FaultyChange& fault, const char* file, int line) {
    const std::string changed = Replaced(document, fault.from, fault.to);
    ExpectFailure([&changed] { ReadModel(changed); }, fault.failure, file, line);
}

std::string Replaced(std::string text, const std::string& from, const std::string& to) {
    const std::size_t at = text.find(from);
    if (at == std::string::npos || text.find(from, at + from.size()) != std::string::npos) {
        ADD_FAILURE() << "not exactly once in the document: " << from;
        return text;
    }
    return text.replace(at, from.size(), to);
}

} // namespace veltrane::tests
