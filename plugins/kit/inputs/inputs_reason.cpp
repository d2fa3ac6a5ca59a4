// Why a case isn't scored. Nothing here is on the way of a case that is.
#include "kit/inputs/inputs_reason.h"

#include <utility>

namespace veltrane_kit {

using namespace MCVeltrane_900;

namespace {

using Places = std::unordered_map<std::string, long>;

Places PlacesOf(const std::vector<std::string>& names) {
    Places places;
    for (const std::string& name : names) {
        places.emplace(name, static_cast<long>(places.size()));
    }
    return places;
}

long PlaceOf(const std::string& name, const Places& places) {
    const auto found = places.find(name);
    return found == places.end() ? UnscoredReason::kNoPlace : found->second;
}

} // namespace

UnscoredReason Inputs::WhyUnscored(int lacking) {
    if (fCase == nullptr) {
        return {UnscoredReason::NO_PREDICTION};
    }
    if (fExplanations == nullptr) {
        fExplanations = std::make_unique<Explanations>();
        fExplanations->fields = PlacesOf(fDictionary.GetVarNames());
        fExplanations->derived = PlacesOf(fDerived.Names());
    }
    if (fMoved != nullptr) {
        return {UnscoredReason::OTHER_LAYOUT, PlaceOf(fMoved->name, fExplanations->fields)};
    }
    if (fRefused != nullptr) {
        return WhyInputLacks(*fRefused);
    }
    if (lacking == kNoSlot) {
        return {UnscoredReason::NO_PREDICTION};
    }
    const Source* source = SourceOf(lacking);
    return source != nullptr ? WhyInputLacks(*source) : WhyDerivedLacks(lacking);
}

/// A value that is there was refused, or counts as missing.
UnscoredReason Inputs::WhyInputLacks(const Source& source) const {
    const ScoreValue* raw = source.position < 0 ? nullptr : fCase->Get(source.position);
    const bool isMissing = source.field->IsMissing(raw);
    return {isMissing ? UnscoredReason::MISSING : UnscoredReason::INVALID, PlaceOf(source.name, fExplanations->fields)};
}

UnscoredReason Inputs::WhyDerivedLacks(int slot) {
    const auto [found, isNew] = fExplanations->inputsOf.try_emplace(slot);
    if (isNew) {
        found->second = fDerived.DataSlotsOf(slot);
    }
    for (const int input : found->second) {
        const Source* source = SourceOf(input);
        if (source != nullptr && fFrame->Field(input).IsMissing()) {
            return WhyInputLacks(*source);
        }
    }
    return {UnscoredReason::DERIVED, PlaceOf(fDerived.NameOf(slot), fExplanations->derived)};
}

} // namespace veltrane_kit
