#include "kit/results/asked_entities.h"

#include <algorithm>

namespace veltrane_kit {

bool AsksForAffinity(const Element& outputField) {
    const XMLCh* feature = outputField.Raw(u"feature");
    return Same(feature, u"affinity") || Same(feature, u"clusterAffinity") || Same(feature, u"entityAffinity");
}

AskedEntities::AskedEntities(const Element& model, const std::vector<Element>& more) {
    const Element output = model.Child(u"Output");
    for (Element field = output ? output.FirstChild() : Element(); field; field = field.NextSibling()) {
        Note(field);
    }
    for (const Element& field : more) {
        Note(field);
    }
}

void AskedEntities::Note(const Element& field) {
    const int rank = field.IntegerOr(u"rank", 1);
    if (rank < 1) {
        field.RaiseInvalid(u"rank");
    }
    fRanks = std::max(fRanks, static_cast<std::size_t>(rank));
    if (AsksForAffinity(field) && field.Has(u"value")) {
        const std::string id = field.AnyText(u"value");
        if (fPlaces.emplace(id, static_cast<int>(fNamed.size())).second) {
            fNamed.push_back({id, field});
        }
    }
}

void AskedEntities::AskAlso(const AskedEntities& outer) {
    fRanks = std::max(fRanks, outer.fRanks);
    for (const Named& named : outer.fNamed) {
        if (fPlaces.emplace(named.id, static_cast<int>(fNamed.size())).second) {
            fNamed.push_back({named.id, named.field, true});
        }
    }
}

void AskedEntities::FindPlaces() {
    fPlaces.clear();
    for (const Named& named : fNamed) {
        fPlaces.emplace(named.id, static_cast<int>(fPlaces.size()));
    }
}

int AskedEntities::PlaceOf(const std::string& id) const {
    const auto found = fPlaces.find(id);
    return found == fPlaces.end() ? kNone : found->second;
}

} // namespace veltrane_kit
