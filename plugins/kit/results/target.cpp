#include "kit/results/target.h"

#include "kit/document/raise.h"

#include <MCVeltrane_900/BaseDictionary.h>
#include <MCVeltrane_900/ScoreValueLabel.h>
#include <MCVeltrane_900/ScoreValueLabelSet.h>

#include <xercesc/dom/DOMDocument.hpp>

#include <algorithm>
#include <cmath>
#include <utility>

namespace veltrane_kit {

using namespace MCVeltrane_900;

namespace {

std::optional<double> ReadOptional(const Element& element, const XMLCh* name) {
    return element.Has(name) ? std::optional<double>(element.Number(name)) : std::nullopt;
}

/// The nearest whole number, of two that are equally near the larger one.
double RoundUp(double number) {
    const double below = std::floor(number);
    return number - below < 0.5 ? below : below + 1.0;
}

/// The name of the variable while its Target is read.
constexpr const char* kOwnName = "target";

/// Gives the Target without a field one, and a level, and reads it as the library reads those of fields.
std::unique_ptr<DictVar> ReadOwn(const Element& element, const DictVar& plain, PMMLTranslator& translator) {
    const bool isContinuous = plain.GetMLevel() == ScoreDictVar::LEVEL_CONTINUOUS;
    BaseDictionary dictionary;
    dictionary.AddVar(kOwnName, plain.Clone());
    ScoreDictVar& var = *dictionary.GetVar(kOwnName);
    element.Dom()->setAttribute(u"field", Widen(kOwnName).c_str());
    if (!element.Has(u"optype")) {
        element.Dom()->setAttribute(u"optype", isContinuous ? u"continuous" : u"categorical");
    } else if (!isContinuous && Same(element.Raw(u"optype"), u"ordinal")) {
        var.SetMLevel(ScoreDictVar::LEVEL_ORDINAL);
    }
    xercesc::DOMElement* targets = element.Dom()->getOwnerDocument()->createElement(u"Targets");
    targets->appendChild(element.Dom());
    translator.HandleTargets(targets, &dictionary);
    return std::make_unique<DictVar>(static_cast<const DictVar&>(var));
}

} // namespace

OwnTarget TakeOwnTarget(const Element& model, bool classification, PMMLTranslator& translator) {
    OwnTarget own;
    own.var =
        std::make_unique<DictVar>(kOwnName, classification ? ScoreDictVar::STRING_VAR : ScoreDictVar::kNUMERIC_VAR);
    own.var->SetMLevel(classification ? ScoreDictVar::LEVEL_NOMINAL : ScoreDictVar::LEVEL_CONTINUOUS);
    const Element targets = model.Child(u"Targets");
    if (!targets) {
        return own;
    }
    for (const Element target : targets.Children()) {
        if (target.Is(u"Target") && !target.Has(u"field")) {
            if (own.element) {
                Raise<Message::MORE_THAN_ONE>("Target", "Targets");
            }
            own.element = target;
        }
    }
    if (own.element) {
        own.var = ReadOwn(own.element, *own.var, translator);
    }
    return own;
}

Element FindTarget(const Element& model, const std::string& field) {
    const Element targets = model.Child(u"Targets");
    if (!targets) {
        return {};
    }
    for (const Element target : targets.Children()) {
        if (target.Is(u"Target") && target.TextOr(u"field", "") == field) {
            return target;
        }
    }
    return {};
}

Target::Target(std::string name, const ScoreDictVar& var) : fName(std::move(name)), fVar(&var), fCategories(*fVar) {
    AddListed();
    fIsListed = CategoryCount() > 0;
}

Target::Target(OwnTarget own) : fOwn(std::move(own.var)), fVar(fOwn.get()), fCategories(*fVar) {
    // The values of a Target are those that it has something to say of, and need not be all.
    AddListed();
    ReadAdjustment(own.element);
}

void Target::AddListed() {
    if (const ScoreValueLabelSet* labels = fVar->GetValueLabels(); labels != nullptr) {
        for (const ScoreValueLabel* label : labels->GetAllValueLabels()) {
            Add(*label->GetValue());
        }
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

void Target::ReadAdjustment(const Element& element) {
    static constexpr Word<Cast> kCasts[] = {
        {u"round", Cast::ROUND}, {u"ceiling", Cast::CEILING}, {u"floor", Cast::FLOOR}};
    if (!element) {
        return;
    }
    fMin = ReadOptional(element, u"min");
    fMax = ReadOptional(element, u"max");
    fFactor = element.NumberOr(u"rescaleFactor", 1.0);
    fConstant = element.NumberOr(u"rescaleConstant", 0.0);
    fCast = element.OneOfOr(u"castInteger", kCasts, Cast::NONE);
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
        return RoundUp(number);
    case Cast::CEILING:
        return std::ceil(number);
    case Cast::FLOOR:
        return std::floor(number);
    default:
        return number;
    }
}

} // namespace veltrane_kit
