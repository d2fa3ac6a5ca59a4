#include "predictors.h"

#include "amount.h"
#include "kit/document/raise.h"

#include <utility>

namespace veltrane_general {

using veltrane_kit::Element;
using veltrane_kit::Message;
using veltrane_kit::Narrow;
using veltrane_kit::Raise;
using veltrane_kit::RaiseAt;

namespace {

constexpr const XMLCh* kName = u"name";
constexpr const XMLCh* kValue = u"value";
constexpr const XMLCh* kPredictorName = u"predictorName";

} // namespace

void Predictors::Read(const Element& list, bool areFactors) {
    if (!list) {
        return;
    }
    for (const Element child : list.Children()) {
        if (!child.Is(u"Predictor")) {
            child.RaiseMisplaced();
        }
        const int slot =
            areFactors ? fParts.inputs->RequireSlot(child, kName) : RequireNumber(child, kName, *fParts.inputs);
        Predictor predictor{slot, areFactors, {}, nullptr};
        ReadCategories(child, predictor);
        ReadContrasts(child, predictor);
        if (!fByName.emplace(child.Text(kName), std::move(predictor)).second) {
            Raise<Message::DUPLICATE_DEFINITION>(child.Tag(), child.Text(kName), list.Tag());
        }
    }
}

void Predictors::ReadCategories(const Element& element, Predictor& predictor) {
    for (const Element child : element.Children()) {
        if (!child.Is(u"Categories") && !child.Is(u"Matrix")) {
            child.RaiseMisplaced();
        }
    }
    const Element categories = element.Child(u"Categories");
    if (!categories || !predictor.isFactor) {
        return;
    }
    for (const Element child : categories.Children()) {
        if (!child.Is(u"Category")) {
            child.RaiseMisplaced();
        }
        AddCategory(fParts.inputs->CategoryOf(predictor.slot, child, kValue), predictor, child.AnyText(kValue));
    }
    if (predictor.places.empty()) {
        Raise<Message::NO_CHILD_ELEMENT>(categories.Tag());
    }
}

void Predictors::AddCategory(int code, Predictor& predictor, const std::string& text) {
    if (!predictor.places.emplace(code, predictor.places.size()).second) {
        Raise<Message::DUPLICATE_DEFINITION>("Category", text, "Categories");
    }
}

/// Without Categories the rows and columns of contrasts are the values that the dictionary lists, in their order.
void Predictors::TakeListed(const Element& element, Predictor& predictor) {
    const auto field = fParts.fields->find(element.Text(kName));
    if (field == fParts.fields->end() || field->second.valid.empty()) {
        RaiseAt<Message::MISSING_VALUE_LIST>(element.Tag(), Narrow(kName).c_str(), element.Text(kName));
    }
    for (const veltrane_kit::OwnedValue& value : field->second.valid) {
        predictor.places.emplace(fParts.inputs->CategoryOf(predictor.slot, value.value), predictor.places.size());
    }
}

void Predictors::ReadContrasts(const Element& element, Predictor& predictor) {
    const Element child = element.Child(u"Matrix");
    if (!child || !predictor.isFactor) {
        return;
    }
    if (predictor.places.empty()) {
        TakeListed(element, predictor);
    }
    veltrane_kit::Matrix matrix(child);
    const std::size_t categories = predictor.places.size();
    if (matrix.Rows() != categories) {
        Raise<Message::ARRAY_CATEGORIES_MISMATCH>(std::to_string(matrix.Rows()), "nbRows", std::to_string(categories));
    }
    if (matrix.Columns() > categories) {
        Raise<Message::ARRAY_CATEGORIES_MISMATCH>(std::to_string(matrix.Columns()), "nbCols",
                                                  std::to_string(categories));
    }
    predictor.contrasts = std::make_shared<const Contrasts>(Contrasts{std::move(matrix), predictor.places});
}

Factor Predictors::ReadCell(const Element& cell) {
    const auto found = fByName.find(cell.Text(kPredictorName));
    if (found == fByName.end()) {
        cell.RaiseInvalid(kPredictorName);
    }
    const Predictor& predictor = found->second;
    if (!predictor.isFactor) {
        return {Factor::Kind::POWER, predictor.slot, cell.Number(kValue)};
    }
    Factor factor{Factor::Kind::CATEGORY, predictor.slot};
    factor.category = fParts.inputs->CategoryOf(predictor.slot, cell, kValue);
    if (predictor.places.empty()) {
        return factor;
    }
    const auto place = predictor.places.find(factor.category);
    if (place == predictor.places.end()) {
        cell.RaiseInvalid(kValue);
    }
    if (predictor.contrasts != nullptr) {
        if (place->second >= predictor.contrasts->matrix.Columns()) {
            cell.RaiseInvalid(kValue);
        }
        factor.kind = Factor::Kind::CONTRAST;
        factor.column = place->second;
        factor.contrasts = predictor.contrasts;
    }
    return factor;
}

} // namespace veltrane_general
