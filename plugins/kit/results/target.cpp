#include "kit/results/target.h"

#include "kit/document/raise.h"
#include "kit/results/typed_value.h"

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

constexpr Word<ScoreDictVar::MeasureLevel> kLevels[] = {
    {u"continuous", ScoreDictVar::LEVEL_CONTINUOUS},
    {u"categorical", ScoreDictVar::LEVEL_NOMINAL},
    {u"ordinal", ScoreDictVar::LEVEL_ORDINAL},
};

/// The level of a Target overrides that of its field.
void TakeLevel(const Element& target, ScoreDictVar& var) {
    if (Same(target.Raw(u"optype"), u"")) {
        return;
    }
    const ScoreDictVar::MeasureLevel level = target.OneOf(u"optype", kLevels);
    if (level == ScoreDictVar::LEVEL_CONTINUOUS && var.GetVarType() == ScoreDictVar::STRING_VAR) {
        target.RaiseInvalid(u"optype");
    }
    var.SetMLevel(level);
}

void PutDefaultFirst(const Element& target) {
    for (const Element value : target.Children()) {
        if (value.Is(u"TargetValue") && value.Has(u"defaultValue")) {
            target.Dom()->insertBefore(value.Dom(), target.Dom()->getFirstChild());
            return;
        }
    }
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

void PrepareTargets(const Element& model, bool classification, ScoreDictionary& dictionary) {
    const Element targets = model.Child(u"Targets");
    if (!targets) {
        return;
    }
    for (const Element target : targets.Children()) {
        if (!target.Is(u"Target")) {
            continue;
        }
        ScoreDictVar* var = target.Has(u"field") ? dictionary.GetVar(target.Text(u"field")) : nullptr;
        if (var != nullptr) {
            TakeLevel(target, *var);
        }
        const bool isContinuous = var == nullptr ? !classification : var->GetMLevel() == ScoreDictVar::LEVEL_CONTINUOUS;
        if (isContinuous) {
            PutDefaultFirst(target);
        }
    }
}

bool ListsValues(const ScoreDictVar& var) {
    const ScoreValueLabelSet* labels = var.GetValueLabels();
    return labels != nullptr && labels->Size() > 0;
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

Target::Target(std::string name, const ScoreDictVar& var, bool isListed)
    : fName(std::move(name)), fVar(&var), fCategories(*fVar), fIsListed(isListed) {
    AddListed();
}

Target::Target(OwnTarget own) : fOwn(std::move(own.var)), fVar(fOwn.get()), fCategories(*fVar) {
    // The values of a Target are those that it has something to say of, and need not be all.
    AddListed();
    Read(own.element);
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
        fLabels.push_back(label.empty() ? ValueText(value) : label);
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

void Target::Read(const Element& element) {
    if (element) {
        ReadAdjustment(element);
        ReadLabels(element);
    }
}

/// The library's labels are those of the dictionary where it has some.
void Target::ReadLabels(const Element& element) {
    for (const Element child : element.Children()) {
        const std::string label = child.TextOr(u"displayValue", "");
        if (!child.Is(u"TargetValue") || label.empty() || !child.Has(u"value")) {
            continue;
        }
        const std::unique_ptr<ScoreValue> value(MakeValue(*fVar, child.AnyText(u"value")));
        if (value != nullptr) {
            fLabels[static_cast<std::size_t>(Add(*value))] = label;
        }
    }
}

void Target::ReadAdjustment(const Element& element) {
    static constexpr Word<Cast> kCasts[] = {
        {u"round", Cast::ROUND}, {u"ceiling", Cast::CEILING}, {u"floor", Cast::FLOOR}};
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
    // There is one zero among the whole numbers.
    switch (fCast) {
    case Cast::ROUND:
        return RoundUp(number) + 0.0;
    case Cast::CEILING:
        return std::ceil(number) + 0.0;
    case Cast::FLOOR:
        return std::floor(number) + 0.0;
    default:
        return number;
    }
}

} // namespace veltrane_kit
