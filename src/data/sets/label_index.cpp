#include "data/sets/label_index.h"

#include <MCVeltrane_900/ValueLbl.h>

#include <algorithm>
#include <typeinfo>

namespace veltrane::data {

using MCVeltrane_900::ScoreValueLabel;
using MCVeltrane_900::ValueLbl;

namespace {

/// A label of the library's own class; null for any other, which may show another value at any time.
const ValueLbl* AsPlain(const ScoreValueLabel& label) {
    return typeid(label) == typeid(ValueLbl) ? static_cast<const ValueLbl*>(&label) : nullptr;
}

} // namespace

LabelPlaces::LabelPlaces(const List& labels) {
    elements.reserve(labels.size());
    for (ScoreValueLabel* label : labels) {
        Add(*label);
    }
}

bool LabelPlaces::IsTrue(const List& labels) const {
    return std::all_of(labels.begin(), labels.end(), [](const ScoreValueLabel* element) {
        const ValueLbl* label = AsPlain(*element);
        return !label || (Marks::IsMarked(Marks::Of(*label)) && Marks::IsUnchanged(label->GetValue()));
    });
}

void LabelPlaces::Add(ScoreValueLabel& element) {
    const int place = static_cast<int>(elements.size());
    elements.push_back(&element);
    order.push_back(place);
    if (const ValueLbl* label = AsPlain(element)) {
        Marks::Mark(Marks::Of(*label));
        Marks::MarkValue(label->GetValue());
        values.Add(place, label->GetValue());
    } else {
        values.AddOther(place);
    }
}

int LabelPlaces::Remove(int place) {
    if (const ValueLbl* label = AsPlain(*elements[place])) {
        values.Remove(place, label->GetValue());
    } else {
        values.RemoveOther(place);
    }
    const auto position = std::lower_bound(order.begin(), order.end(), place);
    return static_cast<int>(order.erase(position) - order.begin());
}

} // namespace veltrane::data
