#ifndef VELTRANE_DATA_VALUE_INDEX_H
#define VELTRANE_DATA_VALUE_INDEX_H

#include "data/sets/places.h"
#include "data/values/value_cast.h"
#include "data/values/value_text.h"

#include <MCVeltrane_900/DateTimeValue.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/ScoreValue.h>

#include <algorithm>
#include <cmath>
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
    static constexpr int kNowhere = -1;

    /// @param value null is never visited
    void Add(int place, const MCVeltrane_900::ScoreValue* value);
    /// @param value as it was when it was added
    void Remove(int place, const MCVeltrane_900::ScoreValue* value);

    /// A place that is visited in every search.
    void AddOther(int place) { fOthers.push_back(place); }
    void RemoveOther(int place) { std::erase(fOthers, place); }

    /// Whether a number or a date-time is among the values. Their Equal() is true for everything, so no search by text
    /// finds them.
    bool HoldsNumbers() const { return fHoldsNaN || !fNumbers.IsEmpty() || !fDateTimes.IsEmpty(); }

    /// Calls visit(place), in no order, for each place whose value can be equal to the asked one: by its own operator,
    /// by that of an asked value of the library's own classes, or by Equal() unless HoldsNumbers(). Ends with the first
    /// place for which visit(place) is true.
    /// @return whether there was one
    template <typename Visit>
    bool SearchUntil(const MCVeltrane_900::ScoreValue& asked, Visit visit) const {
        bool isFound = false;
        Near(asked, [&](const auto& places, const auto& from, auto isNear) {
            isFound = places.VisitUntil(from, isNear, visit);
        });
        return isFound || std::any_of(fOthers.begin(), fOthers.end(), visit);
    }

    /// The lowest place whose value can be equal to the asked one and for which matches(place) is true; kNowhere
    /// without one. Of values that no operator tells apart only the first is asked, however many there are.
    template <typename Matches>
    int FindLowest(const MCVeltrane_900::ScoreValue& asked, Matches matches) const {
        int lowest = kNowhere;
        const auto take = [&lowest, &matches](int place) {
            if ((lowest == kNowhere || place < lowest) && matches(place)) {
                lowest = place;
            }
        };
        Near(asked,
             [&take](const auto& places, const auto& from, auto isNear) { places.VisitLowest(from, isNear, take); });
        for (const int place : fOthers) {
            take(place);
        }
        return lowest;
    }

private:
    /// The form in which equal texts are the same.
    static std::string_view Trimmed(std::string_view text) { return text.substr(0, text.find_last_not_of(' ') + 1); }

    /// What the operator of a date-time compares: the number inside, which its GetDouble() may show in another unit,
    /// and the kind.
    struct Moment {
        double seconds;
        int kind;
    };

    struct CompareNumbers {
        int operator()(double left, double right) const { return left < right ? -1 : left > right; }
    };
    struct CompareMoments {
        int operator()(const Moment& left, const Moment& right) const {
            const int order = CompareNumbers()(left.seconds, right.seconds);
            return order != 0 ? order : left.kind < right.kind ? -1 : left.kind > right.kind;
        }
    };
    /// A text in the form that equal ones share, and its own size.
    struct SeenText {
        explicit SeenText(std::string_view text) : trimmed(Trimmed(text)), size(text.size()) {}
        SeenText(std::string_view key, std::size_t fullSize) : trimmed(key), size(fullSize) {}
        std::string_view trimmed;
        std::size_t size;
    };
    struct KeptText {
        explicit KeptText(const SeenText& text) : trimmed(text.trimmed), size(text.size) {}
        explicit operator SeenText() const { return {trimmed, size}; }
        std::string trimmed;
        std::size_t size;
    };
    /// Equal texts in a row, and among them those with as many trailing blanks.
    struct CompareTexts {
        int operator()(const SeenText& left, const SeenText& right) const {
            const int order = left.trimmed.compare(right.trimmed);
            return order != 0 ? order : left.size < right.size ? -1 : left.size > right.size;
        }
    };

    /// Calls search(places, from, isNear) with the keys that the asked value can be equal to.
    template <typename Search>
    void Near(const MCVeltrane_900::ScoreValue& asked, Search search) const {
        switch (asked.GetType()) {
        case MCVeltrane_900::ScoreValue::NUMERIC_VALUE:
            NearNumber(asked.GetDouble(), search);
            break;
        case MCVeltrane_900::ScoreValue::STRING_VALUE:
            NearText(Trimmed(ValueText(asked).View()), search);
            break;
        case MCVeltrane_900::ScoreValue::DATETIME_VALUE:
            if (const MCVeltrane_900::DateTimeValue* dateTime = FindDateTime(asked)) {
                const Moment moment = MomentOf(*dateTime);
                search(fDateTimes, moment, [moment](const Moment& near) { return !CompareMoments()(near, moment); });
            }
            break;
        }
    }

    /// An infinity is equal to nothing.
    template <typename Search>
    void NearNumber(double number, Search& search) const {
        if (std::isfinite(number)) {
            const double window = std::abs(number) * kWindow;
            search(fNumbers, number - window, [last = number + window](double key) { return key <= last; });
        }
    }

    template <typename Search>
    void NearText(std::string_view key, Search& search) const {
        search(fTexts, SeenText(key, 0), [key](const SeenText& near) { return near.trimmed == key; });
    }

    static Moment MomentOf(const MCVeltrane_900::DateTimeValue& value) {
        return {value.NumericValue::GetDouble(), value.GetDateTimeType()};
    }

    /// Calls change(places, key) with the place list of a plain value; false for any other.
    template <typename Change>
    bool ChangeKey(const MCVeltrane_900::ScoreValue& value, Change change);

    /// Wider than the relative tolerance of numeric equality, 2.22045e-14.
    static constexpr double kWindow = 2.5e-14;

    Places<double, double, CompareNumbers> fNumbers;
    Places<Moment, Moment, CompareMoments> fDateTimes;
    Places<KeptText, SeenText, CompareTexts> fTexts;
    std::vector<int> fOthers;
    bool fHoldsNaN = false;
};

} // namespace veltrane::data

#endif
