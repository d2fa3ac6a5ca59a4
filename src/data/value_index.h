#ifndef VELTRANE_DATA_VALUE_INDEX_H
#define VELTRANE_DATA_VALUE_INDEX_H

#include "data/value_cast.h"
#include "data/value_text.h"

#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/ScoreValue.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace veltrane::data {

/// Whether the operator of a value is known to agree with the index. A value of any other class has to be compared with
/// all values, where it is the receiver.
bool AgreesWithIndex(const MCVeltrane_900::ScoreValue& value);

/// Narrows the search for a value in a long list down to the places that can match.
///
/// The operators of values are no ordering, so nothing is decided here: a search visits a superset of the places whose
/// value is equal, and the caller asks the operator itself. Plain numbers are found by a window that is wider than the
/// tolerance of numeric equality, plain texts without their trailing blanks, plain date-times by their seconds; a value
/// of any other class is visited in every search.
class ValueIndex {
public:
    /// @param value null is never visited
    void Add(int position, const MCVeltrane_900::ScoreValue* value);

    /// Adds a place that is visited in every search.
    void AddOther(int position) { fOthers.push_back(position); }

    /// Whether a number or a date-time is among the values. Their Equal() is true for everything, so no search by text
    /// finds them.
    bool HoldsNumbers() const { return fHoldsNumbers; }

    /// Calls visit(position), in no order, for each place whose value can be equal to the asked one: by its own
    /// operator, by that of an asked value of the library's own classes, or by Equal() unless HoldsNumbers().
    template <typename Visit>
    void Search(const MCVeltrane_900::ScoreValue& asked, Visit visit) const {
        SearchUntil(asked, [visit](int position) {
            visit(position);
            return false;
        });
    }

    /// The same up to the first place for which visit(position) is true.
    /// @return whether there was one
    template <typename Visit>
    bool SearchUntil(const MCVeltrane_900::ScoreValue& asked, Visit visit) const {
        if (asked.GetType() == MCVeltrane_900::ScoreValue::NUMERIC_VALUE) {
            if (SearchNumber(asked.GetDouble(), visit)) {
                return true;
            }
        } else if (asked.GetType() == MCVeltrane_900::ScoreValue::STRING_VALUE) {
            if (SearchText(Key(ValueText(asked).View()), visit)) {
                return true;
            }
        } else if (const MCVeltrane_900::DateTimeValue* dateTime = FindDateTime(asked)) {
            const auto [begin, end] = fDateTimes.equal_range(SecondsOf(*dateTime));
            if (std::any_of(begin, end, [&visit](const auto& entry) { return visit(entry.second); })) {
                return true;
            }
        }
        return std::any_of(fOthers.begin(), fOthers.end(), visit);
    }

private:
    /// An infinity is equal to nothing.
    template <typename Visit>
    bool SearchNumber(double number, Visit& visit) const {
        if (!std::isfinite(number)) {
            return false;
        }
        const double window = std::abs(number) * kWindow;
        const double last = number + window;
        for (auto entry = fNumbers.lower_bound(number - window); entry != fNumbers.end() && entry->first <= last;
             ++entry) {
            if (visit(entry->second)) {
                return true;
            }
        }
        return false;
    }

    // Not by equal_range(), which goes from one end of the equal keys to the other here.
    template <typename Visit>
    bool SearchText(std::string_view key, Visit& visit) const {
        for (auto entry = fTexts.lower_bound(key); entry != fTexts.end() && entry->first == key; ++entry) {
            if (visit(entry->second)) {
                return true;
            }
        }
        return false;
    }

    /// The form in which equal texts are the same.
    static std::string_view Key(std::string_view text) { return text.substr(0, text.find_last_not_of(' ') + 1); }

    /// What the operator of a date-time compares, exactly: the number inside, which its GetDouble() may show in another
    /// unit.
    static double SecondsOf(const MCVeltrane_900::DateTimeValue& dateTime) {
        return dateTime.NumericValue::GetDouble();
    }

    /// Wider than the relative tolerance of numeric equality, 2.22045e-14.
    static constexpr double kWindow = 2.5e-14;

    std::multimap<double, int> fNumbers;
    std::multimap<double, int> fDateTimes;
    std::multimap<std::string, int, std::less<>> fTexts;
    std::vector<int> fOthers;
    bool fHoldsNumbers = false;
};

} // namespace veltrane::data

#endif
