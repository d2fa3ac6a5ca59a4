#include "kit/inputs/dictionary_completion.h"

#include "kit/values/values.h"

#include <MCVeltrane_900/ScoreDictVar.h>

#include <xercesc/dom/DOMDocument.hpp>

#include <set>
#include <string>

namespace veltrane_kit {

using MCVeltrane_900::ScoreDictVar;

namespace {

void Remove(const Element& element) {
    element.Dom()->getParentNode()->removeChild(element.Dom())->release();
}

void AddValue(const Element& field, const XMLCh* value, const XMLCh* property) {
    xercesc::DOMElement* child = field.Dom()->getOwnerDocument()->createElement(u"Value");
    child->setAttribute(u"value", value);
    if (*property != 0) {
        child->setAttribute(u"property", property);
    }
    field.Dom()->appendChild(child);
}

bool IsContinuous(const Element& field) {
    return Same(field.Raw(u"optype"), u"continuous");
}

bool HoldsText(const Element& field) {
    return Same(field.Raw(u"dataType"), u"string") || Same(field.Raw(u"x-storageType"), u"string");
}

bool HasValue(const Element& field, const XMLCh* value) {
    for (const Element child : field.Children()) {
        if (child.Is(u"Value") && Same(child.Raw(u"value"), value)) {
            return true;
        }
    }
    return false;
}

bool ListsValues(const Element& field) {
    for (const Element child : field.Children()) {
        if (child.Is(u"Value") && !Same(child.Raw(u"property"), u"missing")) {
            return true;
        }
    }
    return false;
}

void CompleteBoolean(const Element& field) {
    if (!Same(field.Raw(u"dataType"), u"boolean")) {
        return;
    }
    field.Dom()->setAttribute(u"dataType", u"string");
    if (IsContinuous(field)) {
        field.Dom()->setAttribute(u"optype", u"categorical");
    }
    if (!ListsValues(field)) {
        AddValue(field, u"true", u"");
        AddValue(field, u"false", u"");
    }
}

/// Writes the number of a Value in a way that everybody reads.
/// @return false for one that is no number
bool PlainNumber(const Element& value) {
    const std::optional<double> number = NumberIn(Narrow(value.Raw(u"value")));
    if (!number || !std::isfinite(*number)) {
        return false;
    }
    std::string buffer;
    value.Dom()->setAttribute(u"value",
                              Widen(std::string(TextOf(MakeNumber(*number, DataType::DOUBLE), buffer))).c_str());
    return true;
}

std::u16string WithoutTrailingBlanks(std::u16string text) {
    while (!text.empty() && text.back() == u' ') {
        text.pop_back();
    }
    return text;
}

bool IsKept(const Element& field, const Element& value, std::set<std::u16string>& seen) {
    const bool isMissing = Same(value.Raw(u"property"), u"missing");
    if (Same(value.Raw(u"property"), u"invalid") || (!HoldsText(field) && isMissing)) {
        return false;
    }
    const std::optional<DataType> type = DataTypeOf(field.Raw(u"dataType"));
    if (type && (IsMoment(*type) || IsCounting(*type))) {
        return false;
    }
    if (!HoldsText(field) && !PlainNumber(value)) {
        return false;
    }
    return seen.insert(WithoutTrailingBlanks(value.Raw(u"value"))).second;
}

void DropOthers(const Element& field) {
    std::set<std::u16string> seen;
    for (Element child = field.FirstChild(); child;) {
        const Element next = child.NextSibling();
        if ((child.Is(u"Interval") && IsContinuous(field)) || (child.Is(u"Value") && !IsKept(field, child, seen))) {
            Remove(child);
        }
        child = next;
    }
}

/// Whether the library's reader can keep a value of a target, as far as it doesn't know it yet.
bool IsReadable(const Element& value, const ScoreDictVar& var, std::set<std::u16string>& seen) {
    if (*value.Raw(u"value") == 0 || var.GetVarType() == ScoreDictVar::DATETIME_VAR) {
        return false;
    }
    if (var.GetVarType() == ScoreDictVar::kNUMERIC_VAR && !PlainNumber(value)) {
        return false;
    }
    return seen.insert(WithoutTrailingBlanks(value.Raw(u"value"))).second;
}

void KeepReadable(const Element& target, const ScoreDictVar& var) {
    const bool isContinuous = var.GetMLevel() == ScoreDictVar::LEVEL_CONTINUOUS;
    bool hasDefault = false;
    std::set<std::u16string> seen;
    for (Element child = target.FirstChild(); child;) {
        const Element next = child.NextSibling();
        bool isKept = false;
        if (child.Is(u"TargetValue") && isContinuous) {
            isKept = !hasDefault && child.Has(u"defaultValue");
            hasDefault = hasDefault || isKept;
        } else if (child.Is(u"TargetValue")) {
            isKept = IsReadable(child, var, seen);
        }
        if (!isKept) {
            Remove(child);
        }
        child = next;
    }
}

const XMLCh* LevelWord(ScoreDictVar::MeasureLevel level) {
    return level == ScoreDictVar::LEVEL_CONTINUOUS ? u"continuous"
           : level == ScoreDictVar::LEVEL_ORDINAL  ? u"ordinal"
                                                   : u"categorical";
}

/// The name of a model's target field as the document writes it, where the schema names it or the model itself.
const XMLCh* WrittenTargetName(const Element& model, const std::string& name) {
    const Element schema = model.Child(u"MiningSchema");
    for (Element field = schema ? schema.FirstChild() : Element(); field; field = field.NextSibling()) {
        if (field.TextOr(u"name", "") == name) {
            return field.Raw(u"name");
        }
    }
    return model.Raw(u"targetFieldName");
}

} // namespace

void CompleteDictionary(const Element& dictionary) {
    int count = 0;
    for (Element child = dictionary.FirstChild(); child;) {
        const Element next = child.NextSibling();
        if (child.Is(u"Taxonomy")) {
            Remove(child);
        } else if (child.Is(u"DataField")) {
            ++count;
            CompleteBoolean(child);
            DropOthers(child);
            if (HoldsText(child) && !IsContinuous(child) && !HasValue(child, u"")) {
                AddValue(child, u"", u"missing");
            }
        }
        child = next;
    }
    if (!dictionary.Has(u"numberOfFields")) {
        dictionary.Dom()->setAttribute(u"numberOfFields", Widen(std::to_string(count)).c_str());
    }
}

void CompleteTargets(const Element& model, const std::string& name, const MCVeltrane_900::ScoreDictionary& dictionary) {
    const Element targets = model.Child(u"Targets");
    if (!targets) {
        return;
    }
    for (const Element target : targets.Children()) {
        const std::string field = target.TextOr(u"field", name);
        const ScoreDictVar* var = target.Is(u"Target") && !field.empty() ? dictionary.GetVar(field) : nullptr;
        if (var == nullptr) {
            continue;
        }
        if (!target.Has(u"field") && model.Child(u"MiningSchema")) {
            target.Dom()->setAttribute(u"field", WrittenTargetName(model, name));
        }
        if (!target.Has(u"optype")) {
            target.Dom()->setAttribute(u"optype", LevelWord(var->GetMLevel()));
        }
    }
}

xercesc::DOMElement* CopyOfTargets(const Element& model, const MCVeltrane_900::ScoreDictionary& dictionary) {
    const Element targets = model.Child(u"Targets");
    if (!targets) {
        return nullptr;
    }
    const Element copy(static_cast<xercesc::DOMElement*>(targets.Dom()->cloneNode(true)), targets.Reader());
    for (Element target = copy.FirstChild(); target;) {
        const Element next = target.NextSibling();
        if (!target.Is(u"Target") || !target.Has(u"field")) {
            Remove(target);
        } else if (const ScoreDictVar* var = dictionary.GetVar(target.Text(u"field"))) {
            KeepReadable(target, *var);
        }
        target = next;
    }
    return copy.Dom();
}

} // namespace veltrane_kit
