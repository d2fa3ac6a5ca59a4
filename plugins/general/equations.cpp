#include "equations.h"

#include "kit/document/raise.h"

#include <tuple>

namespace veltrane_general {

using veltrane_kit::Element;
using veltrane_kit::Message;
using veltrane_kit::Prediction;
using veltrane_kit::Raise;

namespace {

constexpr const XMLCh* kTarget = u"targetCategory";
constexpr const XMLCh* kParameter = u"parameterName";

} // namespace

void EquationReader::Read(const Element& element) {
    ReadPredictorCells(element.RequireChild(u"PPMatrix"));
    ReadCells(element.RequireChild(u"ParamMatrix"));
}

/// A number has no categories.
int EquationReader::ReadCategory(const Element& cell) {
    if (!cell.Has(kTarget)) {
        return Prediction::kNoCategory;
    }
    if (!fParts.IsClassification()) {
        cell.RaiseInvalid(kTarget);
    }
    return fParts.target->CategoryOf(cell, kTarget);
}

void EquationReader::ReadPredictorCells(const Element& matrix) {
    std::set<std::tuple<int, std::size_t, std::string>> known;
    for (const Element cell : matrix.Children()) {
        if (!cell.Is(u"PPCell")) {
            cell.RaiseMisplaced();
        }
        const int category = ReadCategory(cell);
        const std::size_t parameter = fParameters.Require(cell, kParameter);
        fFactors[{category, parameter}].push_back(fPredictors.ReadCell(cell));
        const std::string predictor = cell.Text(u"predictorName");
        if (!known.emplace(category, parameter, predictor).second) {
            Raise<Message::DUPLICATE_DEFINITION>(cell.Tag(), cell.Text(kParameter) + ", " + predictor, matrix.Tag());
        }
        if (category != Prediction::kNoCategory) {
            fOfSingle.insert(parameter);
        }
    }
}

void EquationReader::ReadCells(const Element& matrix) {
    std::set<Key> known;
    for (const Element element : matrix.Children()) {
        if (!element.Is(u"PCell")) {
            element.RaiseMisplaced();
        }
        const Cell cell{ReadCategory(element), fParameters.Require(element, kParameter), element.Number(u"beta")};
        if (!known.emplace(cell.category, cell.parameter).second) {
            Raise<Message::DUPLICATE_DEFINITION>(element.Tag(), element.Text(kParameter), matrix.Tag());
        }
        if (cell.category == Prediction::kNoCategory) {
            fHasCommon = true;
        } else {
            fNamed.emplace(cell.category, element);
        }
        fCells.push_back(cell);
    }
}

/// The factors of a parameter in a category are those that are told for that one, else those for all.
Term EquationReader::TermOf(const Cell& cell, int category) const {
    auto factors = fFactors.find({category, cell.parameter});
    if (factors == fFactors.end()) {
        factors = fFactors.find({Prediction::kNoCategory, cell.parameter});
    }
    return {cell.parameter, cell.beta, factors == fFactors.end() ? std::vector<Factor>() : factors->second};
}

Equations EquationReader::Build(const std::vector<int>& categories) const {
    Equations equations;
    for (const int category : categories) {
        equations.own[category];
    }
    std::size_t repeated = 0;
    for (const Cell& cell : fCells) {
        if (cell.category != Prediction::kNoCategory) {
            equations.own[cell.category].Add(TermOf(cell, cell.category));
            continue;
        }
        if (fOfSingle.count(cell.parameter) == 0) {
            equations.common.Add(TermOf(cell, Prediction::kNoCategory));
            continue;
        }
        repeated += categories.size();
        if (repeated > kMostTerms) {
            Raise<Message::PROCESSING_VARIABLE_FAILED>("ParamMatrix", fParts.target->Name());
        }
        for (const int category : categories) {
            equations.own[category].Add(TermOf(cell, category));
        }
    }
    equations.common.Settle();
    for (auto& [category, equation] : equations.own) {
        equation.Settle();
    }
    return equations;
}

} // namespace veltrane_general
