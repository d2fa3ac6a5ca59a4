#ifndef VELTRANE_PLUGINS_KIT_DECIDE_H
#define VELTRANE_PLUGINS_KIT_DECIDE_H

#include "kit/conditions/condition.h"

#include <cmath>
#include <cstddef>

/// How conditions are decided, for any view of a case: the templates of Conditions.
namespace veltrane_kit {

constexpr Truth TruthOf(bool holds) {
    return holds ? Truth::YES : Truth::NO;
}

/// Whether a comparison of numbers holds.
/// @param number one that is a number
inline bool Holds(Test comparison, double number, double bound) {
    // A bit for each of less, equal and greater, by the order of the comparisons.
    constexpr unsigned kOutcomes[] = {2, 5, 1, 3, 4, 6};
    const unsigned outcome = (number < bound ? 1U : 0U) | (number == bound ? 2U : 0U) | (number > bound ? 4U : 0U);
    return (kOutcomes[static_cast<int>(comparison) - static_cast<int>(Test::EQUAL)] & outcome) != 0;
}

/// Nearly all conditions of nodes are comparisons of a number that is there, alone or ahead of surrogates; they are
/// decided at once. DecideAny() says the same of any condition.
template <typename View>
inline Truth Conditions::Decide(const Condition& condition, const View& fields, bool& usedSurrogate) const {
    const bool hasSurrogates = condition.test == Test::SURROGATE && condition.span.count > 0;
    const Condition& first = hasSurrogates ? FirstPart(condition) : condition;
    if (first.test >= Test::EQUAL && first.test <= Test::GREATER_OR_EQUAL) {
        const double number = fields.Number(first.slot);
        if (!fields.IsMissing(first.slot) && !std::isnan(number)) {
            return TruthOf(Holds(first.test, number, first.number));
        }
    }
    return DecideAny(condition, fields, usedSurrogate);
}

template <typename View>
Truth Conditions::DecideAny(const Condition& condition, const View& fields, bool& usedSurrogate) const {
    if (condition.test == Test::ALWAYS || condition.test == Test::NEVER) {
        return TruthOf(condition.test == Test::ALWAYS);
    }
    if (condition.test >= Test::AND) {
        return DecideParts(condition, fields, usedSurrogate);
    }
    const bool isMissing = fields.IsMissing(condition.slot);
    if (condition.test == Test::IS_MISSING || condition.test == Test::IS_NOT_MISSING) {
        return TruthOf(isMissing == (condition.test == Test::IS_MISSING));
    }
    return isMissing ? Truth::UNKNOWN : DecideValue(condition, fields);
}

template <typename View>
Truth Conditions::DecideValue(const Condition& condition, const View& fields) const {
    const int slot = condition.slot;
    // Whether the case's value has a place in the order of its field.
    const auto hasPlace = [&] { return fields.Category(slot) >= 0 && fields.Category(slot) < condition.place.listed; };
    switch (condition.test) {
    case Test::EQUAL:
        return TruthOf(fields.Number(slot) == condition.number);
    case Test::NOT_EQUAL:
        return TruthOf(fields.Number(slot) != condition.number);
    case Test::LESS:
        return TruthOf(fields.Number(slot) < condition.number);
    case Test::LESS_OR_EQUAL:
        return TruthOf(fields.Number(slot) <= condition.number);
    case Test::GREATER:
        return TruthOf(fields.Number(slot) > condition.number);
    case Test::GREATER_OR_EQUAL:
        return TruthOf(fields.Number(slot) >= condition.number);
    case Test::IS_CATEGORY:
        return TruthOf(fields.Category(slot) == condition.category);
    case Test::IS_NOT_CATEGORY:
        return TruthOf(fields.Category(slot) != condition.category);
    case Test::PLACE_LESS:
        return TruthOf(hasPlace() && fields.Category(slot) < condition.place.code);
    case Test::PLACE_LESS_OR_EQUAL:
        return TruthOf(hasPlace() && fields.Category(slot) <= condition.place.code);
    case Test::PLACE_GREATER:
        return TruthOf(hasPlace() && fields.Category(slot) > condition.place.code);
    case Test::PLACE_GREATER_OR_EQUAL:
        return TruthOf(hasPlace() && fields.Category(slot) >= condition.place.code);
    case Test::IN_NUMBERS:
        return TruthOf(HasNumber(condition.span, fields.Number(slot)));
    case Test::NOT_IN_NUMBERS:
        return TruthOf(!HasNumber(condition.span, fields.Number(slot)));
    case Test::IN_CATEGORIES:
        return TruthOf(HasCategory(condition.span, fields.Category(slot)));
    case Test::NOT_IN_CATEGORIES:
        return TruthOf(!HasCategory(condition.span, fields.Category(slot)));
    case Test::IN_FIRST_CATEGORIES:
        return TruthOf(HasBit(condition.bits, fields.Category(slot)));
    case Test::NOT_IN_FIRST_CATEGORIES:
        return TruthOf(!HasBit(condition.bits, fields.Category(slot)));
    case Test::IN_FEW_CATEGORIES:
        return TruthOf(HasNumber(condition.span, fields.Category(slot)));
    default:
        return TruthOf(!HasNumber(condition.span, fields.Category(slot)));
    }
}

/// The three-valued logic of compounds. A surrogate is the first of its parts that can be decided.
template <typename View>
Truth Conditions::DecideParts(const Condition& condition, const View& fields, bool& usedSurrogate) const {
    bool isUnknown = false;
    bool isOdd = false;
    const Condition* part = fParts.data() + condition.span.first;
    for (const Condition* const end = part + condition.span.count; part != end; ++part) {
        const Truth truth = Decide(*part, fields, usedSurrogate);
        if (truth == Truth::UNKNOWN) {
            if (condition.test == Test::XOR) {
                return Truth::UNKNOWN;
            }
            isUnknown = true;
        } else if (condition.test == Test::SURROGATE) {
            usedSurrogate = usedSurrogate || isUnknown;
            return truth;
        } else if (condition.test == Test::XOR) {
            isOdd = isOdd != (truth == Truth::YES);
        } else if (truth == TruthOf(condition.test == Test::OR)) {
            return truth;
        }
    }
    if (isUnknown) {
        return Truth::UNKNOWN;
    }
    return TruthOf(condition.test == Test::AND || isOdd);
}

template <typename View>
int Conditions::LackingSlot(const Condition& condition, const View& fields) const {
    bool usedSurrogate = false;
    return Decide(condition, fields, usedSurrogate) == Truth::UNKNOWN ? FirstMissing(condition, fields) : kNoSlot;
}

/// The first missing slot that an undecided condition asks for; of a compound, in its undecided parts.
template <typename View>
int Conditions::FirstMissing(const Condition& condition, const View& fields) const {
    if (condition.test < Test::AND) {
        return condition.slot;
    }
    for (int part = condition.span.first; part < condition.span.first + condition.span.count; ++part) {
        const int slot = LackingSlot(fParts[static_cast<std::size_t>(part)], fields);
        if (slot != kNoSlot) {
            return slot;
        }
    }
    return kNoSlot;
}

} // namespace veltrane_kit

#endif
