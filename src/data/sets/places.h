#ifndef VELTRANE_DATA_PLACES_H
#define VELTRANE_DATA_PLACES_H

#include <iterator>
#include <limits>
#include <set>
#include <utility>

namespace veltrane::data {

/// Places in a list by the key of what stands there, in order of the keys; under equal keys the lower place comes
/// first.
/// @tparam Stored the key as it is kept
/// @tparam Seen   the key as it is asked for, made of a stored one without a copy
/// @tparam Compare gives a number below, at or above 0 for two seen keys, which must be an order
template <typename Stored, typename Seen, typename Compare>
class Places {
public:
    bool IsEmpty() const { return fEntries.empty(); }
    void Add(const Seen& key, int place) { fEntries.emplace(Stored(key), place); }

    void Remove(const Seen& key, int place) {
        const auto found = fEntries.find(Probe(key, place));
        if (found != fEntries.end()) {
            fEntries.erase(found);
        }
    }

    /// Visits the places from a key on, as long as isNear(key), up to the first one for which visit(place) is true.
    /// @return whether there was one
    template <typename IsNear, typename Visit>
    bool VisitUntil(const Seen& from, IsNear isNear, Visit& visit) const {
        for (auto entry = Begin(from); entry != fEntries.end() && isNear(Seen(entry->first)); ++entry) {
            if (visit(entry->second)) {
                return true;
            }
        }
        return false;
    }

    /// Visits only the lowest place of each key, however many have that key.
    template <typename IsNear, typename Visit>
    void VisitLowest(const Seen& from, IsNear isNear, Visit& visit) const {
        for (auto entry = Begin(from); entry != fEntries.end() && isNear(Seen(entry->first)); entry = NextKey(entry)) {
            visit(entry->second);
        }
    }

private:
    using Entry = std::pair<Stored, int>;
    using Probe = std::pair<Seen, int>;

    struct Order {
        using is_transparent = void;

        template <typename Left, typename Right>
        bool operator()(const Left& left, const Right& right) const {
            const int order = Compare()(Seen(left.first), Seen(right.first));
            return order != 0 ? order < 0 : left.second < right.second;
        }
    };
    using Entries = std::set<Entry, Order>;

    typename Entries::const_iterator Begin(const Seen& key) const {
        return fEntries.lower_bound(Probe(key, std::numeric_limits<int>::min()));
    }

    /// Keys are seldom shared, so the next entry is looked at before the tree is searched.
    typename Entries::const_iterator NextKey(typename Entries::const_iterator entry) const {
        const Seen key(entry->first);
        const auto next = std::next(entry);
        return next == fEntries.end() || Compare()(Seen(next->first), key) != 0
                   ? next
                   : fEntries.upper_bound(Probe(key, std::numeric_limits<int>::max()));
    }

    Entries fEntries;
};

} // namespace veltrane::data

#endif
