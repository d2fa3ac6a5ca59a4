#include "kit/inputs/completion.h"

#include "kit/document/mining_schema.h"
#include "kit/inputs/dictionary_completion.h"
#include "kit/inputs/expression_completion.h"

#include <xercesc/dom/DOMDocument.hpp>

#include <map>
#include <set>
#include <string>

namespace veltrane_kit {

namespace {

void MoveDerivedFields(const Element& from, const Element& to) {
    if (!from) {
        return;
    }
    for (Element child = from.FirstChild(); child;) {
        const Element next = child.NextSibling();
        if (child.Is(u"DerivedField")) {
            to.Dom()->appendChild(child.Dom());
        }
        child = next;
    }
}

std::map<std::string, Element> DataFieldsOf(const Element& dictionary) {
    std::map<std::string, Element> fields;
    for (const Element field : dictionary.Children()) {
        if (field.Is(u"DataField")) {
            fields.emplace(field.TextOr(u"name", ""), field);
        }
    }
    return fields;
}

/// The library requires of every Target what documents leave to the mining schema and the dictionary.
void CompleteTargets(const Element& dictionary, const Element& model) {
    const Element targets = model.Child(u"Targets");
    if (!targets) {
        return;
    }
    const std::map<std::string, Element> fields = DataFieldsOf(dictionary);
    const std::string name = FirstTargetName(model);
    for (const Element target : targets.Children()) {
        const auto field = target.Is(u"Target") ? fields.find(target.TextOr(u"field", name)) : fields.end();
        if (field == fields.end()) {
            continue;
        }
        if (!target.Has(u"field")) {
            target.Dom()->setAttribute(u"field", field->second.Raw(u"name"));
        }
        if (!target.Has(u"optype") && field->second.Has(u"optype")) {
            target.Dom()->setAttribute(u"optype", field->second.Raw(u"optype"));
        }
    }
}

void NoteBooleans(const Element& fields, std::set<std::string>& booleans) {
    for (const Element field : fields.Children()) {
        if (IsCompletedBoolean(field)) {
            booleans.insert(field.TextOr(u"name", ""));
        }
    }
}

} // namespace

Completed Complete(const Element& root, const Element& model) {
    Completed completed;
    const Element dictionary = root.RequireChild(u"DataDictionary");
    completed.validities = CompleteDictionary(dictionary);

    completed.derivedFields =
        Element(root.Dom()->getOwnerDocument()->createElement(u"TransformationDictionary"), root.Reader());
    model.Dom()->appendChild(completed.derivedFields.Dom());
    MoveDerivedFields(root.Child(u"TransformationDictionary"), completed.derivedFields);
    MoveDerivedFields(model.Child(u"LocalTransformations"), completed.derivedFields);

    CompleteExpressions(dictionary, completed.derivedFields, model.Child(u"Output"));
    CompleteTargets(dictionary, model);
    NoteBooleans(dictionary, completed.booleans);
    NoteBooleans(completed.derivedFields, completed.booleans);
    return completed;
}

} // namespace veltrane_kit
