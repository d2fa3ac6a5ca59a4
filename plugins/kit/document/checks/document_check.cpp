#include "kit/document/checks/document_check.h"

#include "kit/document/checks/attribute_check.h"
#include "kit/document/checks/element_table.h"
#include "kit/document/meaningless.h"

#include <vector>

namespace veltrane_kit {

namespace {

using xercesc::DOMElement;

/// Has the row of each element on the way down at hand.
class DocumentCheck : public ElementVisitor {
public:
    DocumentCheck(const Element& root, const XMLCh* model) : fRoot(root), fModel(model), fAttributes(root) {
        for (const XMLCh* common : {u"MiningSchema", u"Output", u"Targets", u"LocalTransformations"}) {
            fOtherModel.children.Add(TagNumberOf(common));
        }
    }

    void Enter(DOMElement* element) override {
        const ElementRow* row = fPath.empty()                  ? ElementRowOf(TagNumberOf(u"PMML"))
                                : fPath.back() == nullptr      ? nullptr
                                : fPath.size() == 1            ? RowOfTop(element)
                                : fPath.back() == &fOtherModel ? RowOfCommon(element)
                                                               : RowOfChild(element, *fPath.back());
        if (row != nullptr) {
            fAttributes.Check(element, *row);
        }
        fPath.push_back(row);
    }

    void Leave(DOMElement* element) override {
        const ElementRow* row = fPath.back();
        fPath.pop_back();
        if (row != nullptr && row->rule != nullptr) {
            row->rule(Element(element, fRoot.Reader()));
        }
    }

private:
    /// Of the models the one that is read has a row here, and whatever its kind is, it is one. What has no row is
    /// passed over, with all that it holds.
    const ElementRow* RowOfTop(DOMElement* element) {
        const TagNumber tag = NumberOf(element);
        if (Same(element->getTagName(), fModel)) {
            fModel = nullptr;
            const ElementRow* row = ElementRowOf(tag);
            return row == nullptr ? &fOtherModel : row;
        }
        const bool isRead =
            Same(element->getTagName(), u"DataDictionary") || Same(element->getTagName(), u"TransformationDictionary");
        const ElementRow* row = RowOfChild(element, *fPath.back());
        return isRead ? row : nullptr;
    }

    /// Of a kind of model without a row, what it has in common with others.
    const ElementRow* RowOfCommon(const DOMElement* element) {
        const TagNumber tag = NumberOf(element);
        return IsChild(tag, fOtherModel) ? ElementRowOf(tag) : nullptr;
    }

    const ElementRow* RowOfChild(DOMElement* child, const ElementRow& parent) {
        const TagNumber tag = NumberOf(child);
        if (!IsChild(tag, parent)) {
            Element(child, fRoot.Reader()).RaiseMisplaced();
        }
        return ElementRowOf(tag);
    }

    static bool IsChild(TagNumber tag, const ElementRow& parent) { return parent.children.Has(tag); }

    /// The elements of one document that have the same name share its text, so the text's place tells the name.
    TagNumber NumberOf(const DOMElement* element) {
        const XMLCh* tag = element->getTagName();
        Known& known = fKnown[(reinterpret_cast<std::uintptr_t>(tag) / sizeof(void*)) % kKnown];
        if (known.tag != tag) {
            known = {tag, TagNumberOf(tag)};
        }
        return known.number;
    }

    struct Known {
        const XMLCh* tag = nullptr;
        TagNumber number = kOtherTag;
    };
    static constexpr std::size_t kKnown = 128;

    Element fRoot;
    const XMLCh* fModel; ///< null when it was met
    AttributeCheck fAttributes;
    ElementRow fOtherModel;
    std::vector<const ElementRow*> fPath; ///< null for what is passed over
    Known fKnown[kKnown];
};

} // namespace

void CheckDocument(const Element& root, const XMLCh* model) {
    DocumentCheck check(root, model);
    DropMeaningless(root, &check);
}

} // namespace veltrane_kit
