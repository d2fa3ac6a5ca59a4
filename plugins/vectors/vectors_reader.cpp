#include "vectors_reader.h"

#include "kit/document/array_words.h"
#include "kit/document/raise.h"
#include "kit/values/values.h"

#include <algorithm>
#include <cmath>

namespace veltrane_vectors {

using veltrane_kit::Element;
using veltrane_kit::Message;
using veltrane_kit::Raise;
using veltrane_kit::RaiseAt;

namespace {

std::vector<double> NumbersIn(const Element& array) {
    std::vector<double> numbers;
    for (const std::string& word : veltrane_kit::ArrayWords(array)) {
        const std::optional<double> number = veltrane_kit::NumberIn(word);
        if (!number || !std::isfinite(*number)) {
            Raise<Message::INVALID_CONTENT>(word, array.Tag());
        }
        numbers.push_back(*number);
    }
    return numbers;
}

} // namespace

void CheckCount(const Element& element, const XMLCh* attribute, const char* tag, std::size_t count) {
    if (element.Has(attribute) && element.Number(attribute) != static_cast<double>(count)) {
        Raise<Message::ELEMENT_NUMBER_MISMATCH>(element.Text(attribute), veltrane_kit::Narrow(attribute),
                                                std::to_string(count), tag, element.Tag());
    }
}

void VectorsReader::Read(const Element& element) {
    ReadFields(element.RequireChild(u"VectorFields"));
    fMachines.vectors = Vectors(fMachines.fields.size());
    for (const Element child : element.Children()) {
        if (child.Is(u"VectorInstance")) {
            ReadVector(child);
        } else if (!child.Is(u"VectorFields") && !child.Is(u"Extension")) {
            child.RaiseMisplaced();
        }
    }
    CheckCount(element, u"numberOfVectors", "VectorInstance", fPlaces.size());
    if (!fMachines.vectors.Settle()) {
        RaiseAt<Message::PROCESSING_VALUE_FAILED>("REAL-SparseArray", "defaultValue",
                                                  std::to_string(fMachines.vectors.Count()), "VectorInstance");
    }
}

void VectorsReader::ReadFields(const Element& element) {
    for (const Element child : element.Children()) {
        if (child.Is(u"FieldRef")) {
            ReadNumber(child);
        } else if (child.Is(u"CategoricalPredictor")) {
            ReadCategory(child);
        } else if (!child.Is(u"Extension")) {
            child.RaiseMisplaced();
        }
    }
    if (fMachines.fields.empty()) {
        Raise<Message::MISSING_NODE_IN>("FieldRef", element.Tag());
    }
    CheckCount(element, u"numberOfFields", "FieldRef, CategoricalPredictor", fMachines.fields.size());
}

void VectorsReader::ReadNumber(const Element& element) {
    VectorField field;
    field.slot = fInputs.RequireSlot(element, u"field");
    if (!fInputs.IsNumeric(field.slot)) {
        RaiseAt<Message::REQUIRES_NUMERIC>(element.Tag(), "field", fInputs.NameOf(field.slot));
    }
    if (element.Has(u"mapMissingTo")) {
        field.ifMissing = element.Number(u"mapMissingTo");
    }
    fMachines.fields.push_back(field);
}

/// Newer documents have another name for the attribute of the field.
void VectorsReader::ReadCategory(const Element& element) {
    const bool isNewer = !element.Has(u"name") && element.Has(u"field");
    VectorField field;
    field.slot = fInputs.RequireSlot(element, isNewer ? u"field" : u"name");
    field.category = fInputs.CategoryOf(field.slot, element, u"value");
    field.coefficient = element.Number(u"coefficient");
    fMachines.fields.push_back(field);
}

void VectorsReader::ReadVector(const Element& element) {
    const std::string id = element.Text(u"id");
    if (!fPlaces.emplace(id, static_cast<std::uint32_t>(fPlaces.size())).second) {
        Raise<Message::DUPLICATE_DEFINITION>(element.Tag(), id, "VectorDictionary");
    }
    Element array;
    for (const Element child : element.Children()) {
        const bool isArray = child.Is(u"Array") || child.Is(u"REAL-SparseArray");
        if (!isArray && !child.Is(u"Extension")) {
            child.RaiseMisplaced();
        }
        if (isArray && array) {
            Raise<Message::MORE_THAN_ONE>(child.Tag(), element.Tag());
        }
        array = isArray ? child : array;
    }
    if (!array) {
        Raise<Message::MISSING_NODE_IN>("REAL-SparseArray", element.Tag());
    }
    array.Is(u"Array") ? ReadArray(array) : ReadSparseArray(array);
}

void VectorsReader::ReadArray(const Element& array) {
    static constexpr veltrane_kit::Word<bool> kTypes[] = {{u"real", true}, {u"int", true}};
    static_cast<void>(array.OneOf(u"type", kTypes));
    const std::vector<double> numbers = NumbersIn(array);
    if (array.Has(u"n") && array.Number(u"n") != static_cast<double>(numbers.size())) {
        RaiseAt<Message::ARRAY_SIZE_MISMATCH>(array.Tag(), nullptr, array.Text(u"n"), "n",
                                              std::to_string(numbers.size()));
    }
    RequireSize(array, "Array", static_cast<double>(numbers.size()), std::to_string(numbers.size()));
    std::vector<Vectors::Entry> entries;
    entries.reserve(numbers.size());
    for (const double number : numbers) {
        entries.push_back({static_cast<std::uint32_t>(entries.size()), number});
    }
    fMachines.vectors.Add(entries, 0.0);
}

void VectorsReader::ReadSparseArray(const Element& array) {
    if (array.Has(u"n")) {
        RequireSize(array, "n", array.Number(u"n"), array.Text(u"n"));
    }
    std::vector<std::uint32_t> places;
    if (const Element indices = array.Child(u"Indices")) {
        ReadPlaces(indices, places);
    }
    const Element written = array.Child(u"REAL-Entries");
    const std::vector<double> numbers = written ? NumbersIn(written) : std::vector<double>();
    if (numbers.size() != places.size()) {
        Raise<Message::NUMBERS_MISMATCH>(std::to_string(places.size()), "Indices", array.Tag(),
                                         std::to_string(numbers.size()), "REAL-Entries", array.Tag());
    }
    std::vector<Vectors::Entry> entries;
    entries.reserve(places.size());
    for (std::size_t i = 0; i < places.size(); ++i) {
        entries.push_back({places[i], numbers[i]});
    }
    std::sort(entries.begin(), entries.end(),
              [](const Vectors::Entry& a, const Vectors::Entry& b) { return a.field < b.field; });
    for (std::size_t i = 1; i < entries.size(); ++i) {
        if (entries[i].field == entries[i - 1].field) {
            Raise<Message::DUPLICATE_DEFINITION>("Indices", std::to_string(entries[i].field + 1), array.Tag());
        }
    }
    fMachines.vectors.Add(entries, array.NumberOr(u"defaultValue", 0.0));
}

/// They are counted from 1 in the document.
void VectorsReader::ReadPlaces(const Element& indices, std::vector<std::uint32_t>& places) const {
    for (const std::string& word : veltrane_kit::ArrayWords(indices)) {
        const double place = veltrane_kit::NumberIn(word).value_or(0.0);
        if (!(place >= 1.0 && place <= static_cast<double>(fMachines.fields.size()) && place == std::floor(place))) {
            Raise<Message::INVALID_CONTENT>(word, indices.Tag());
        }
        places.push_back(static_cast<std::uint32_t>(place) - 1);
    }
}

void VectorsReader::RequireSize(const Element& array, const char* what, double size, const std::string& text) const {
    if (size != static_cast<double>(fMachines.fields.size())) {
        Raise<Message::NUMBERS_MISMATCH>(text, what, array.Tag(), std::to_string(fMachines.fields.size()),
                                         "FieldRef, CategoricalPredictor", "VectorFields");
    }
}

std::uint32_t VectorsReader::PlaceOf(const Element& supportVector) const {
    const std::string id = supportVector.Text(u"vectorId");
    const auto known = fPlaces.find(id);
    if (known == fPlaces.end()) {
        Raise<Message::MISSING_ELEMENT_WITH_VALUE>(id, "vectorId", supportVector.Tag());
    }
    return known->second;
}

} // namespace veltrane_vectors
