#include "kit/target.h"

#include <MCVeltrane_900/ScoreValueLabel.h>
#include <MCVeltrane_900/ScoreValueLabelSet.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace veltrane_kit {

using namespace MCVeltrane_900;

namespace {

std::optional<double> ReadOptional(const Element& element, const XMLCh* name) {
    return element.Has(name) ? std::optional<double>(element.Number(name)) : std::nullopt;
}

/// The Target for a field: the one that names it, or the only one that names none.
Element FindTarget(const Element& model, const std::string& name) {
    const Element targets = model.Child(u"Targets");
    if (!targets) {
        return {};
    }
    for (const Element target : targets.Children()) {
        if (target.Is(u"Target") && target.TextOr(u"field", name) == name) {
            return target;
        }
    }
    return {};
}

} // namespace

Target::Target(std::string name, const ScoreDictVar* var)
    : fName(std::move(name)),
      fMadeUp(var == nullptr ? std::make_unique<DictVar>(fName, ScoreDictVar::STRING_VAR) : nullptr),
      fVar(var == nullptr ? fMadeUp.get() : var), fCategories(*fVar) {
    const ScoreValueLabelSet* labels = fVar->GetValueLabels();
    if (labels == nullptr) {
        return;
    }
    for (const ScoreValueLabel* label : labels->GetAllValueLabels()) {
        fIsListed = true;
        Add(*label->GetValue());
    }
}

int Target::Add(const ScoreValue& value) {
    const int code = fCategories.Add(value);
    if (code == CategoryCount()) {
        fValues.emplace_back(value.Clone());
        const std::string label = fVar->GetLabelOfValue(&value);
        fLabels.push_back(label.empty() ? value.GetString() : label);
    }
    return code;
}

int Target::CategoryOf(const Element& element, const XMLCh* attribute) {
    const int code = CategoryOf(element.AnyText(attribute));
    if (code == Categories::kUnknown) {
        element.RaiseInvalid(attribute);
    }
    return code;
}

int Target::CategoryOf(const std::string& text) {
    const std::unique_ptr<ScoreValue> value(MakeValue(*fVar, text));
    if (value == nullptr) {
        return Categories::kUnknown;
    }
    return fIsListed ? fCategories.Find(*value) : Add(*value);
}

void Target::ReadAdjustment(const Element& model) {
    static constexpr Word<Cast> kCasts[] = {
        {u"round", Cast::ROUND}, {u"ceiling", Cast::CEILING}, {u"floor", Cast::FLOOR}};
    const Element target = FindTarget(model, fName);
    if (!target) {
        return;
    }
    fMin = ReadOptional(target, u"min");
    fMax = ReadOptional(target, u"max");
    fFactor = target.NumberOr(u"rescaleFactor", 1.0);
    fConstant = target.NumberOr(u"rescaleConstant", 0.0);
    fCast = target.OneOfOr(u"castInteger", kCasts, Cast::NONE);
    fAdjusts = fMin || fMax || fFactor != 1.0 || fConstant != 0.0 || fCast != Cast::NONE;
}

double Target::Adjust(double number) const {
    if (!fAdjusts) {
        return number;
    }
    if (fMin) {
        number = std::max(number, *fMin);
    }
    if (fMax) {
        number = std::min(number, *fMax);
    }
    number = number * fFactor + fConstant;
    switch (fCast) {
    case Cast::ROUND:
        return std::round(number);
    case Cast::CEILING:
        return std::ceil(number);
    case Cast::FLOOR:
        return std::floor(number);
    default:
        return number;
    }
}

} // namespace veltrane_kit
