#ifndef VELTRANE_PLUGINS_KIT_ASKED_ENTITIES_H
#define VELTRANE_PLUGINS_KIT_ASKED_ENTITIES_H

#include "kit/document/element.h"

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
        bool isOfWhole = false; ///< of an outer model, so that another part may have it
    };

    const std::vector<Named>& GetNamed() const { return fNamed; }

    /// The place of an id among the named ones; kNone for another one.
    int PlaceOf(const std::string& id) const;

    /// The highest rank that is asked for; 1 for the entity that decided.
    std::size_t Ranks() const { return fRanks; }

    /// Adds what an outer model asks, which any of its parts may tell.
    void AskAlso(const AskedEntities& outer);

    /// Forgets the names of an outer model that a part doesn't have.
    /// @param isKnown whether the part has an entity of an id
    /// @throws VTException 260153 for a name of its own that it doesn't have
    template <typename IsKnown>
    void Resolve(const IsKnown& isKnown) {
        std::erase_if(fNamed, [&](const Named& named) {
            if (isKnown(named.id)) {
                return false;
            }
            if (!named.isOfWhole) {
                named.field.RaiseInvalid(u"value");
            }
            return true;
        });
        FindPlaces();
    }

private:
    void Note(const Element& field);
    void FindPlaces();

    std::vector<Named> fNamed;
    std::unordered_map<std::string, int> fPlaces; ///< by id
    std::size_t fRanks = 1;
};

/// Whether an output field asks for an affinity.
bool AsksForAffinity(const Element& outputField);

} // namespace veltrane_kit

#endif
