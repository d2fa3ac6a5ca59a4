#include "kit/completion.h"

#include "kit/dictionary_completion.h"
#include "kit/expression_completion.h"
#include "kit/mining_schema.h"

#include <xercesc/dom/DOMDocument.hpp>

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

Element DataFieldOf(const Element& dictionary, const std::string& name) {
    for (const Element field : dictionary.Children()) {
        if (field.Is(u"DataField") && field.TextOr(u"name", "") == name) {
            return field;
        }
    }
    return {};
}

/// The library requires of every Target what documents leave to the mining schema and the dictionary.
void CompleteTargets(const Element& dictionary, const Element& model) {
    const Element targets = model.Child(u"Targets");
    if (!targets) {
        return;
    }
    for (const Element target : targets.Children()) {
        if (!target.Is(u"Target")) {
            continue;
        }
        const std::string name = target.TextOr(u"field", FirstTargetName(model));
        const Element field = DataFieldOf(dictionary, name);
        if (!field) {
            continue;
        }
        if (!target.Has(u"field")) {
            target.Dom()->setAttribute(u"field", field.Raw(u"name"));
        }
        if (!target.Has(u"optype") && field.Has(u"optype")) {
            target.Dom()->setAttribute(u"optype", field.Raw(u"optype"));
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
    return completed;
}

} // namespace veltrane_kit
