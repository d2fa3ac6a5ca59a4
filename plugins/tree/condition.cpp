#include "condition.h"

#include <algorithm>

namespace veltrane_tree {

using veltrane_kit::FieldValue;
using veltrane_kit::Inputs;

namespace {

constexpr int kWordBits = 64;

Truth Answer(bool holds) {
    return holds ? Truth::YES : Truth::NO;
}

/// Whether the case's value has a place in the order of its field.
bool HasPlace(const FieldValue& x, Condition::Place operand) {
    return x.category >= 0 && x.category < operand.listed;
}

} // namespace

Truth Conditions::Decide(const Condition& condition, const Inputs& inputs, bool& usedSurrogate) const {
    if (condition.test == Test::ALWAYS || condition.test == Test::NEVER) {
        return Answer(condition.test == Test::ALWAYS);
    }
    if (condition.test >= Test::AND) {
        return DecideParts(condition, inputs, usedSurrogate);
    }
    const FieldValue& x = inputs[condition.slot];
    if (condition.test == Test::IS_MISSING || condition.test == Test::IS_NOT_MISSING) {
        return Answer(x.IsMissing() == (condition.test == Test::IS_MISSING));
    }
    if (x.IsMissing()) {
        return Truth::UNKNOWN;
    }
    switch (condition.test) {
    case Test::EQUAL:
        return Answer(x.number == condition.number);
    case Test::NOT_EQUAL:
        return Answer(x.number != condition.number);
    case Test::LESS:
        return Answer(x.number < condition.number);
    case Test::LESS_OR_EQUAL:
        return Answer(x.number <= condition.number);
    case Test::GREATER:
        return Answer(x.number > condition.number);
    case Test::GREATER_OR_EQUAL:
        return Answer(x.number >= condition.number);
    case Test::IS_CATEGORY:
        return Answer(x.category == condition.category);
    case Test::IS_NOT_CATEGORY:
        return Answer(x.category != condition.category);
    case Test::PLACE_LESS:
        return Answer(HasPlace(x, condition.place) && x.category < condition.place.code);
    case Test::PLACE_LESS_OR_EQUAL:
        return Answer(HasPlace(x, condition.place) && x.category <= condition.place.code);
    case Test::PLACE_GREATER:
        return Answer(HasPlace(x, condition.place) && x.category > condition.place.code);
    case Test::PLACE_GREATER_OR_EQUAL:
        return Answer(HasPlace(x, condition.place) && x.category >= condition.place.code);
    case Test::IN_NUMBERS:
        return Answer(HasNumber(condition.span, x.number));
    case Test::NOT_IN_NUMBERS:
        return Answer(!HasNumber(condition.span, x.number));
    case Test::IN_CATEGORIES:
        return Answer(HasCategory(condition.span, x.category));
    case Test::NOT_IN_CATEGORIES:
        return Answer(!HasCategory(condition.span, x.category));
    case Test::IN_FEW_CATEGORIES:
        return Answer(HasNumber(condition.span, x.category));
    default:
        return Answer(!HasNumber(condition.span, x.category));
    }
}

/// The three-valued logic of compounds. A surrogate is the first of its parts that can be decided.
Truth Conditions::DecideParts(const Condition& condition, const Inputs& inputs, bool& usedSurrogate) const {
    bool isUnknown = false;
    bool isOdd = false;
    const Condition* part = fParts.data() + condition.span.first;
    for (const Condition* const end = part + condition.span.count; part != end; ++part) {
        const Truth truth = Decide(*part, inputs, usedSurrogate);
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
        } else if (truth == Answer(condition.test == Test::OR)) {
            return truth;
        }
    }
    if (isUnknown) {
        return Truth::UNKNOWN;
    }
    return Answer(condition.test == Test::AND || isOdd);
}

int Conditions::LackingSlot(const Condition& condition, const Inputs& inputs) const {
    bool usedSurrogate = false;
    return Decide(condition, inputs, usedSurrogate) == Truth::UNKNOWN ? FirstMissing(condition, inputs)
                                                                      : Inputs::kNoSlot;
}

/// The first missing slot that an undecided condition asks for; of a compound, in its undecided parts.
int Conditions::FirstMissing(const Condition& condition, const Inputs& inputs) const {
    if (condition.test < Test::AND) {
        return condition.slot;
    }
    for (int part = condition.span.first; part < condition.span.first + condition.span.count; ++part) {
        const int slot = LackingSlot(fParts[static_cast<std::size_t>(part)], inputs);
        if (slot != Inputs::kNoSlot) {
            return slot;
        }
    }
    return Inputs::kNoSlot;
}

bool Conditions::HasNumber(Condition::Span set, double number) const {
    const double* const first = fNumbers.data() + set.first;
    return std::binary_search(first, first + set.count, number);
}

bool Conditions::HasCategory(Condition::Span set, int code) const {
    const std::uint64_t* const words = fWords.data() + set.first;
    return code >= 0 && code / kWordBits < set.count && (words[code / kWordBits] >> (code % kWordBits) & 1U) != 0;
}

Condition::Span Conditions::AddNumbers(std::vector<double> numbers) {
    std::sort(numbers.begin(), numbers.end());
    const Condition::Span span{static_cast<std::int32_t>(fNumbers.size()), static_cast<std::int32_t>(numbers.size())};
    fNumbers.insert(fNumbers.end(), numbers.begin(), numbers.end());
    return span;
}

void Conditions::SetCategories(Condition& condition, const std::vector<int>& codes, bool isIn) {
    const auto highest = std::max_element(codes.begin(), codes.end());
    const int words = highest == codes.end() ? 0 : *highest / kWordBits + 1;
    if (static_cast<std::size_t>(words) > codes.size()) {
        condition.test = isIn ? Test::IN_FEW_CATEGORIES : Test::NOT_IN_FEW_CATEGORIES;
        condition.span = AddNumbers(std::vector<double>(codes.begin(), codes.end()));
        return;
    }
    condition.test = isIn ? Test::IN_CATEGORIES : Test::NOT_IN_CATEGORIES;
    condition.span = {static_cast<std::int32_t>(fWords.size()), words};
    fWords.resize(fWords.size() + static_cast<std::size_t>(words));
    std::uint64_t* const bits = fWords.data() + condition.span.first;
    for (const int code : codes) {
        bits[code / kWordBits] |= std::uint64_t{1} << (code % kWordBits);
    }
}

Condition::Span Conditions::AddParts(int count) {
    const Condition::Span span{static_cast<std::int32_t>(fParts.size()), count};
    fParts.resize(fParts.size() + static_cast<std::size_t>(count));
    return span;
}

std::size_t Conditions::Bytes() const {
    return fParts.capacity() * sizeof(Condition) + fNumbers.capacity() * sizeof(double) +
           fWords.capacity() * sizeof(std::uint64_t);
}

} // namespace veltrane_tree
