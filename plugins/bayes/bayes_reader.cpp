#include "bayes_reader.h"

#include "kit/document/application.h"
#include "kit/document/raise.h"
#include "kit/values/data_types.h"

#include <algorithm>
#include <cmath>

namespace veltrane_bayes {

using veltrane_kit::Element;
using veltrane_kit::Message;
using veltrane_kit::Narrow;
using veltrane_kit::Raise;
using veltrane_kit::RaiseAt;

namespace {

constexpr const XMLCh* kField = u"fieldName";
constexpr const XMLCh* kValue = u"value";
constexpr const XMLCh* kCount = u"count";
constexpr const XMLCh* kThreshold = u"threshold";
constexpr const XMLCh* kPairs = u"PairCounts";
constexpr const XMLCh* kStats = u"TargetValueStats";
constexpr const XMLCh* kDerived = u"DerivedField";

double RequirePositive(const Element& element, const XMLCh* name) {
    const double number = element.Number(name);
    if (!(number > 0.0)) {
        element.RaiseInvalid(name);
    }
    return number;
}

/// Also where the share is too small for all its digits, or for a double at all.
double LogOfShare(double count, double sum) {
    const double share = count / sum;
    return std::isnormal(share) ? std::log(share) : std::log(count) - std::log(sum);
}

Density ReadUniform(const Element& element) {
    const double lower = element.Number(u"lower");
    const double upper = element.Number(u"upper");
    if (lower > upper) {
        Raise<Message::VALUE_ABOVE_OTHER>(element.Text(u"lower"), "lower", element.Text(u"upper"), "upper",
                                          element.Tag());
    }
    if (lower == upper) {
        element.RaiseInvalid(u"upper");
    }
    return Density::Uniform(lower, upper);
}

/// Of a distribution that nothing but mean and variance is known of, the normal one says the least.
Density ReadDistribution(const Element& element) {
    if (element.Is(u"GaussianDistribution") || element.Is(u"AnyDistribution")) {
        const double mean = element.Number(u"mean");
        const double variance = RequirePositive(element, u"variance");
        if (!std::isfinite(0.5 / variance)) {
            element.RaiseInvalid(u"variance");
        }
        return Density::Normal(mean, variance);
    }
    if (element.Is(u"PoissonDistribution")) {
        const double mean = element.Number(u"mean");
        if (mean < 0.0) {
            element.RaiseInvalid(u"mean");
        }
        return Density::Poisson(mean);
    }
    if (!element.Is(u"UniformDistribution")) {
        element.RaiseMisplaced();
    }
    return ReadUniform(element);
}

} // namespace

BayesModel BayesReader::Read(const Element& element) {
    ReadThreshold(element);
    ReadOutput(element.RequireChild(u"BayesOutput"));
    const Element inputs = element.RequireChild(u"BayesInputs");
    ReadInputs(inputs);
    if (fModel.inputs.empty()) {
        Raise<Message::NO_CHILD_ELEMENT>(inputs.Tag());
    }
    return std::move(fModel);
}

/// Rattle means by the threshold what R does: it stands in for a density of 0 alone.
void BayesReader::ReadThreshold(const Element& element) {
    const double threshold = element.Number(kThreshold);
    if (!(threshold >= 0.0 && threshold <= 1.0)) {
        element.RaiseInvalid(kThreshold);
    }
    fLogThreshold = std::log(threshold);
    const bool isRattles = veltrane_kit::ApplicationOf(element) == "Rattle/PMML";
    fOfDensities = {isRattles ? kVanishing : fLogThreshold, fLogThreshold};
}

void BayesReader::ReadOutput(const Element& element) {
    const std::string name = element.Text(kField);
    if (!fParts.target->IsOwn() && name != fParts.target->Name()) {
        element.RaiseInvalid(kField);
    }
    std::vector<double> sums;
    for (const auto& [place, count] : ReadCounts(element, true, sums)) {
        fModel.logs.push_back(std::log(count));
    }
    if (std::all_of(sums.begin(), sums.end(), [](double sum) { return sum == 0.0; })) {
        RaiseAt<Message::REQUIRES_ABOVE_ZERO>(element.Tag(), nullptr, "0", Narrow(kCount));
    }
}

/// The counts of categories. The order of those of the BayesOutput is that of the categories from then on.
/// @param sums of each category; grow by the counts
BayesReader::Counts BayesReader::ReadCounts(const Element& parent, bool isOutput, std::vector<double>& sums) {
    for (const Element child : parent.Children()) {
        if (!child.Is(u"TargetValueCounts")) {
            child.RaiseMisplaced();
        }
    }
    const Element list = parent.RequireChild(u"TargetValueCounts");
    Counts counts;
    for (const Element child : list.Children()) {
        if (!child.Is(u"TargetValueCount")) {
            child.RaiseMisplaced();
        }
        if (isOutput) {
            const int category = fParts.target->CategoryOf(child, kValue);
            if (fPlaces.emplace(category, fPlaces.size()).second) {
                fModel.categories.push_back(category);
            }
        }
        const double count = child.Number(kCount);
        const std::size_t place = PlaceOf(child);
        if (!counts.emplace(place, count).second) {
            Raise<Message::DUPLICATE_DEFINITION>(child.Tag(), child.AnyText(kValue), list.Tag());
        }
        sums.resize(std::max(sums.size(), fPlaces.size()), 0.0);
        sums[place] += count;
        if (count < 0.0 || !std::isfinite(sums[place])) {
            child.RaiseInvalid(kCount);
        }
        ++fListed;
    }
    if (counts.empty()) {
        Raise<Message::NO_CHILD_ELEMENT>(list.Tag());
    }
    return counts;
}

/// A category that the BayesOutput doesn't have is none.
std::size_t BayesReader::PlaceOf(const Element& element) {
    const auto place = fPlaces.find(fParts.target->CategoryOf(element, kValue));
    if (place == fPlaces.end()) {
        element.RaiseInvalid(kValue);
    }
    return place->second;
}

/// Before version 4.2 continuous inputs stand in Extensions.
void BayesReader::ReadInputs(const Element& parent) {
    for (const Element child : parent.Children()) {
        if (child.Is(u"BayesInput")) {
            ReadInput(child);
        } else if (child.Is(u"Extension")) {
            for (const Element inner : child.Children()) {
                if (inner.Is(u"BayesInput")) {
                    ReadInput(inner);
                }
            }
        } else {
            child.RaiseMisplaced();
        }
    }
}

void BayesReader::ReadInput(const Element& element) {
    if (!fNames.insert(element.Text(kField)).second) {
        Raise<Message::DUPLICATE_DEFINITION>(element.Tag(), element.Text(kField), "BayesInputs");
    }
    bool hasPairs = false;
    for (const Element child : element.Children()) {
        if (!child.Is(kPairs) && !child.Is(kStats) && !child.Is(kDerived)) {
            child.RaiseMisplaced();
        }
        hasPairs = hasPairs || child.Is(kPairs);
    }
    const Element stats = element.Child(kStats);
    const Element derived = element.Child(kDerived);
    if (stats && (hasPairs || derived)) {
        RaiseAt<Message::CONFLICTING_ELEMENTS>(element.Tag(), nullptr, Narrow(kStats),
                                               Narrow(hasPairs ? kPairs : kDerived));
    }
    if (stats) {
        fModel.inputs.push_back(ReadStats(element, stats));
    } else if (hasPairs) {
        const int slot = derived ? ReadDerived(element, derived) : fParts.inputs->RequireSlot(element, kField);
        fModel.inputs.push_back(ReadPairs(element, slot));
    } else {
        Raise<Message::MISSING_NODE_IN>(Narrow(kPairs), element.Tag());
    }
}

/// The name of the input is that of the derived field itself, or that of a field.
int BayesReader::ReadDerived(const Element& input, const Element& derived) {
    if (derived.TextOr(u"name", "") != input.Text(kField)) {
        fParts.inputs->RequireSlot(input, kField);
    }
    const auto type = veltrane_kit::ReadDataType(derived, u"dataType");
    return fParts.inputs->Derived().AddUnnamed(derived, type.value_or(veltrane_kit::DataType::STRING));
}

BayesInput BayesReader::ReadStats(const Element& input, const Element& stats) {
    const int slot = fParts.inputs->RequireSlot(input, kField);
    if (!fParts.inputs->IsNumeric(slot)) {
        RaiseAt<Message::REQUIRES_NUMERIC>(input.Tag(), Narrow(kField).c_str(), input.Text(kField));
    }
    CheckRoom(input, 1);
    std::vector<Density> densities(fModel.categories.size(), Density::Stated(fLogThreshold));
    std::set<std::size_t> known;
    for (const Element child : stats.Children()) {
        if (!child.Is(u"TargetValueStat")) {
            child.RaiseMisplaced();
        }
        const std::size_t place = PlaceOf(child);
        if (!known.insert(place).second) {
            Raise<Message::DUPLICATE_DEFINITION>(child.Tag(), child.AnyText(kValue), stats.Tag());
        }
        densities[place] = ReadDensity(child);
        ++fListed;
    }
    if (known.empty()) {
        Raise<Message::NO_CHILD_ELEMENT>(stats.Tag());
    }
    return {slot, std::move(densities), fOfDensities};
}

Density BayesReader::ReadDensity(const Element& stat) {
    Element only;
    Density density;
    for (const Element child : stat.Children()) {
        density = ReadDistribution(child);
        if (only) {
            Raise<Message::MORE_THAN_ONE>("distribution", stat.Tag());
        }
        only = child;
    }
    if (!only) {
        Raise<Message::NO_CHILD_ELEMENT>(stat.Tag());
    }
    return density;
}

BayesInput BayesReader::ReadPairs(const Element& input, int slot) {
    std::vector<std::pair<int, Counts>> values;
    std::vector<double> sums(fModel.categories.size(), 0.0);
    std::set<int> known;
    for (const Element child : input.Children()) {
        if (!child.Is(kPairs)) {
            continue;
        }
        const int value = fParts.inputs->CategoryOf(slot, child, kValue);
        if (!known.insert(value).second) {
            Raise<Message::DUPLICATE_DEFINITION>(child.Tag(), child.AnyText(kValue), input.Tag());
        }
        values.emplace_back(value, ReadCounts(child, false, sums));
    }
    CheckRoom(input, values.size() + 1);
    return MakeCounted(slot, values, sums);
}

/// How likely a category makes a value is its share of all values that the category has; one that it never has is as
/// likely as the threshold says.
BayesInput BayesReader::MakeCounted(int slot, const std::vector<std::pair<int, Counts>>& values,
                                    const std::vector<double>& sums) const {
    int highest = 0;
    for (const auto& [code, counts] : values) {
        highest = std::max(highest, code);
    }
    std::vector<std::uint32_t> places(static_cast<std::size_t>(highest) + 1, static_cast<std::uint32_t>(values.size()));
    std::vector<double> logs(sums.size() * (values.size() + 1), fLogThreshold);
    for (std::size_t i = 0; i < values.size(); ++i) {
        places[static_cast<std::size_t>(values[i].first)] = static_cast<std::uint32_t>(i);
        for (const auto& [place, count] : values[i].second) {
            if (count > 0.0) {
                logs[place * (values.size() + 1) + i] = LogOfShare(count, sums[place]);
            }
        }
    }
    for (std::size_t place = 0; place < sums.size(); ++place) {
        logs[place * (values.size() + 1) + values.size()] = 0.0;
    }
    return {slot, std::move(places), values.size(), std::move(logs)};
}

void BayesReader::CheckRoom(const Element& input, std::size_t values) {
    fKept += fModel.categories.size() * values;
    if (fKept > kMostSpare + kMostOfOne * fListed) {
        Raise<Message::PROCESSING_VARIABLE_FAILED>(input.Tag(), input.Text(kField));
    }
}

} // namespace veltrane_bayes
