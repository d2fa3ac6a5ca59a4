#ifndef VELTRANE_PLUGINS_KIT_ASKED_ENTITIES_H
#define VELTRANE_PLUGINS_KIT_ASKED_ENTITIES_H

#include "kit/document/element.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <unordered_map>
#include <vector>

namespace veltrane_kit {

/// What the output fields of a model want to know of its clusters or training instances: whose affinities, by their
/// ids, and of how many by their ranks. It is there before the scorer, which tells no more than that.
class AskedEntities {
public:
    static constexpr int kNone = -1;

    /// Nothing.
    AskedEntities() = default;

    /// @param model with an Output, or without
    /// @param more  output fields of an outer model that ask this one
    /// @throws VTException 260153 for a rank that is none
    AskedEntities(const Element& model, const std::vector<Element>& more);

    /// An id and the output field that names it first, in its attribute "value".
    struct Named {
        std::string id;
        Element field;
    };

    const std::vector<Named>& GetNamed() const { return fNamed; }

    /// The place of an id among the named ones; kNone for another one.
    int PlaceOf(const std::string& id) const;

    /// The highest rank that is asked for; 1 for the entity that decided.
    std::size_t Ranks() const { return fRanks; }

    /// What an outer model asks may be told by any of its parts.
    void AskRanksOf(const AskedEntities& outer) { fRanks = std::max(fRanks, outer.fRanks); }

private:
    void Note(const Element& field);

    std::vector<Named> fNamed;
    std::unordered_map<std::string, int> fPlaces; ///< by id
    std::size_t fRanks = 1;
};

/// Whether an output field asks for an affinity.
bool AsksForAffinity(const Element& outputField);

} // namespace veltrane_kit

#endif
