#include "kit/document/checks/element_rules.h"
#include "kit/document/raise.h"
#include "kit/document/target_name.h"

#include <xercesc/dom/DOMDocument.hpp>

#include <set>
#include <string>
#include <string_view>
#include <unordered_map>

namespace veltrane_kit {

namespace {

/// The values that a field of the dictionary lists. Numbers are the same however they are written.
class ListedValues {
public:
    explicit ListedValues(const Element& dataField) {
        fIsNumeric = !Same(dataField.Raw(u"dataType"), u"string");
        for (const Element child : dataField.Children()) {
            const XMLCh* property = child.Raw(u"property");
            if (child.Is(u"Value") && (*property == 0 || Same(property, u"valid"))) {
                Add(child.Raw(u"value"));
            }
        }
    }

    bool IsEmpty() const { return fTexts.empty(); }

    bool Has(const XMLCh* text) const {
        double number = 0.0;
        return fTexts.count(text) > 0 || (fIsNumeric && ReadNumber(text, number) && fNumbers.count(number) > 0);
    }

private:
    void Add(const XMLCh* text) {
        double number = 0.0;
        fTexts.insert(text);
        if (fIsNumeric && ReadNumber(text, number)) {
            fNumbers.insert(number);
        }
    }

    bool fIsNumeric;
    std::set<std::u16string_view> fTexts;
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

/// Whether the values of a field are the same when their texts are, or the numbers that these write.
bool IsTextOrNumber(const Element& dataField) {
    const XMLCh* type = dataField.Raw(u"dataType");
    return Same(type, u"string") || Same(type, u"integer") || Same(type, u"float") || Same(type, u"double");
}

void CheckValues(const Element& target, const std::string& name, const DataFields& fields) {
    const auto field = fields.find(name);
    if (field == fields.end() || !IsTextOrNumber(field->second)) {
        return;
    }
    const ListedValues listed(field->second);
    for (const Element value : target.Children()) {
        if (!listed.IsEmpty() && value.Is(u"TargetValue") && value.Has(u"value") && !listed.Has(value.Raw(u"value"))) {
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
            CheckValues(target, name, fields);
        }
    }
}

} // namespace veltrane_kit
