#include "kit/conditions/condition.h"

#include <algorithm>
#include <bit>
#include <numeric>

namespace veltrane_kit {

bool Conditions::HasNumber(Condition::Span set, double number) const {
    const double* const first = fNumbers.data() + set.first;
    return std::binary_search(first, first + set.count, number);
}

bool Conditions::HasCategory(Condition::Span set, int code) const {
    const std::uint64_t* const words = fWords.data() + set.first;
    return code >= 0 && code / kWordBits < set.count && (words[code / kWordBits] >> (code % kWordBits) & 1U) != 0;
}

std::vector<double> Conditions::NumbersOf(const Condition& set) const {
    const auto first = fNumbers.begin() + set.span.first;
    return {first, first + set.span.count};
}

std::vector<int> Conditions::CategoriesOf(const Condition& set) const {
    std::vector<int> codes;
    if (set.test == Test::IN_FEW_CATEGORIES || set.test == Test::NOT_IN_FEW_CATEGORIES) {
        for (const double number : NumbersOf(set)) {
            codes.push_back(static_cast<int>(number));
        }
        return codes;
    }
    const bool isOne = set.test == Test::IN_FIRST_CATEGORIES || set.test == Test::NOT_IN_FIRST_CATEGORIES;
    const std::uint64_t* const words = isOne ? &set.bits : fWords.data() + set.span.first;
    const int count = isOne ? 1 : set.span.count;
    codes.reserve(static_cast<std::size_t>(std::accumulate(
        words, words + count, 0, [](int sum, std::uint64_t word) { return sum + std::popcount(word); })));
    for (int at = 0; at < count; ++at) {
        for (std::uint64_t left = words[at]; left != 0; left &= left - 1) {
            codes.push_back(at * kWordBits + std::countr_zero(left));
        }
    }
    return codes;
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
    if (words <= 1) {
        condition.test = isIn ? Test::IN_FIRST_CATEGORIES : Test::NOT_IN_FIRST_CATEGORIES;
        condition.bits = 0;
        for (const int code : codes) {
            condition.bits |= std::uint64_t{1} << static_cast<unsigned>(code);
        }
        return;
    }
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

void Conditions::Settle() {
    fParts.shrink_to_fit();
    fNumbers.shrink_to_fit();
    fWords.shrink_to_fit();
}

std::size_t Conditions::Bytes() const {
    return fParts.capacity() * sizeof(Condition) + fNumbers.capacity() * sizeof(double) +
           fWords.capacity() * sizeof(std::uint64_t);
}

} // namespace veltrane_kit
