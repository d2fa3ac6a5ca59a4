#include "regression_table.h"

#include "kit/raise.h"

#include <algorithm>
#include <cmath>
#include <ostream>
#include <utility>

namespace veltrane_regression {

using veltrane_kit::Element;
using veltrane_kit::FieldValue;
using veltrane_kit::Inputs;
using veltrane_kit::Raise;

namespace {

/// The attribute that names the field of a predictor: newer documents have another name for it.
const XMLCh* FieldAttribute(const Element& predictor) {
    return !predictor.Has(u"name") && predictor.Has(u"field") ? u"field" : u"name";
}

int RequireNumericSlot(const Element& element, const XMLCh* attribute, Inputs& inputs) {
    const int slot = inputs.RequireSlot(element, attribute);
    if (!inputs.IsNumeric(slot)) {
        Raise(260187, inputs.Var(slot).GetName());
    }
    return slot;
}

} // namespace

RegressionTable::RegressionTable(const Element& element, Inputs& inputs) : fIntercept(element.Number(u"intercept")) {
    for (const Element child : element.Children()) {
        if (child.Is(u"NumericPredictor")) {
            ReadNumeric(child, inputs);
        } else if (child.Is(u"CategoricalPredictor")) {
            ReadCategorical(child, inputs);
        } else if (child.Is(u"PredictorTerm")) {
            ReadTerm(child, inputs);
        } else if (!child.Is(u"Extension")) {
            child.RaiseMisplaced();
        }
    }
}

void RegressionTable::ReadNumeric(const Element& element, Inputs& inputs) {
    const NumericPredictor predictor{RequireNumericSlot(element, FieldAttribute(element), inputs),
                                     element.NumberOr(u"exponent", 1.0), element.Number(u"coefficient")};
    const bool isDouble = std::any_of(fNumeric.begin(), fNumeric.end(), [&predictor](const NumericPredictor& other) {
        return other.slot == predictor.slot && other.exponent == predictor.exponent;
    });
    if (isDouble) {
        Raise(260203, element.Tag(), inputs.Var(predictor.slot).GetName(), "RegressionTable");
    }
    fNumeric.push_back(predictor);
}

void RegressionTable::ReadCategorical(const Element& element, Inputs& inputs) {
    const int slot = inputs.RequireSlot(element, FieldAttribute(element));
    const auto category = static_cast<std::size_t>(inputs.CategoryOf(slot, element, u"value"));
    CategoricalField& field = FieldOf(slot);
    if (category >= field.coefficients.size()) {
        field.coefficients.resize(category + 1, 0.0);
        field.isSet.resize(category + 1, false);
    }
    if (field.isSet[category]) {
        Raise(260203, element.Tag(), element.AnyText(u"value"), "RegressionTable");
    }
    field.coefficients[category] = element.Number(u"coefficient");
    field.isSet[category] = true;
}

void RegressionTable::ReadTerm(const Element& element, Inputs& inputs) {
    Term term{element.Number(u"coefficient"), {}};
    for (const Element child : element.Children()) {
        if (child.Is(u"FieldRef")) {
            term.slots.push_back(RequireNumericSlot(child, u"field", inputs));
        } else if (!child.Is(u"Extension")) {
            child.RaiseMisplaced();
        }
    }
    if (term.slots.empty()) {
        Raise(260115, "FieldRef", element.Tag());
    }
    fTerms.push_back(std::move(term));
}

RegressionTable::CategoricalField& RegressionTable::FieldOf(int slot) {
    for (CategoricalField& field : fCategorical) {
        if (field.slot == slot) {
            return field;
        }
    }
    fCategorical.push_back({slot, {}, {}});
    return fCategorical.back();
}

bool RegressionTable::Sum(const Inputs& inputs, double& sum) const {
    sum = fIntercept;
    for (const NumericPredictor& predictor : fNumeric) {
        const FieldValue& x = inputs[predictor.slot];
        if (x.IsMissing()) {
            return false;
        }
        sum += predictor.coefficient * (predictor.exponent == 1.0 ? x.number : std::pow(x.number, predictor.exponent));
    }
    for (const CategoricalField& field : fCategorical) {
        const FieldValue& x = inputs[field.slot];
        const auto category = static_cast<std::size_t>(x.category);
        if (!x.IsMissing() && x.category >= 0 && category < field.coefficients.size()) {
            sum += field.coefficients[category];
        }
    }
    return AddTerms(inputs, sum);
}

void RegressionTable::Display(std::ostream& out) const {
    out << "  intercept " << fIntercept << ", numeric predictors " << fNumeric.size() << ", categorical fields "
        << fCategorical.size() << ", terms " << fTerms.size() << "\n";
}

bool RegressionTable::AddTerms(const Inputs& inputs, double& sum) const {
    for (const Term& term : fTerms) {
        double product = term.coefficient;
        for (const int slot : term.slots) {
            if (inputs[slot].IsMissing()) {
                return false;
            }
            product *= inputs[slot].number;
        }
        sum += product;
    }
    return true;
}

} // namespace veltrane_regression
