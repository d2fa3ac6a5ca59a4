#include "regression_table.h"

#include "kit/document/raise.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <ostream>
#include <set>
#include <utility>

namespace veltrane_regression {

using veltrane_kit::CaseView;
using veltrane_kit::Element;
using veltrane_kit::FieldValue;
using veltrane_kit::Inputs;
using veltrane_kit::Message;
using veltrane_kit::Raise;

namespace {

constexpr const XMLCh* kMapMissingTo = u"mapMissingTo";

/// The attribute that names the field of a predictor: newer documents have another name for it.
const XMLCh* FieldAttribute(const Element& predictor) {
    return !predictor.Has(u"name") && predictor.Has(u"field") ? u"field" : u"name";
}

int RequireNumericSlot(const Element& element, const XMLCh* attribute, Inputs& inputs) {
    const int slot = inputs.RequireSlot(element, attribute);
    if (!inputs.IsNumeric(slot)) {
        veltrane_kit::RaiseAt<Message::REQUIRES_NUMERIC>(element.Tag(), veltrane_kit::Narrow(attribute).c_str(),
                                                         inputs.NameOf(slot));
    }
    return slot;
}

/// The power of a predictor, a whole number, be it written as 2 or as 2.0.
double ReadExponent(const Element& predictor) {
    const double exponent = predictor.NumberOr(u"exponent", 1.0);
    if (exponent != std::floor(exponent)) {
        predictor.RaiseInvalid(u"exponent");
    }
    return exponent;
}

} // namespace

struct RegressionTable::Known {
    std::set<std::pair<int, double>> numeric;         ///< slot and exponent
    std::map<int, std::map<int, double>> categorical; ///< coefficients by slot and category
};

RegressionTable::RegressionTable(const Element& element, Inputs& inputs) : fIntercept(element.Number(u"intercept")) {
    Known known;
    for (const Element child : element.Children()) {
        if (child.Is(u"NumericPredictor")) {
            ReadNumeric(child, inputs, known);
        } else if (child.Is(u"CategoricalPredictor")) {
            ReadCategorical(child, inputs, known);
        } else if (child.Is(u"PredictorTerm")) {
            ReadTerm(child, inputs);
        } else if (!child.Is(u"Extension")) {
            child.RaiseMisplaced();
        }
    }
    for (const auto& [slot, coefficients] : known.categorical) {
        fCategorical.push_back({slot, {}});
        for (const auto& [category, coefficient] : coefficients) {
            fCategorical.back().coefficients.push_back({category, coefficient});
        }
    }
}

void RegressionTable::ReadNumeric(const Element& element, Inputs& inputs, Known& known) {
    const NumericPredictor predictor{RequireNumericSlot(element, FieldAttribute(element), inputs),
                                     ReadExponent(element), element.Number(u"coefficient")};
    if (!known.numeric.insert({predictor.slot, predictor.exponent}).second) {
        Raise<Message::DUPLICATE_DEFINITION>(element.Tag(), inputs.NameOf(predictor.slot), "RegressionTable");
    }
    fNumeric.push_back(predictor);
}

void RegressionTable::ReadCategorical(const Element& element, Inputs& inputs, Known& known) {
    const int slot = inputs.RequireSlot(element, FieldAttribute(element));
    const int category = inputs.CategoryOf(slot, element, u"value");
    if (!known.categorical[slot].emplace(category, element.Number(u"coefficient")).second) {
        Raise<Message::DUPLICATE_DEFINITION>(element.Tag(), element.AnyText(u"value"), "RegressionTable");
    }
}

void RegressionTable::ReadTerm(const Element& element, Inputs& inputs) {
    Term term{element.Number(u"coefficient"), {}};
    for (const Element child : element.Children()) {
        if (child.Is(u"FieldRef")) {
            const int slot = RequireNumericSlot(child, u"field", inputs);
            term.factors.push_back(
                {slot, child.Has(kMapMissingTo) ? std::optional(child.Number(kMapMissingTo)) : std::nullopt});
        } else if (!child.Is(u"Extension")) {
            child.RaiseMisplaced();
        }
    }
    if (term.factors.empty()) {
        Raise<Message::MISSING_NODE_IN>("FieldRef", element.Tag());
    }
    fTerms.push_back(std::move(term));
}

bool RegressionTable::Sum(const CaseView& fields, double& sum) const {
    sum = fIntercept;
    for (const NumericPredictor& predictor : fNumeric) {
        const FieldValue& x = fields[predictor.slot];
        if (x.IsMissing()) {
            return false;
        }
        sum += predictor.coefficient * (predictor.exponent == 1.0 ? x.number : std::pow(x.number, predictor.exponent));
    }
    for (const CategoricalField& field : fCategorical) {
        const FieldValue& x = fields[field.slot];
        if (x.IsMissing()) {
            continue;
        }
        const auto found =
            std::lower_bound(field.coefficients.begin(), field.coefficients.end(), x.category,
                             [](const Coefficient& entry, int category) { return entry.category < category; });
        if (found != field.coefficients.end() && found->category == x.category) {
            sum += found->coefficient;
        }
    }
    return AddTerms(fields, sum);
}

int RegressionTable::LackingSlot(const CaseView& fields) const {
    for (const NumericPredictor& predictor : fNumeric) {
        if (fields[predictor.slot].IsMissing()) {
            return predictor.slot;
        }
    }
    for (const Term& term : fTerms) {
        for (const Factor& factor : term.factors) {
            if (fields[factor.slot].IsMissing() && !factor.ifMissing) {
                return factor.slot;
            }
        }
    }
    return Inputs::kNoSlot;
}

void RegressionTable::Display(std::ostream& out) const {
    out << "  intercept " << fIntercept << ", numeric predictors " << fNumeric.size() << ", categorical fields "
        << fCategorical.size() << ", terms " << fTerms.size() << "\n";
}

bool RegressionTable::AddTerms(const CaseView& fields, double& sum) const {
    for (const Term& term : fTerms) {
        double product = term.coefficient;
        for (const Factor& factor : term.factors) {
            const FieldValue& x = fields[factor.slot];
            if (!x.IsMissing()) {
                product *= x.number;
            } else if (factor.ifMissing) {
                product *= *factor.ifMissing;
            } else {
                return false;
            }
        }
        sum += product;
    }
    return true;
}

} // namespace veltrane_regression
