#include "baseline_reader.h"

#include "continuous_tests.h"
#include "kit/document/raise.h"
#include "table_tests.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace veltrane_baseline {

using veltrane_kit::Element;
using veltrane_kit::Message;
using veltrane_kit::Narrow;
using veltrane_kit::Raise;
using veltrane_kit::RaiseAt;
using veltrane_kit::Word;

namespace {

constexpr const XMLCh* kField = u"field";
constexpr const XMLCh* kStatistic = u"testStatistic";
constexpr const XMLCh* kWindow = u"windowSize";
constexpr const XMLCh* kWeight = u"weightField";
constexpr const XMLCh* kSample = u"sample";
constexpr const XMLCh* kCount = u"count";

constexpr Word<int> kSchemes[] = {{u"Independent", 0}};

bool IsDistribution(const Element& element) {
    static constexpr const XMLCh* kTags[] = {u"GaussianDistribution", u"AnyDistribution", u"PoissonDistribution",
                                             u"UniformDistribution"};
    return std::any_of(std::begin(kTags), std::end(kTags), [&](const XMLCh* tag) { return element.Is(tag); });
}

double RequirePositive(const Element& element, const XMLCh* name) {
    const double number = element.Number(name);
    if (!(number > 0.0)) {
        element.RaiseInvalid(name);
    }
    return number;
}

double RequireCount(const Element& element, const XMLCh* name) {
    const double number = element.Number(name);
    if (number < 0.0) {
        element.RaiseInvalid(name);
    }
    return number;
}

std::size_t ReadWindow(const Element& element) {
    const int window = element.IntegerOr(kWindow, 0);
    if (window < 0 || window > BaselineReader::kLongestWindow) {
        element.RaiseInvalid(kWindow);
    }
    return static_cast<std::size_t>(window);
}

} // namespace

/// The fields and values on the way to a count.
struct BaselineReader::Path {
    std::vector<int> slots;
    std::vector<std::int32_t> values;
    double unit = 1.0; ///< what a count stands for
    Element last;      ///< that has a count
};

BaselineTest BaselineReader::Read(const Element& element) {
    static constexpr Word<Kind> kKinds[] = {
        {u"zValue", Kind::Z_VALUE},
        {u"chiSquareIndependence", Kind::INDEPENDENCE},
        {u"chiSquareDistribution", Kind::DISTRIBUTION},
        {u"CUSUM", Kind::CUMULATIVE_SUM},
        {u"scalarProduct", Kind::SCALAR_PRODUCT},
    };
    const Kind kind = element.OneOf(kStatistic, kKinds);
    for (const Element child : element.Children()) {
        if (!child.Is(u"Baseline") && !child.Is(u"Alternate") && !child.Is(u"Extension")) {
            child.RaiseMisplaced();
        }
    }
    BaselineTest test;
    test.name = element.Text(kStatistic);
    Baseline baseline = ReadBaseline(element, kind);
    test.slots = baseline.table.slots;
    test.mentioned = baseline.table.mentioned;
    test.slot = test.slots.empty() ? RequireNumber(element, kField) : fParts.inputs->RequireSlot(element, kField);
    if (!test.slots.empty() && std::find(test.slots.begin(), test.slots.end(), test.slot) == test.slots.end()) {
        element.RaiseInvalid(kField);
    }
    if (element.Has(kWeight)) {
        test.weightSlot = RequireNumber(element, kWeight);
    }
    const std::size_t window = ReadWindow(element);
    test.looksBack = kind != Kind::Z_VALUE || window > 0;
    test.statistic = MakeTest(element, kind, std::move(baseline), ReadAlternate(element, kind), window);
    return test;
}

std::unique_ptr<const Statistic> BaselineReader::MakeTest(const Element& test, Kind kind, Baseline baseline,
                                                          const std::optional<Distribution>& alternate,
                                                          std::size_t window) {
    const double reset = test.NumberOr(u"resetValue", 0.0);
    switch (kind) {
    case Kind::Z_VALUE:
        return std::make_unique<const ZValue>(*baseline.distribution, window);
    case Kind::CUMULATIVE_SUM:
        return std::make_unique<const CumulativeSum>(*baseline.distribution, *alternate, reset, window);
    case Kind::INDEPENDENCE:
        return std::make_unique<const ChiSquareIndependence>(std::move(baseline.table), window);
    case Kind::DISTRIBUTION:
        return std::make_unique<const ChiSquareDistribution>(std::move(baseline.table), window);
    default:
        test.OneOfOr(u"normalizationScheme", kSchemes, 0);
        return std::make_unique<const ScalarProduct>(std::move(baseline.table), window);
    }
}

int BaselineReader::RequireNumber(const Element& element, const XMLCh* attribute) {
    const int slot = fParts.inputs->RequireSlot(element, attribute);
    if (!fParts.inputs->IsNumeric(slot)) {
        RaiseAt<Message::REQUIRES_NUMERIC>(element.Tag(), Narrow(attribute).c_str(), element.Text(attribute));
    }
    return slot;
}

/// Numbers are tested against a distribution, counts against a table.
void BaselineReader::RequireTable(const Element& test, const Element& baseline, Kind kind, bool isTable) {
    const bool wantsTable = kind != Kind::Z_VALUE && kind != Kind::CUMULATIVE_SUM;
    if (isTable == wantsTable) {
        return;
    }
    const std::string suited =
        isTable ? "chiSquareIndependence, chiSquareDistribution, scalarProduct (" : "zValue, CUSUM (";
    Raise<Message::UNSUPPORTED_VALUE_IN>(test.Text(kStatistic), Narrow(kStatistic), test.Tag(),
                                         suited + baseline.Tag() + ")");
}

BaselineReader::Baseline BaselineReader::ReadBaseline(const Element& test, Kind kind) {
    const Element element = test.RequireChild(u"Baseline");
    Element only;
    int references = 0;
    for (const Element child : element.Children()) {
        if (child.Is(u"FieldRef")) {
            ++references;
        } else if (!IsDistribution(child) && !child.Is(u"CountTable") && !child.Is(u"NormalizedCountTable")) {
            child.RaiseMisplaced();
        }
        if (only && !(only.Is(u"FieldRef") && child.Is(u"FieldRef"))) {
            Raise<Message::MORE_THAN_ONE>("distribution", element.Tag());
        }
        only = child;
    }
    if (!only) {
        Raise<Message::NO_CHILD_ELEMENT>(element.Tag());
    }
    RequireTable(test, only, kind, !IsDistribution(only));
    Baseline baseline;
    if (IsDistribution(only)) {
        baseline.distribution = ReadDistribution(only);
    } else if (references == 0) {
        baseline.table = ReadTable(only, kind);
    } else if (kind != Kind::INDEPENDENCE) {
        Raise<Message::UNSUPPORTED_VALUE_IN>(test.Text(kStatistic), Narrow(kStatistic), test.Tag(),
                                             "chiSquareIndependence (FieldRef)");
    } else if (references == 1) {
        Raise<Message::REQUIRES_MORE_THAN_ONE>("FieldRef", element.Tag());
    } else {
        baseline.table = ReadFields(element);
    }
    if (baseline.distribution && kind == Kind::CUMULATIVE_SUM && !baseline.distribution->HasDensity()) {
        Raise<Message::UNSUPPORTED_VALUE_IN>(test.Text(kStatistic), Narrow(kStatistic), test.Tag(),
                                             "zValue (" + only.Tag() + ")");
    }
    return baseline;
}

/// It is there for a cumulative sum; other tests don't need it.
std::optional<Distribution> BaselineReader::ReadAlternate(const Element& test, Kind kind) {
    const Element element = kind == Kind::CUMULATIVE_SUM ? test.RequireChild(u"Alternate") : test.Child(u"Alternate");
    if (!element) {
        return std::nullopt;
    }
    Element only;
    for (const Element child : element.Children()) {
        if (!IsDistribution(child)) {
            child.RaiseMisplaced();
        }
        if (only) {
            Raise<Message::MORE_THAN_ONE>("distribution", element.Tag());
        }
        only = child;
    }
    if (!only) {
        Raise<Message::NO_CHILD_ELEMENT>(element.Tag());
    }
    const Distribution distribution = ReadDistribution(only);
    if (kind == Kind::CUMULATIVE_SUM && !distribution.HasDensity()) {
        Raise<Message::UNSUPPORTED_VALUE_IN>(test.Text(kStatistic), Narrow(kStatistic), test.Tag(),
                                             "zValue (" + only.Tag() + ")");
    }
    return distribution;
}

Distribution BaselineReader::ReadDistribution(const Element& element) {
    if (element.Is(u"PoissonDistribution")) {
        return Distribution::Poisson(RequirePositive(element, u"mean"));
    }
    if (!element.Is(u"UniformDistribution")) {
        const double mean = element.Number(u"mean");
        const double variance = RequirePositive(element, u"variance");
        return element.Is(u"AnyDistribution") ? Distribution::Any(mean, variance)
                                              : Distribution::Gaussian(mean, variance);
    }
    const double lower = element.Number(u"lower");
    const double upper = element.Number(u"upper");
    if (lower > upper) {
        Raise<Message::VALUE_ABOVE_OTHER>(element.Text(u"lower"), "lower", element.Text(u"upper"), "upper",
                                          element.Tag());
    }
    if (lower == upper) {
        element.RaiseInvalid(u"upper");
    }
    return Distribution::Uniform(lower, upper);
}

/// The values that the fields list are known from the start; all others of a field are one.
CountTable BaselineReader::ReadFields(const Element& baseline) {
    CountTable table;
    for (const Element child : baseline.Children()) {
        const int slot = fParts.inputs->RequireSlot(child, kField);
        const std::string name = child.Text(kField);
        if (std::find(table.slots.begin(), table.slots.end(), slot) != table.slots.end()) {
            Raise<Message::DUPLICATE_DEFINITION>(child.Tag(), name, baseline.Tag());
        }
        const auto field = fParts.fields->find(name);
        if (field == fParts.fields->end() || field->second.valid.empty()) {
            RaiseAt<Message::MISSING_VALUE_LIST>(child.Tag(), Narrow(kField).c_str(), name);
        }
        std::set<std::int32_t>& mentioned = table.mentioned.emplace_back();
        for (const veltrane_kit::OwnedValue& value : field->second.valid) {
            mentioned.insert(fParts.inputs->CategoryOf(slot, value.value));
        }
        table.slots.push_back(slot);
    }
    return table;
}

/// Shares count as the cases that they are of, where it is cases that are compared.
CountTable BaselineReader::ReadTable(const Element& element, Kind kind) {
    CountTable table;
    Path path;
    const double sample = element.Has(kSample) ? RequirePositive(element, kSample) : 0.0;
    if (element.Is(u"NormalizedCountTable") && kind == Kind::INDEPENDENCE) {
        if (!element.Has(kSample)) {
            Raise<Message::MISSING_ATTRIBUTE_OF>(Narrow(kSample), element.Tag());
        }
        path.unit = sample;
    }
    ReadCells(element, path, table);
    const double sum = table.Sum();
    if (!(sum > 0.0) || !std::isfinite(sum)) {
        path.last.RaiseInvalid(kCount); // the last one of a table without any case, or of too many
    }
    return table;
}

/// Values nest at most as deep as the factory lets a document nest.
void BaselineReader::ReadCells(const Element& parent, Path& path, CountTable& table) {
    bool isEmpty = true;
    for (const Element child : parent.Children()) {
        if (!child.Is(u"FieldValue") && !child.Is(u"FieldValueCount")) {
            child.RaiseMisplaced();
        }
        EnterCell(child, path);
        if (child.Is(u"FieldValue")) {
            ReadCells(child, path, table);
        } else {
            AddCell(child, path, table);
        }
        path.slots.pop_back();
        path.values.pop_back();
        isEmpty = false;
    }
    if (isEmpty) {
        Raise<Message::NO_CHILD_ELEMENT>(parent.Tag());
    }
}

void BaselineReader::EnterCell(const Element& element, Path& path) {
    const int slot = fParts.inputs->RequireSlot(element, kField);
    if (std::find(path.slots.begin(), path.slots.end(), slot) != path.slots.end()) {
        element.RaiseInvalid(kField);
    }
    path.slots.push_back(slot);
    path.values.push_back(fParts.inputs->CategoryOf(slot, element, u"value"));
}

/// All counts of a table are of the same fields, which may nest in any order.
void BaselineReader::AddCell(const Element& element, Path& path, CountTable& table) {
    path.last = element;
    if (table.slots.empty()) {
        table.slots = path.slots;
        table.mentioned.resize(path.slots.size());
    }
    std::vector<std::int32_t> values(table.slots.size());
    for (std::size_t i = 0; i < path.slots.size(); ++i) {
        const auto found = std::find(table.slots.begin(), table.slots.end(), path.slots[i]);
        if (found == table.slots.end() || path.slots.size() != table.slots.size()) {
            element.RaiseInvalid(kField);
        }
        const auto at = static_cast<std::size_t>(found - table.slots.begin());
        values[at] = path.values[i];
        table.mentioned[at].insert(path.values[i]);
    }
    if (!table.counts.emplace(std::move(values), RequireCount(element, kCount) * path.unit).second) {
        Raise<Message::DUPLICATE_DEFINITION>(element.Tag(), element.AnyText(u"value"), "CountTable");
    }
}

} // namespace veltrane_baseline
