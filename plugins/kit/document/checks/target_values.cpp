#include "kit/document/checks/element_rules.h"
#include "kit/document/raise.h"
#include "kit/document/target_name.h"
#include "kit/values/values.h"

#include <xercesc/dom/DOMDocument.hpp>

#include <set>
#include <string>
#include <unordered_map>

namespace veltrane_kit {

namespace {

/// The type of the values of a field of the dictionary.
DataType TypeOf(const Element& dataField) {
    const bool hasOldType = !dataField.Has(u"dataType") && dataField.Has(u"x-storageType");
    return ReadDataType(dataField, hasOldType ? u"x-storageType" : u"dataType").value_or(DataType::DOUBLE);
}

/// The values that a field of the dictionary lists: the same however they are written.
class ListedValues {
public:
    explicit ListedValues(const Element& dataField) : fType(TypeOf(dataField)) {
        for (const Element child : dataField.Children()) {
            const XMLCh* property = child.Raw(u"property");
            if (child.Is(u"Value") && (*property == 0 || Same(property, u"valid"))) {
                Add(child.AnyText(u"value"));
            }
        }
        if (fType == DataType::BOOLEAN && IsEmpty()) {
            fNumbers = {0.0, 1.0};
        }
    }

    bool IsEmpty() const { return fTexts.empty() && fNumbers.empty(); }

    bool Has(const std::string& text) const {
        const Value value = ReadValue(text, fType);
        return IsText(fType) ? fTexts.count(text) > 0 : !value.isMissing && fNumbers.count(value.number) > 0;
    }

private:
    void Add(const std::string& text) {
        const Value value = ReadValue(text, fType);
        if (IsText(fType)) {
            fTexts.insert(text);
        } else if (!value.isMissing) {
            fNumbers.insert(value.number);
        }
    }

    DataType fType;
    std::set<std::string> fTexts;
    std::set<double> fNumbers;
};

using DataFields = std::unordered_map<std::string, Element>;

/// The fields of the dictionary by their names.
DataFields DataFieldsOf(const Element& targets) {
    DataFields fields;
    const Element root(targets.Dom()->getOwnerDocument()->getDocumentElement(), targets.Reader());
    for (const Element field : root.RequireChild(u"DataDictionary").Children()) {
        fields.emplace(field.TextOr(u"name", ""), field);
    }
    return fields;
}

/// Of a number a TargetValue may be there for its default alone; of a category it is nothing without its value.
void RequireValues(const Element& target) {
    for (const Element value : target.Children()) {
        if (value.Is(u"TargetValue") && !value.Has(u"value")) {
            Raise<Message::MISSING_ATTRIBUTE_OF>("value", value.Tag());
        }
    }
}

void CheckValues(const Element& target, const std::string& name, const DataFields& fields) {
    const auto field = fields.find(name);
    if (field == fields.end()) {
        return;
    }
    const ListedValues listed(field->second);
    for (const Element value : target.Children()) {
        if (!listed.IsEmpty() && value.Is(u"TargetValue") && !listed.Has(value.AnyText(u"value"))) {
            Raise<Message::VALUE_TARGET_MISMATCH>(value.AnyText(u"value"), "value", value.Tag(), name,
                                                  "DataDictionary");
        }
    }
}

} // namespace

void CheckTargets(const Element& targets) {
    const Element model(static_cast<xercesc::DOMElement*>(targets.Dom()->getParentNode()), targets.Reader());
    const bool hasCategories = Same(model.Raw(u"functionName"), u"classification");
    const std::string usual = FirstTargetName(model);
    const DataFields fields = hasCategories ? DataFieldsOf(targets) : DataFields();
    std::set<std::string> names;
    for (const Element target : targets.Children()) {
        if (!target.Is(u"Target")) {
            continue;
        }
        const std::string name = target.TextOr(u"field", usual);
        const bool isNew = names.insert(name).second;
        if (!isNew && name.empty()) {
            Raise<Message::MORE_THAN_ONE>(target.Tag(), targets.Tag());
        }
        if (!isNew) {
            Raise<Message::DUPLICATE_DEFINITION>(target.Tag(), name, targets.Tag());
        }
        if (hasCategories) {
            RequireValues(target);
            CheckValues(target, name, fields);
        }
    }
}

} // namespace veltrane_kit
