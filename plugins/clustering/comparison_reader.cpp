#include "comparison_reader.h"

#include "kit/document/raise.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

namespace veltrane_clustering {

using veltrane_kit::Element;
using veltrane_kit::kMissing;
using veltrane_kit::Message;
using veltrane_kit::Raise;
using veltrane_kit::RaiseAt;
using veltrane_kit::Value;
using veltrane_kit::Word;

namespace {

constexpr const XMLCh* kField = u"field";
constexpr const XMLCh* kFunction = u"compareFunction";
constexpr const XMLCh* kScale = u"similarityScale";
constexpr const XMLCh* kWeight = u"fieldWeight";
constexpr const XMLCh* kKind = u"kind";

constexpr Word<Measure> kMeasures[] = {
    {u"euclidean", Measure::EUCLIDEAN},
    {u"squaredEuclidean", Measure::SQUARED_EUCLIDEAN},
    {u"chebychev", Measure::CHEBYCHEV},
    {u"cityBlock", Measure::CITY_BLOCK},
    {u"minkowski", Measure::MINKOWSKI},
    {u"simpleMatching", Measure::SIMPLE_MATCHING},
    {u"jaccard", Measure::JACCARD},
    {u"tanimoto", Measure::TANIMOTO},
    {u"binarySimilarity", Measure::BINARY_SIMILARITY},
};

constexpr Word<CompareFunction> kFunctions[] = {
    {u"absDiff", CompareFunction::ABS_DIFF}, {u"gaussSim", CompareFunction::GAUSS_SIM},
    {u"delta", CompareFunction::DELTA},      {u"equal", CompareFunction::EQUAL},
    {u"table", CompareFunction::TABLE},
};

constexpr Word<bool> kKinds[] = {{u"distance", true}, {u"similarity", false}};

double RequirePositive(const Element& element, const XMLCh* name) {
    const double number = element.Number(name);
    if (!(number > 0.0)) {
        element.RaiseInvalid(name);
    }
    return number;
}

/// Whether a compare function has an answer for categories, which have no difference.
constexpr bool TakesCategories(CompareFunction function) {
    return function != CompareFunction::ABS_DIFF && function != CompareFunction::GAUSS_SIM;
}

} // namespace

double ReadWeight(const Element& element) {
    const double weight = element.NumberOr(kWeight, 1.0);
    if (weight < 0.0) {
        element.RaiseInvalid(kWeight);
    }
    return weight;
}

ComparisonReader::ComparisonReader(const Element& model, veltrane_kit::ModelParts& parts)
    : fParts(parts), fModel(model.Tag()) {
    ReadMeasure(model.RequireChild(u"ComparisonMeasure"));
}

void ComparisonReader::ReadMeasure(const Element& element) {
    fComparison.isDistance = element.OneOf(kKind, kKinds);
    fFunction = element.OneOfOr(kFunction, kFunctions, CompareFunction::ABS_DIFF);
    Element found;
    for (const Element child : element.Children()) {
        const auto* const word = std::find_if(std::begin(kMeasures), std::end(kMeasures),
                                              [&](const Word<Measure>& measure) { return child.Is(measure.text); });
        if (word == std::end(kMeasures)) {
            child.RaiseMisplaced();
        }
        if (found) {
            Raise<Message::MORE_THAN_ONE>("measure", element.Tag());
        }
        found = child;
        fComparison.measure = word->meaning;
    }
    if (!found) {
        Raise<Message::MISSING_NODE_IN>("measure", element.Tag());
    }
    if (CountsBits(fComparison.measure) && fComparison.isDistance) {
        Raise<Message::UNSUPPORTED_VALUE_IN>(element.Text(kKind), "kind", element.Tag(),
                                             "similarity (" + found.Tag() + ")");
    }
    ReadParameters(found);
}

void ComparisonReader::ReadParameters(const Element& measure) {
    if (fComparison.measure == Measure::MINKOWSKI) {
        fComparison.power = RequirePositive(measure, u"p-parameter");
    } else if (fComparison.measure == Measure::BINARY_SIMILARITY) {
        fComparison.bits = {{{measure.Number(u"c00-parameter"), measure.Number(u"c01-parameter")},
                             {measure.Number(u"c10-parameter"), measure.Number(u"c11-parameter")}},
                            {{measure.Number(u"d00-parameter"), measure.Number(u"d01-parameter")},
                             {measure.Number(u"d10-parameter"), measure.Number(u"d11-parameter")}}};
    }
}

void ComparisonReader::AddField(const Element& element) {
    ComparedField field;
    field.name = element.Text(kField);
    field.slot = fParts.inputs->RequireSlot(element, kField);
    field.weight = ReadWeight(element);
    ReadFunction(element, field);
    const bool isNumber = fParts.inputs->IsNumeric(field.slot);
    const bool needsNumber = CountsBits(fComparison.measure) || !TakesCategories(field.function);
    if (!isNumber && needsNumber) {
        RaiseAt<Message::REQUIRES_NUMERIC>(element.Tag(), "field", field.name);
    }
    field.isCode = !isNumber;
    if (field.function == CompareFunction::TABLE) {
        ReadTable(element, field);
    }
    fComparison.fields.push_back(std::move(field));
}

void ComparisonReader::ReadFunction(const Element& element, ComparedField& field) {
    const bool adds = !CountsBits(fComparison.measure);
    field.function = element.OneOfOr(kFunction, kFunctions, fFunction);
    if (!adds) {
        field.function = CompareFunction::EQUAL;
    }
    if (element.Has(kScale)) {
        field.scale = RequirePositive(element, kScale);
    } else if (field.function == CompareFunction::GAUSS_SIM) {
        Raise<Message::MISSING_ATTRIBUTE_OF>("similarityScale", element.Tag());
    }
    for (const Element child : element.Children()) {
        if (!child.Is(u"Comparisons")) {
            child.RaiseMisplaced();
        }
    }
}

std::vector<Value> ComparisonReader::ListedOf(const ComparedField& field) const {
    if (fParts.inputs->Derived().Has(field.slot)) {
        return fParts.inputs->Derived().ListedOf(field.slot);
    }
    std::vector<Value> listed;
    if (const auto data = fParts.fields->find(field.name); data != fParts.fields->end()) {
        for (const veltrane_kit::OwnedValue& valid : data->second.valid) {
            listed.push_back(valid.value);
        }
    }
    return listed;
}

/// The rows are the values of a case and the columns those of the other point, in the order in which the field lists
/// its values, else its intervals.
void ComparisonReader::ReadTable(const Element& element, ComparedField& field) {
    const Element comparisons = element.RequireChild(u"Comparisons");
    CompareTable table{veltrane_kit::Matrix(comparisons.RequireChild(u"Matrix")), {}, {}};
    const std::vector<Value> listed = ListedOf(field);
    field.isCode = !listed.empty();
    const auto data = fParts.fields->find(field.name);
    if (!field.isCode && data != fParts.fields->end() && !fParts.inputs->Derived().Has(field.slot)) {
        table.intervals = data->second.intervals;
    }
    const std::size_t size = field.isCode ? listed.size() : table.intervals.size();
    if (size == 0) {
        RaiseAt<Message::MISSING_VALUE_LIST>(element.Tag(), "field", field.name);
    }
    for (std::size_t place = 0; place < listed.size(); ++place) {
        const int code = fParts.inputs->CategoryOf(field.slot, listed[place]);
        table.places.resize(std::max(table.places.size(), static_cast<std::size_t>(code) + 1), kMissing);
        table.places[static_cast<std::size_t>(code)] = static_cast<double>(place);
    }
    if (table.matrix.Rows() != size || table.matrix.Columns() != size) {
        const bool isOfRows = table.matrix.Rows() != size;
        Raise<Message::NUMBERS_MISMATCH>(std::to_string(isOfRows ? table.matrix.Rows() : table.matrix.Columns()),
                                         isOfRows ? "nbRows" : "nbCols", "Matrix", std::to_string(size),
                                         field.isCode ? "Value" : "Interval", field.name);
    }
    field.table = std::make_shared<const CompareTable>(std::move(table));
}

double ComparisonReader::ReadValue(std::size_t field, const std::string& text, const std::string& element) {
    const ComparedField& about = fComparison.fields[field];
    Value value = fParts.inputs->ValueIn(about.slot, text);
    if (const std::optional<double> number = veltrane_kit::NumberIn(text); !about.isCode && number) {
        value = veltrane_kit::MakeNumber(*number, veltrane_kit::DataType::DOUBLE);
    }
    const bool isBit = value.number == 0.0 || value.number == 1.0;
    const bool isWrong = value.isMissing || (!about.isCode && !std::isfinite(value.number)) ||
                         (CountsBits(fComparison.measure) && !isBit);
    if (isWrong) {
        Raise<Message::INVALID_CONTENT>(text, element);
    }
    return ValueOf(field, value);
}

double ComparisonReader::ValueOf(std::size_t field, const Value& value) {
    const ComparedField& about = fComparison.fields[field];
    if (value.isMissing) {
        return kMissing;
    }
    if (!about.isCode) {
        return about.table == nullptr ? value.number : about.table->PlaceOfNumber(value.number);
    }
    const int code = fParts.inputs->CategoryOf(about.slot, value);
    return about.table == nullptr ? static_cast<double>(code) : about.table->PlaceOfCode(code);
}

Comparison ComparisonReader::Take() {
    fComparison.Settle();
    return std::move(fComparison);
}

} // namespace veltrane_clustering
