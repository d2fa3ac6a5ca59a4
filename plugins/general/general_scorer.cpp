#include "general_scorer.h"

#include "kit/document/application.h"
#include "kit/document/common_elements.h"
#include "kit/document/raise.h"
#include "target_categories.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <ostream>
#include <utility>

namespace veltrane_general {

using veltrane_kit::CaseView;
using veltrane_kit::Element;
using veltrane_kit::Message;
using veltrane_kit::ModelParts;
using veltrane_kit::Narrow;
using veltrane_kit::Prediction;
using veltrane_kit::Raise;
using veltrane_kit::RaiseAt;
using veltrane_kit::Target;
using veltrane_kit::Word;

namespace {

constexpr const XMLCh* kType = u"modelType";
constexpr const XMLCh* kLink = u"linkFunction";
constexpr const XMLCh* kLinkParameter = u"linkParameter";
constexpr const XMLCh* kDistributionParameter = u"distParameter";
constexpr const XMLCh* kFunction = u"functionName";

constexpr Word<ModelType> kTypes[] = {
    {u"regression", ModelType::LINEAR},
    {u"generalLinear", ModelType::LINEAR},
    {u"generalizedLinear", ModelType::GENERALIZED},
    {u"multinomialLogistic", ModelType::MULTINOMIAL},
    {u"ordinalMultinomial", ModelType::ORDINAL},
    {u"CoxRegression", ModelType::COX},
};

constexpr Word<LinkFunction> kLinks[] = {
    {u"cloglog", LinkFunction::CLOGLOG}, {u"identity", LinkFunction::IDENTITY},   {u"log", LinkFunction::LOG},
    {u"logc", LinkFunction::LOGC},       {u"logit", LinkFunction::LOGIT},         {u"loglog", LinkFunction::LOGLOG},
    {u"negbin", LinkFunction::NEGBIN},   {u"oddspower", LinkFunction::ODDSPOWER}, {u"power", LinkFunction::POWER},
    {u"probit", LinkFunction::PROBIT},
};

constexpr Word<LinkFunction> kCumulativeLinks[] = {
    {u"logit", LinkFunction::LOGIT},   {u"probit", LinkFunction::PROBIT},   {u"cloglog", LinkFunction::CLOGLOG},
    {u"loglog", LinkFunction::LOGLOG}, {u"cauchit", LinkFunction::CAUCHIT},
};

void CheckChildren(const Element& element) {
    static constexpr std::array kTags = {u"ParameterList", u"FactorList",  u"CovariateList", u"PPMatrix",
                                         u"PCovMatrix",    u"ParamMatrix", u"EventValues",   u"BaseCumHazardTables"};
    for (const Element child : element.Children()) {
        if (std::none_of(kTags.begin(), kTags.end(), [&](const XMLCh* tag) { return child.Is(tag); })) {
            veltrane_kit::RequireCommonElement(child);
        }
    }
    element.Child(u"EventValues"); // there is one at most
}

/// Numbers and categories are predicted by different types of model; a generalized linear one predicts both.
void CheckFunction(const Element& element, ModelType type, bool isClassification) {
    const bool wantsCategories = type == ModelType::MULTINOMIAL || type == ModelType::ORDINAL;
    if (type != ModelType::GENERALIZED && wantsCategories != isClassification) {
        Raise<Message::UNSUPPORTED_VALUE_IN>(element.Text(kFunction), Narrow(kFunction), element.Tag(),
                                             wantsCategories ? "classification" : "regression");
    }
}

/// The target's other name, where a model states it, is that of the schema. That of a Cox regression may be any field:
/// its status and its time are targets as well.
void CheckTargetName(const Element& element, ModelType type, const ModelParts& parts) {
    const XMLCh* const attribute = u"targetVariableName";
    if (!element.Has(attribute)) {
        return;
    }
    const std::string name = element.Text(attribute);
    if (parts.fields->count(name) == 0) {
        RaiseAt<Message::MISSING_VARIABLE>(element.Tag(), Narrow(attribute).c_str(), name, "DataDictionary");
    }
    if (type != ModelType::COX && !parts.target->IsOwn() && name != parts.target->Name()) {
        element.RaiseInvalid(attribute);
    }
}

/// A field that tells what happened to a case; no prediction asks for it.
void CheckField(const Element& element, const XMLCh* attribute, const ModelParts& parts) {
    if (element.Has(attribute) && parts.fields->count(element.Text(attribute)) == 0) {
        parts.inputs->RequireSlot(element, attribute);
    }
}

Amount ReadTrials(const Element& element, ModelParts& parts) {
    constexpr const XMLCh* kTrials = u"trialsValue";
    const Amount trials = ReadAmount(element, kTrials, u"trialsVariable", 1.0, *parts.inputs);
    if (!(trials.value >= 1.0)) {
        element.RaiseInvalid(kTrials);
    }
    const bool isBinomial = veltrane_kit::Same(element.Raw(u"distribution"), u"binomial");
    return parts.IsClassification() || (element.Has(u"distribution") && !isBinomial) ? Amount{1.0} : trials;
}

} // namespace

GeneralScorer::GeneralScorer(const Element& element, ModelParts& parts)
    : fType(element.OneOf(kType, kTypes)), fTypeName(element.Text(kType)), fIsClassification(parts.IsClassification()),
      fOffset(ReadAmount(element, u"offsetValue", u"offsetVariable", 0.0, *parts.inputs)),
      fTrials(ReadTrials(element, parts)) {
    CheckChildren(element);
    CheckFunction(element, fType, fIsClassification);
    CheckTargetName(element, fType, parts);
    fLinksReference = veltrane_kit::ApplicationOf(element) == "Rattle/PMML";
    ReadLink(element);
    const Parameters parameters(element.RequireChild(u"ParameterList"));
    Predictors predictors(parts);
    predictors.Read(element.Child(u"FactorList"), true);
    predictors.Read(element.Child(u"CovariateList"), false);
    EquationReader reader(parts, parameters, predictors);
    reader.Read(element);
    const std::vector<int> order =
        fIsClassification ? OrderCategories(element, fType, reader, parts) : std::vector<int>();
    Equations equations = reader.Build(order);
    fCommon = std::move(equations.common);
    for (const int code : order) {
        fCategories.push_back({code, std::move(equations.own[code])});
    }
    fCovariance = Covariance(element.Child(u"PCovMatrix"), parts, parameters, fCommon.Terms());
    ReadTimes(element, parts);
    for (const Term& term : fCommon.Terms()) {
        fReferencePoints.push_back(parameters.ReferencePoint(term.parameter));
        fReference += term.beta * fReferencePoints.back();
    }
}

void GeneralScorer::ReadLink(const Element& element) {
    if (fType == ModelType::ORDINAL) {
        fLink.function = element.OneOf(u"cumulativeLink", kCumulativeLinks);
        return;
    }
    if (fType != ModelType::GENERALIZED) {
        return;
    }
    fLink.function = element.OneOf(kLink, kLinks);
    const bool hasTrials = fTrials.slot != veltrane_kit::Inputs::kNoSlot || fTrials.value != 1.0;
    if (fLink.function == LinkFunction::IDENTITY && !fIsClassification && !hasTrials) {
        fType = ModelType::LINEAR; // the same, in fewer steps
        return;
    }
    if (fLink.function == LinkFunction::NEGBIN) {
        fLink.parameter = element.Number(kDistributionParameter);
        if (fLink.parameter == 0.0) {
            element.RaiseInvalid(kDistributionParameter);
        }
    } else if (fLink.function == LinkFunction::ODDSPOWER || fLink.function == LinkFunction::POWER) {
        fLink.parameter = element.Number(kLinkParameter);
    }
}

void GeneralScorer::ReadTimes(const Element& element, ModelParts& parts) {
    if (fType != ModelType::COX) {
        return;
    }
    for (const XMLCh* attribute : {u"startTimeVariable", u"statusVariable", u"subjectIDVariable"}) {
        CheckField(element, attribute, parts);
    }
    fHazards.emplace(element, parts);
}

std::unique_ptr<veltrane_kit::Scorer::State> GeneralScorer::NewState() const {
    auto state = std::make_unique<Sums>();
    state->sums.resize(fCategories.size());
    state->values.resize(fCommon.Terms().size());
    return state;
}

bool GeneralScorer::Predict(const CaseView& fields, Prediction& prediction, State& state) const {
    auto& own = static_cast<Sums&>(state);
    bool isPredicted = false;
    if (fIsClassification) {
        isPredicted = PredictCategory(fields, prediction, own);
    } else {
        const double eta = fCommon.Sum(fields) + fOffset.At(fields);
        const double number = NumberOf(eta, fields);
        isPredicted = std::isfinite(number);
        if (isPredicted) {
            prediction.number = number;
            prediction.standardError = fCovariance.IsEmpty() ? Prediction::kNone : ErrorOf(eta, fields, own.values);
        }
    }
    if (!isPredicted) {
        prediction.lacking = LackingSlot(fields);
    }
    return isPredicted;
}

bool GeneralScorer::PredictCategory(const CaseView& fields, Prediction& prediction, Sums& state) const {
    const double common = fCommon.Sum(fields);
    const double offset = fOffset.At(fields);
    for (std::size_t i = 0; i + 1 < fCategories.size(); ++i) {
        state.sums[i] = common + fCategories[i].equation.Sum(fields) + offset;
    }
    if (!Share(state.sums)) {
        return false;
    }
    // A category without coefficients of its own that isn't the reference is none of the model's.
    prediction.probabilities.assign(prediction.probabilities.size(), 0.0);
    for (std::size_t i = 0; i < fCategories.size(); ++i) {
        prediction.probabilities[static_cast<std::size_t>(fCategories[i].code)] = state.sums[i];
    }
    prediction.TakeMostProbable();
    return true;
}

/// Makes probabilities of the sums; that of the last category, which has the rest, plays no part.
/// @return false where there are none
bool GeneralScorer::Share(std::vector<double>& sums) const {
    if (std::any_of(sums.begin(), sums.end() - 1, [](double sum) { return !std::isfinite(sum); })) {
        return false;
    }
    if (fType == ModelType::ORDINAL) {
        ShareOrdinal(sums);
        return true;
    }
    if (fType == ModelType::GENERALIZED) {
        return ShareOfTwo(sums);
    }
    sums.back() = 0.0;
    const double largest = *std::max_element(sums.begin(), sums.end());
    double total = 0.0;
    for (double& sum : sums) {
        sum = std::exp(sum - largest); // relative to the largest, so that none overflows
        total += sum;
    }
    for (double& sum : sums) {
        sum /= total;
    }
    return true;
}

bool GeneralScorer::ShareOfTwo(std::vector<double>& sums) const {
    const double number = fLink.Inverse(sums.front());
    if (fLinksReference) {
        const double rest = fLink.Inverse(0.0);
        sums.front() = number / (number + rest);
        sums.back() = rest / (number + rest);
        return std::isfinite(sums.front()) && std::isfinite(sums.back());
    }
    sums.front() = std::clamp(number, 0.0, 1.0);
    sums.back() = 1.0 - sums.front();
    return std::isfinite(number);
}

/// The links go up from category to category: one that falls adds nothing.
void GeneralScorer::ShareOrdinal(std::vector<double>& sums) const {
    double before = 0.0;
    for (std::size_t i = 0; i + 1 < sums.size(); ++i) {
        const double linked = std::max(fLink.Inverse(sums[i]), before);
        sums[i] = linked - before;
        before = linked;
    }
    sums.back() = 1.0 - before;
}

int GeneralScorer::LackingSlot(const CaseView& fields) const {
    int lacking = fCommon.LackingSlot(fields);
    for (std::size_t i = 0; i < fCategories.size() && lacking == Prediction::kNoSlot; ++i) {
        lacking = fCategories[i].equation.LackingSlot(fields);
    }
    for (const Amount& amount : {fOffset, fTrials}) {
        if (lacking == Prediction::kNoSlot && amount.slot != Prediction::kNoSlot && fields.IsMissing(amount.slot)) {
            lacking = amount.slot;
        }
    }
    return lacking == Prediction::kNoSlot && fHazards ? fHazards->LackingSlot(fields) : lacking;
}

void GeneralScorer::Display(std::ostream& out, const Target& target) const {
    out << "type: " << fTypeName << "\n";
    out << "terms: " << fCommon.Terms().size() << "\n";
    for (const Category& category : fCategories) {
        out << "terms of " << target.Category(category.code).GetString() << ": " << category.equation.Terms().size()
            << "\n";
    }
}

std::unique_ptr<const veltrane_kit::Scorer> MakeGeneralScorer(const Element& element, ModelParts& parts) {
    return std::make_unique<const GeneralScorer>(element, parts);
}

} // namespace veltrane_general
