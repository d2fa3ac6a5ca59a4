#include "instances.h"

#include "derivation.h"
#include "kit/document/raise.h"

#include <xercesc/dom/DOMNode.hpp>

#include <algorithm>
#include <cmath>
#include <optional>
#include <unordered_set>
#include <utility>

namespace veltrane_neighbours {

using veltrane_clustering::ComparedField;
using veltrane_kit::Element;
using veltrane_kit::kMissing;
using veltrane_kit::Message;
using veltrane_kit::Narrow;
using veltrane_kit::Prediction;
using veltrane_kit::Raise;

namespace {

constexpr const XMLCh* kField = u"field";
constexpr const XMLCh* kColumn = u"column";
constexpr const XMLCh* kId = u"instanceIdVariable";

/// The text of a cell, which nearly always is one.
std::string TextOf(const Element& cell) {
    if (cell.Dom() == nullptr) {
        return cell.Content();
    }
    const xercesc::DOMNode* text = cell.Dom()->getFirstChild();
    if (text == nullptr) {
        return {};
    }
    const bool isOneText = text->getNodeType() == xercesc::DOMNode::TEXT_NODE && text->getNextSibling() == nullptr;
    return isOneText ? cell.Reader()(text->getNodeValue()) : cell.Content();
}

} // namespace

InstanceReader::InstanceReader(const Element& model, veltrane_clustering::ComparisonReader& comparison,
                               veltrane_kit::ModelParts& parts)
    : fModel(model), fComparison(comparison), fParts(parts), fIdColumn(0) {}

InstanceReader::~InstanceReader() = default;

Instances InstanceReader::Read() {
    const Element element = fModel.RequireChild(u"TrainingInstances");
    ReadFields(element.RequireChild(u"InstanceFields"));
    CheckCount(element, u"fieldCount", fColumns.size(), "InstanceField");
    FindTargets();
    FindIds();
    FindInputs(element);
    if (const Element elsewhere = element.Child(u"TableLocator")) {
        Raise<Message::UNSUPPORTED_ELEMENT>(elsewhere.Tag(), fModel.Tag());
    }
    ReadRows(element.RequireChild(u"InlineTable"));
    CheckCount(element, u"recordCount", fInstances.Size(), "row");
    CheckColumns();
    CheckIds();
    CountCategories();
    return std::move(fInstances);
}

void InstanceReader::CheckCount(const Element& element, const XMLCh* attribute, std::size_t count,
                                const char* of) const {
    if (element.Has(attribute) && element.Number(attribute) != static_cast<double>(count)) {
        Raise<Message::ELEMENT_NUMBER_MISMATCH>(element.Text(attribute), Narrow(attribute), std::to_string(count), of,
                                                element.Tag());
    }
}

/// The cells of a field are called by its column, else by its name; prefixes play no part.
void InstanceReader::ReadFields(const Element& element) {
    for (const Element child : element.Children()) {
        if (!child.Is(u"InstanceField")) {
            child.RaiseMisplaced();
        }
        Column column;
        column.field = child.Text(kField);
        column.element = child;
        column.cell = child.Has(kColumn) ? child.Text(kColumn) : column.field;
        if (!fByField.emplace(column.field, fColumns.size()).second ||
            !fPlaces.emplace(veltrane_kit::LocalName(column.cell), fColumns.size()).second) {
            Raise<Message::DUPLICATE_DEFINITION>(child.Tag(), column.field, element.Tag());
        }
        fColumns.push_back(std::move(column));
    }
    if (fColumns.empty()) {
        Raise<Message::MISSING_NODE_IN>("InstanceField", element.Tag());
    }
    fFilled.assign(fColumns.size(), 0);
    fIdColumn = fColumns.size();
}

/// @return the number of columns for a field that has none
std::size_t InstanceReader::PlaceOf(const std::string& field) const {
    const auto found = fByField.find(field);
    return found == fByField.end() ? fColumns.size() : found->second;
}

InstanceReader::Column& InstanceReader::Require(const std::string& field) {
    const std::size_t place = PlaceOf(field);
    if (place == fColumns.size()) {
        Raise<Message::MISSING_ELEMENT_WITH_VALUE>(field, "field", "InstanceFields");
    }
    return fColumns[place];
}

/// The first target, then the others. A clustering has none: its categories are the instances.
void InstanceReader::FindTargets() {
    if (fParts.IsClustering()) {
        return;
    }
    if (fParts.schema.target.empty()) {
        Raise<Message::MISSING_TARGET>();
    }
    TargetColumn first;
    first.target = fParts.target.get();
    first.isCategory = fParts.IsClassification();
    fInstances.targets.push_back(std::move(first));
    for (const veltrane_kit::Outputs::OtherTarget& other : fParts.more.targets) {
        TargetColumn column;
        column.owned = other.target;
        column.target = other.target.get();
        column.isCategory = other.isCategory;
        fInstances.targets.push_back(std::move(column));
    }
    for (std::size_t i = 0; i < fInstances.targets.size(); ++i) {
        Require(fInstances.targets[i].target->Name()).target = static_cast<int>(i);
    }
}

void InstanceReader::FindIds() {
    if (fModel.Has(kId)) {
        fIdColumn = static_cast<std::size_t>(&Require(fModel.Text(kId)) - fColumns.data());
    }
}

/// An input is a field of the instances, or derived from such.
void InstanceReader::FindInputs(const Element& element) {
    const std::vector<ComparedField>& inputs = fComparison.Get().fields;
    std::vector<std::size_t> derived;
    for (std::size_t i = 0; i < inputs.size(); ++i) {
        const std::size_t place = PlaceOf(inputs[i].name);
        if (place < fColumns.size()) {
            fColumns[place].input = static_cast<int>(i);
        } else if (!element.FlagOr(u"isTransformed", false) && fParts.inputs->Derived().Has(inputs[i].slot)) {
            derived.push_back(i);
        } else {
            Require(inputs[i].name);
        }
    }
    if (derived.empty()) {
        return;
    }
    fDerivation = std::make_unique<Derivation>(fModel, fParts);
    for (Column& column : fColumns) {
        if (fParts.fields->count(column.field) > 0) {
            column.source = fDerivation->AddSource(column.field);
        }
    }
    fDerivation->ReadFields();
    std::vector<Element> elements;
    for (const Element input : fModel.RequireChild(u"KNNInputs").Children()) {
        elements.push_back(input);
    }
    for (const std::size_t input : derived) {
        fDerivation->AddInput(input, elements[input]);
    }
    fDerivation->Settle();
}

void InstanceReader::ReadRows(const Element& table) {
    for (const Element row : table.Children()) {
        if (!row.Is(u"row")) {
            row.RaiseMisplaced();
        }
        ReadRow(row);
    }
    if (fInstances.ids.empty()) {
        Raise<Message::MISSING_NODE_IN>("row", table.Tag());
    }
}

void InstanceReader::ReadRow(const Element& row) {
    const std::size_t number = fInstances.ids.size() + 1;
    fInstances.points.resize(number * fComparison.Get().fields.size(), kMissing);
    fInstances.ids.push_back(fIdColumn < fColumns.size() ? std::string() : std::to_string(number));
    for (TargetColumn& target : fInstances.targets) {
        target.numbers.push_back(kMissing);
        target.codes.push_back(Prediction::kNoCategory);
    }
    std::size_t place = 0;
    for (const Element cell : row.Children()) {
        const std::size_t column = ColumnOf(place++, cell.TagText());
        if (column == fColumns.size()) {
            continue;
        }
        const std::string text = TextOf(cell);
        if (std::exchange(fFilled[column], number) == number) {
            Raise<Message::DUPLICATE_DEFINITION>(cell.Tag(), text, row.Tag());
        }
        fColumns[column].isMet = true;
        if (!text.empty()) {
            ReadCell(column, text);
        }
    }
    if (fDerivation != nullptr) {
        fDerivation->Fill(fComparison, fInstances.points.data() + (number - 1) * fComparison.Get().fields.size());
    }
    if (fInstances.ids.back().empty()) {
        Raise<Message::MISSING_NODE_IN>(Narrow(fColumns[fIdColumn].element.Raw(kField)), row.Tag());
    }
}

/// Rows repeat the columns of the row before, and the names of one document are shared texts.
/// @return the number of columns for one that isn't asked for
std::size_t InstanceReader::ColumnOf(std::size_t place, const XMLCh* tag) {
    if (place >= fKnown.size()) {
        fKnown.resize(place + 1, {nullptr, 0});
    }
    auto& known = fKnown[place];
    if (known.first != tag) {
        const auto found = fPlaces.find(veltrane_kit::LocalName(fModel.Reader()(tag)));
        known = {tag, found == fPlaces.end() ? fColumns.size() : found->second};
    }
    return known.second;
}

void InstanceReader::ReadCell(std::size_t at, const std::string& text) {
    const Column& column = fColumns[at];
    const std::size_t inputs = fComparison.Get().fields.size();
    if (column.input != kNone) {
        const auto input = static_cast<std::size_t>(column.input);
        fInstances.points[(fInstances.ids.size() - 1) * inputs + input] =
            fComparison.ReadValue(input, text, column.cell);
    }
    if (column.target != kNone) {
        ReadTarget(fInstances.targets[static_cast<std::size_t>(column.target)], text, column.cell);
    }
    if (column.source != kNone) {
        fDerivation->SetSource(column.source, text);
    }
    if (at == fIdColumn) {
        fInstances.ids.back() = text;
    }
}

void InstanceReader::ReadTarget(TargetColumn& target, const std::string& text, const std::string& cell) {
    if (target.isCategory) {
        const int code = target.target->CategoryOf(text);
        if (code < 0) {
            Raise<Message::INVALID_CONTENT>(text, cell);
        }
        target.codes.back() = code;
        return;
    }
    const std::optional<double> number = veltrane_kit::NumberIn(text);
    if (!number || !std::isfinite(*number)) {
        Raise<Message::INVALID_CONTENT>(text, cell);
    }
    target.numbers.back() = *number;
}

/// A column that no row has is misspelt.
void InstanceReader::CheckColumns() const {
    for (const Column& column : fColumns) {
        if (!column.isMet) {
            column.element.RaiseInvalid(column.element.Has(kColumn) ? kColumn : kField);
        }
    }
}

void InstanceReader::CheckIds() const {
    if (fIdColumn == fColumns.size()) {
        return;
    }
    std::unordered_set<std::string_view> known;
    for (const std::string& id : fInstances.ids) {
        if (!known.insert(id).second) {
            Raise<Message::DUPLICATE_DEFINITION>(fColumns[fIdColumn].field, id, "InlineTable");
        }
    }
}

void InstanceReader::CountCategories() {
    for (TargetColumn& target : fInstances.targets) {
        target.counts.assign(static_cast<std::size_t>(target.target->CategoryCount()), 0);
        for (const int code : target.codes) {
            if (code != Prediction::kNoCategory) {
                ++target.counts[static_cast<std::size_t>(code)];
            }
        }
    }
}

} // namespace veltrane_neighbours
