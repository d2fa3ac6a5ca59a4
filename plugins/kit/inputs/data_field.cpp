#include "kit/inputs/data_field.h"

#include "kit/document/raise.h"
#include "kit/expressions/expression_reader.h"

#include <algorithm>

namespace veltrane_kit {

using namespace MCVeltrane_900;

namespace {

constexpr Word<ScoreDictVar::MeasureLevel> kLevels[] = {
    {u"continuous", ScoreDictVar::LEVEL_CONTINUOUS},
    {u"categorical", ScoreDictVar::LEVEL_NOMINAL},
    {u"ordinal", ScoreDictVar::LEVEL_ORDINAL},
};

enum class Property { VALID, INVALID, MISSING };

constexpr Word<Property> kProperties[] = {
    {u"valid", Property::VALID},
    {u"invalid", Property::INVALID},
    {u"missing", Property::MISSING},
};

void ReadListed(const Element& element, DataField& field) {
    const std::string text = element.AnyText(u"value");
    const Property property = element.OneOfOr(u"property", kProperties, Property::VALID);
    const Value value = ReadValue(text, field.type);
    if (value.isMissing) {
        if (property == Property::VALID) {
            element.RaiseInvalid(u"value");
        }
        if (property == Property::MISSING) {
            field.missingTexts.push_back(text);
        }
        return;
    }
    std::vector<OwnedValue>& list = property == Property::VALID     ? field.valid
                                    : property == Property::INVALID ? field.invalid
                                                                    : field.missing;
    list.emplace_back().Keep(value);
    if (property == Property::VALID) {
        field.labels.push_back(element.TextOr(u"displayValue", ""));
    }
}

DataField ReadDataField(const Element& element) {
    DataField field;
    field.name = element.Text(u"name");
    const bool hasOldType = !element.Has(u"dataType") && element.Has(u"x-storageType");
    field.type = ReadDataType(element, hasOldType ? u"x-storageType" : u"dataType").value_or(DataType::DOUBLE);
    field.level = element.OneOfOr(u"optype", kLevels,
                                  IsNumber(field.type) ? ScoreDictVar::LEVEL_CONTINUOUS : ScoreDictVar::LEVEL_NOMINAL);
    for (const Element child : element.Children()) {
        if (child.Is(u"Value")) {
            ReadListed(child, field);
        } else if (child.Is(u"Interval")) {
            field.intervals.push_back(ReadInterval(child));
        }
    }
    return field;
}

} // namespace

bool DataField::IsListed(const Value& value) const {
    return std::any_of(valid.begin(), valid.end(),
                       [&value](const OwnedValue& each) { return AreEqual(each.value, value); });
}

std::vector<Value> DataField::InOrder(ScoreDictVar::MeasureLevel ofLevel) const {
    std::vector<Value> ordered;
    for (const OwnedValue& value : valid) {
        if (ofLevel == ScoreDictVar::LEVEL_ORDINAL) {
            ordered.push_back(value.value);
        }
    }
    return ordered;
}

DataFields ReadDataFields(const Element& dictionary) {
    DataFields fields;
    for (const Element child : dictionary.Children()) {
        if (!child.Is(u"DataField")) {
            continue;
        }
        DataField field = ReadDataField(child);
        const std::string name = field.name;
        if (!fields.emplace(name, std::move(field)).second) {
            RaiseAt<Message::DUPLICATE_VARIABLE_IN>(child.Tag(), "name", name, "DataDictionary");
        }
    }
    return fields;
}

} // namespace veltrane_kit
