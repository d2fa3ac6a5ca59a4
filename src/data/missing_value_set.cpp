#include <MCVeltrane_900/MissingValueSet.h>
#include <MCVeltrane_900/ScoreValueRange.h>

#include <algorithm>

namespace MCVeltrane_900 {

MissingValueSet::MissingValueSet() = default;
MissingValueSet::MissingValueSet(const MissingValueSet& other) = default;
MissingValueSet& MissingValueSet::operator=(const MissingValueSet& other) = default;
MissingValueSet::~MissingValueSet() = default;

ScoreMissingValueSet* MissingValueSet::Clone() const {
    return new MissingValueSet(*this);
}

bool MissingValueSet::Add(ScoreValueRange* range) {
    if (!range || Contains(range)) {
        return false;
    }
    fRanges.Items().push_back(range);
    return true;
}

bool MissingValueSet::Remove(const ScoreValueRange* range) {
    if (!range) {
        return false;
    }
    // The argument may be one of the elements, so nothing is deleted before the last comparison.
    auto& ranges = fRanges.Items();
    const auto doomed = std::stable_partition(
        ranges.begin(), ranges.end(), [range](const ScoreValueRange* element) { return !(*element == *range); });
    const bool found = doomed != ranges.end();
    std::for_each(doomed, ranges.end(), [](const ScoreValueRange* element) { delete element; });
    ranges.erase(doomed, ranges.end());
    return found;
}

int MissingValueSet::Size() const {
    return fRanges.Size();
}

bool MissingValueSet::Contains(const ScoreValueRange* range) const {
    const auto& ranges = fRanges.Items();
    return range && std::any_of(ranges.begin(), ranges.end(),
                                [range](const ScoreValueRange* element) { return *element == *range; });
}

std::vector<const ScoreValueRange*> MissingValueSet::GetMissingValues() const {
    return {fRanges.Items().begin(), fRanges.Items().end()};
}

void MissingValueSet::Display(std::ostream& out) const {
    out << " Begin MissingValueSet Display:\n";
    for (const ScoreValueRange* range : fRanges.Items()) {
        range->Display(out);
    }
    out << "End MissingValueSet Display.\n";
}

bool MissingValueSet::IsInAnyRange(const ScoreValue* value) const {
    const auto& ranges = fRanges.Items();
    return std::any_of(ranges.begin(), ranges.end(),
                       [value](const ScoreValueRange* range) { return range->IsInRange(value); });
}

} // namespace MCVeltrane_900
