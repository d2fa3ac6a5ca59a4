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

UnscoredReason Inputs::WhyUnscored(int lacking, InputState& state) const {
    if (state.fCase == nullptr) {
        return {UnscoredReason::NO_PREDICTION};
    }
    if (state.fExplanations == nullptr) {
        state.fExplanations = std::make_unique<Explanations>();
        state.fExplanations->fields = PlacesOf(fDictionary.GetVarNames());
        state.fExplanations->derived = PlacesOf(fDerived.Names());
    }
    if (state.fMoved != nullptr) {
        return {UnscoredReason::OTHER_LAYOUT, PlaceOf(state.fMoved->name, state.fExplanations->fields)};
    }
    if (state.fRefused != nullptr) {
        return WhyInputLacks(*state.fRefused, state);
    }
    const Source* source = lacking == kNoSlot ? nullptr : SourceOf(lacking);
    if (source == nullptr && !fDerived.Has(lacking)) {
        return {UnscoredReason::NO_PREDICTION};
    }
    return source != nullptr ? WhyInputLacks(*source, state) : WhyDerivedLacks(lacking, state);
}

/// A value that is there was refused, or counts as missing.
UnscoredReason Inputs::WhyInputLacks(const Source& source, const InputState& state) const {
    const bool isMissing = source.field->IsMissing(RawOf(source, state));
    return {isMissing ? UnscoredReason::MISSING : UnscoredReason::INVALID,
            PlaceOf(source.name, state.fExplanations->fields)};
}

UnscoredReason Inputs::WhyDerivedLacks(int slot, InputState& state) const {
    const auto [found, isNew] = state.fExplanations->inputsOf.try_emplace(slot);
    if (isNew) {
        found->second = fDerived.DataSlotsOf(slot);
    }
    for (const int input : found->second) {
        const Source* source = SourceOf(input);
        if (source != nullptr && state.fFrame.Field(input).IsMissing()) {
            return WhyInputLacks(*source, state);
        }
    }
    if (fDerived.NameOf(slot).empty()) {
        return {UnscoredReason::NO_PREDICTION};
    }
    return {UnscoredReason::DERIVED, PlaceOf(fDerived.NameOf(slot), state.fExplanations->derived)};
}

} // namespace veltrane_kit
