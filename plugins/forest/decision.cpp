#include "decision.h"

#include "kit/conditions/decide.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace veltrane_forest {

using veltrane_kit::Condition;
using veltrane_kit::Conditions;
using veltrane_kit::Test;
using veltrane_kit::Truth;

namespace {

constexpr double kInfinite = std::numeric_limits<double>::infinity();

/// A case with one value, wherever a condition looks for it.
struct OneValue {
    bool isMissing = true;
    double number = veltrane_kit::kMissing;
    int category = veltrane_kit::FieldValue::kUnknownCategory;

    bool IsMissing(int /*slot*/) const { return isMissing; }
    double Number(int /*slot*/) const { return number; }
    int Category(int /*slot*/) const { return category; }
};

Truth Say(const Conditions& conditions, const Condition& condition, const OneValue& value) {
    bool usedSurrogate = false;
    return conditions.Decide(condition, value, usedSurrogate);
}

constexpr bool IsOrder(Test test) {
    return test >= Test::LESS && test <= Test::GREATER_OR_EQUAL;
}
constexpr bool IsEquality(Test test) {
    return test == Test::EQUAL || test == Test::NOT_EQUAL;
}
constexpr bool IsNumbers(Test test) {
    return test == Test::IN_NUMBERS || test == Test::NOT_IN_NUMBERS;
}
constexpr bool IsPlace(Test test) {
    return test >= Test::PLACE_LESS && test <= Test::PLACE_GREATER_OR_EQUAL;
}
constexpr bool IsOneCategory(Test test) {
    return test == Test::IS_CATEGORY || test == Test::IS_NOT_CATEGORY;
}

/// The cut ahead of a number: comparisons with it say the same of all numbers from there on up to it.
void AddCutBelow(double number, std::vector<double>& cuts) {
    if (number != -kInfinite) {
        cuts.push_back(std::nextafter(number, -kInfinite));
    }
}

/// Whether a condition is what nearly all of most trees are: one comparison by order with a finite number. It has one
/// cut, up to which it holds, or from which on.
bool IsPlainOrder(const Condition& condition) {
    return IsOrder(condition.test) && std::isfinite(condition.number);
}

double CutOf(const Condition& order) {
    const double number = order.number + 0.0;
    const bool isBelow = order.test == Test::LESS || order.test == Test::GREATER_OR_EQUAL;
    return (isBelow ? std::nextafter(number, -kInfinite) : number) + 0.0;
}

/// A number that is none of some sorted ones.
double OtherThan(const std::vector<double>& members) {
    double number = 0.5;
    while (std::binary_search(members.begin(), members.end(), number)) {
        number /= 2.0;
    }
    return number;
}

} // namespace

Feature::Kind Decisions::Asked::KindOf() const {
    if (hasCategory) {
        return Feature::Kind::CODE;
    }
    if (hasNumbers) {
        return Feature::Kind::MEMBER;
    }
    return hasOrder || hasEqual ? Feature::Kind::RANK : Feature::Kind::PRESENCE;
}

void Decisions::Ask(const Conditions& conditions, const Condition& condition, Asked& asked) {
    if (condition.test == Test::ALWAYS || condition.test == Test::NEVER) {
        return;
    }
    if (condition.test >= Test::AND) {
        for (int i = 0; i < condition.span.count; ++i) {
            Ask(conditions, conditions.Part(condition, i), asked);
        }
        return;
    }
    asked.isOneSlot = asked.isOneSlot && (asked.slot == Asked::kNoSlot || asked.slot == condition.slot);
    asked.slot = condition.slot;
    const Test test = condition.test;
    const bool isPresence = test == Test::IS_MISSING || test == Test::IS_NOT_MISSING;
    asked.hasOrder = asked.hasOrder || IsOrder(test);
    asked.hasEqual = asked.hasEqual || IsEquality(test);
    asked.hasNumbers = asked.hasNumbers || IsNumbers(test);
    asked.hasCategory = asked.hasCategory || !(isPresence || IsOrder(test) || IsEquality(test) || IsNumbers(test));
}

/// The cuts of a condition's comparisons, or the members of its sets.
void Decisions::AddBounds(const Conditions& conditions, const Condition& condition, std::vector<double>& bounds,
                          Feature::Kind kind) {
    const Test test = condition.test;
    if (test >= Test::AND) {
        for (int i = 0; i < condition.span.count; ++i) {
            AddBounds(conditions, conditions.Part(condition, i), bounds, kind);
        }
    } else if (IsNumbers(test)) {
        const std::vector<double> numbers = conditions.NumbersOf(condition);
        bounds.insert(bounds.end(), numbers.begin(), numbers.end());
    } else if (IsEquality(test) || IsOrder(test)) {
        // The negative zero is the same as the positive one.
        const double number = condition.number + 0.0;
        if (kind == Feature::Kind::RANK && test != Test::LESS_OR_EQUAL && test != Test::GREATER) {
            AddCutBelow(number, bounds);
        }
        if (test != Test::LESS && test != Test::GREATER_OR_EQUAL) {
            bounds.push_back(number);
        }
    }
}

void Decisions::AddCodes(const Conditions& conditions, const Condition& condition, Feature& feature) {
    if (condition.test >= Test::AND) {
        for (int i = 0; i < condition.span.count; ++i) {
            AddCodes(conditions, conditions.Part(condition, i), feature);
        }
    } else if (IsPlace(condition.test)) {
        feature.AddCode(condition.place.listed - 1);
        feature.AddCode(condition.place.code);
    } else if (IsOneCategory(condition.test)) {
        feature.AddCode(condition.category);
    } else if (condition.test >= Test::IN_CATEGORIES && condition.test <= Test::NOT_IN_FEW_CATEGORIES) {
        for (const int code : conditions.CategoriesOf(condition)) {
            feature.AddCode(code);
        }
    }
}

int Decisions::FeatureOf(const Asked& asked) const {
    return fPlaces.at({asked.slot, asked.KindOf()});
}

bool Decisions::Look(const Conditions& conditions, const Condition& condition) {
    Asked asked;
    Ask(conditions, condition, asked);
    if (!asked.IsOneFeature()) {
        return false;
    }
    if (asked.slot == Asked::kNoSlot) {
        return true;
    }
    const Feature::Kind kind = asked.KindOf();
    const auto [place, isNew] = fPlaces.try_emplace({asked.slot, kind}, static_cast<int>(fFeatures.size()));
    if (isNew) {
        fFeatures.emplace_back(asked.slot, kind);
    }
    Feature& feature = fFeatures[static_cast<std::size_t>(place->second)];
    if (kind == Feature::Kind::CODE) {
        AddCodes(conditions, condition, feature);
        return true;
    }
    if (IsPlainOrder(condition)) {
        feature.AddBound(CutOf(condition));
        return true;
    }
    std::vector<double> bounds;
    AddBounds(conditions, condition, bounds, kind);
    for (const double bound : bounds) {
        if (std::isnan(bound)) {
            return false;
        }
        feature.AddBound(bound + 0.0);
    }
    return true;
}

bool Decisions::Settle(std::uint32_t most) {
    fLadders.resize(fFeatures.size());
    for (std::size_t i = 0; i < fFeatures.size(); ++i) {
        if (!fFeatures[i].Settle(most)) {
            return false;
        }
        if (fFeatures[i].GetKind() == Feature::Kind::RANK) {
            fLadders[i] = CutLadder(fFeatures[i].Bounds());
        }
    }
    return true;
}

/// @param feature of ranks, settled
std::uint32_t Decisions::PlaceOfCut(int feature, double cut) {
    if (feature != fLastCut.feature || cut != fLastCut.cut) {
        const auto at = static_cast<std::size_t>(feature);
        fLastCut = {feature, cut, fLadders[at].PlaceOf(fFeatures[at].Bounds(), cut)};
    }
    return fLastCut.place;
}

bool Decisions::Read(const Conditions& conditions, const Condition& condition, Decision& decision) {
    Asked asked;
    Ask(conditions, condition, asked);
    decision = Decision();
    decision.missing = Say(conditions, condition, OneValue());
    if (asked.slot == Asked::kNoSlot) {
        return true;
    }
    decision.feature = FeatureOf(asked);
    const Feature& feature = fFeatures[static_cast<std::size_t>(decision.feature)];
    if (feature.GetKind() == Feature::Kind::RANK && IsPlainOrder(condition)) {
        decision.high = PlaceOfCut(decision.feature, CutOf(condition));
        decision.isInverted = condition.test == Test::GREATER || condition.test == Test::GREATER_OR_EQUAL;
        return true;
    }
    if (feature.GetKind() == Feature::Kind::RANK) {
        return ReadRanks(conditions, condition, feature, decision);
    }
    ReadMarks(conditions, condition, feature, decision);
    return true;
}

/// A condition says the same of all numbers between two of its own cuts. What it says of the ranks comes in runs, so
/// one that holds for a range, or for what lies beyond one, has three of them at most.
bool Decisions::ReadRanks(const Conditions& conditions, const Condition& condition, const Feature& feature,
                          Decision& decision) {
    struct Run {
        std::uint32_t low;
        bool holds;
    };
    std::vector<double> cuts;
    AddBounds(conditions, condition, cuts, Feature::Kind::RANK);
    std::sort(cuts.begin(), cuts.end());
    cuts.push_back(kInfinite);
    std::vector<Run> runs;
    std::uint32_t next = 0;
    for (std::size_t i = 0; i < cuts.size() && next < feature.Marks(); ++i) {
        const std::uint32_t high = i + 1 == cuts.size() ? feature.Marks() - 1 : feature.PlaceOf(cuts[i]);
        const OneValue value{false, cuts[i], OneValue().category};
        const bool holds = Say(conditions, condition, value) == Truth::YES;
        if (high >= next && (runs.empty() || runs.back().holds != holds)) {
            runs.push_back({next, holds});
        }
        next = std::max(next, high + 1);
    }
    // The range is the run in the middle of three, else the first one.
    const bool hasMiddle = runs.size() == 3;
    const Run& range = runs[hasMiddle ? 1 : 0];
    decision.low = range.low;
    decision.high = (hasMiddle ? runs[2].low : runs.size() == 2 ? runs[1].low : feature.Marks()) - 1;
    decision.isInverted = !range.holds;
    return runs.size() <= 3;
}

void Decisions::ReadMarks(const Conditions& conditions, const Condition& condition, const Feature& feature,
                          Decision& decision) {
    decision.isSet = true;
    decision.holds.reserve(feature.Marks());
    for (std::uint32_t mark = 0; mark < feature.Marks(); ++mark) {
        OneValue value{false, veltrane_kit::kMissing, OneValue().category};
        if (feature.GetKind() == Feature::Kind::MEMBER) {
            value.number = mark == feature.Other() ? OtherThan(feature.Bounds()) : feature.Bounds()[mark];
        } else if (feature.GetKind() == Feature::Kind::CODE && mark != feature.Other()) {
            value.category = static_cast<int>(mark);
        }
        decision.holds.push_back(Say(conditions, condition, value) == Truth::YES ? 1 : 0);
    }
}

} // namespace veltrane_forest
