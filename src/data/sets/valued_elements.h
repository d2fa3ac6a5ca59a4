#ifndef VELTRANE_DATA_VALUED_ELEMENTS_H
#define VELTRANE_DATA_VALUED_ELEMENTS_H

#include <MCVeltrane_900/ScoreValue.h>

#include <algorithm>
#include <vector>

/// What the sets of labelled values and of probabilities share: elements that hold a value, compared by it alone.
namespace veltrane::data {

/// Compares the values of two elements by one operator of ScoreValue; a null value on either side gives false.
template <typename Element, typename Compare>
bool CompareValues(const Element& a, const Element& b, Compare compare) {
    const MCVeltrane_900::ScoreValue* left = a.GetValue();
    const MCVeltrane_900::ScoreValue* right = b.GetValue();
    return left && right && compare(*left, *right);
}

/// The first element with the value, by the operator of the stored value; null without one or for a null value.
template <typename Element>
const Element* FindByValue(const std::vector<Element*>& elements, const MCVeltrane_900::ScoreValue* value) {
    if (!value) {
        return nullptr;
    }
    for (const Element* element : elements) {
        const MCVeltrane_900::ScoreValue* stored = element->GetValue();
        if (stored && *stored == *value) {
            return element;
        }
    }
    return nullptr;
}

/// Takes out and deletes the first element that is equal to the given one.
template <typename Element>
bool RemoveFirstEqual(std::vector<Element*>& elements, const Element* element) {
    if (!element) {
        return false;
    }
    const auto found = std::find_if(elements.begin(), elements.end(),
                                    [element](const Element* candidate) { return *candidate == *element; });
    if (found == elements.end()) {
        return false;
    }
    const Element* doomed = *found;
    elements.erase(found);
    delete doomed;
    return true;
}

/// The text of an element's value in a debug dump.
inline std::string DisplayText(const MCVeltrane_900::ScoreValue* value) {
    return value ? value->GetString() : "NULL";
}

} // namespace veltrane::data

#endif
